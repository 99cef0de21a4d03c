// The large editor's keys and menus.

#include <algorithm>
#include <iterator>

#include "qel/control/EditorCommands.h"
#include "qel/control/FormatCommands.h"
#include "qel/model/ReservedColors.h"
#include "qel/platform/Keys.h"

namespace qel::editor_commands {

namespace commands = format_commands;

using namespace keys;
using platform::Menu;
using platform::MenuItem;

namespace {

struct Key {
  std::int16_t key_code;
  std::int16_t shift;
  std::u16string_view command;
};

constexpr Key stated_keys[] = {{delete_key, no_modifier, u"mnuDelete"},
                               {letter_key('V'), ctrl_key, u"mnuPaste"},
                               {letter_key('X'), ctrl_key, u"mnuCut"},
                               {letter_key('C'), ctrl_key, u"mnuCopy"},
                               {function_key(1), alt_key, u"mnuAltFont1"},
                               {function_key(2), alt_key, u"mnuAltFont2"},
                               {function_key(10), alt_key, u"mnuPlain"},
                               {letter_key('B'), ctrl_shift, u"mnuSubscript"},
                               {letter_key('P'), ctrl_shift, u"mnuSuperscript"},
                               {letter_key('K'), ctrl_shift, u"mnuStrikeOut"},
                               {letter_key('H'), ctrl_shift, u"mnuChangeCase"},
                               {letter_key('T'), ctrl_shift, u"mnuTitleCase"},
                               {letter_key('O'), ctrl_shift, u"mnuNoteText"}};

std::u16string_view stated_command(std::int16_t key_code, std::int16_t shift) {
  const auto* const key =
      std::find_if(std::begin(stated_keys), std::end(stated_keys),
                   [=](const Key& row) { return row.key_code == key_code && row.shift == shift; });
  return key == std::end(stated_keys) ? std::u16string_view() : key->command;
}

/// An item of the stated way that shows the key of its command.
MenuItem stated_item(std::u16string_view name, std::u16string_view caption) {
  const auto* const key = std::find_if(std::begin(stated_keys), std::end(stated_keys),
                                       [name](const Key& row) { return row.command == name; });
  return {std::u16string(name), commands::menu_text(caption, key->key_code, key->shift)};
}

MenuItem item(const commands::Label& label) {
  const auto& [name, caption, key_code, shift] = label;
  if (key_code == 0 &&
      std::any_of(std::begin(stated_keys), std::end(stated_keys),
                  [wanted = name](const Key& row) { return row.command == wanted; })) {
    return stated_item(name, caption);
  }
  return {std::u16string(name), commands::menu_text(caption, key_code, shift)};
}

Menu edit_menu() {
  const MenuItem separator = {};
  return {u"&Edit",
          {item(commands::undo),
           item(commands::redo),
           separator,
           item(commands::cut),
           item(commands::copy),
           item(commands::paste),
           item(commands::paste_text),
           item(commands::erase),
           separator,
           item(commands::select_all),
           separator,
           {u"mnuUndo", u"Undo All Chan&ges"}}};
}

Menu format_menu() {
  Menu menu = {u"F&ormat", {}};
  for (const auto& toggle : commands::toggles) menu.items.push_back(item(toggle.label));
  menu.items.emplace_back();
  menu.items.push_back(item(commands::plain));
  return menu;
}

Menu case_menu() {
  Menu menu = {u"C&ase", {}};
  for (const auto& change : commands::cases) menu.items.push_back(item(change.label));
  return menu;
}

Menu font_menu(const EditedText& edited) {
  Menu menu = {u"Fo&nt", {}};
  for (std::int16_t i = 0; i < 10; ++i) {
    const std::u16string& font = edited.fonts[static_cast<std::size_t>(i)];
    const std::u16string caption = commands::font_caption(i, font);
    if (caption.empty()) continue;
    const std::int16_t key_code = i == 0 ? std::int16_t{0} : function_key(i);
    menu.items.push_back(
        {commands::font_command(i), commands::menu_text(caption, key_code, alt_key)});
    menu.items.back().font = font;
  }
  return menu;
}

Menu color_menu(const EditedText& edited) {
  Menu menu = {u"&Colour", {}};
  for (std::int16_t i = 0; i < 10; ++i) {
    const Color color = edited.colors[static_cast<std::size_t>(i)];
    const std::int16_t key_code = i == 0 ? std::int16_t{0} : function_key(i);
    menu.items.push_back(
        {commands::color_command(i),
         commands::menu_text(commands::color_caption(i, color), key_code, ctrl_key)});
    menu.items.back().swatch = color;
    if (i == 0 || i == note_color) menu.items.emplace_back();
  }
  return menu;
}

std::vector<Menu> stated_menus() {
  const MenuItem separator = {};
  return {{u"&Edit",
           {{u"mnuUndo", u"Undo"},
            {u"mnuCut", u"C&ut"},
            {u"mnuCopy", u"&Copy"},
            {u"mnuPaste", u"&Paste"},
            {u"mnuDelete", u"&Delete"}}},
          {u"Fo&rmat",
           {{u"mnuBold", u"&Bold"},
            {u"mnuItalic", u"&Italic"},
            {u"mnuUnderline", u"&Underline"},
            stated_item(u"mnuStrikeOut", u"Stri&keout"),
            stated_item(u"mnuSubscript", u"S&ubscript"),
            stated_item(u"mnuSuperscript", u"&Superscript"),
            separator,
            stated_item(u"mnuAltFont1", u"Alt Font &1"),
            stated_item(u"mnuAltFont2", u"Alt Font &2"),
            stated_item(u"mnuPlain", u"&Plain"),
            separator,
            {u"mnuIgnoreText", u"Ignore Text"},
            {u"mnuHideText", u"Hide Text"},
            stated_item(u"mnuNoteText", u"&Note Text"),
            separator,
            {u"mnuLowercase", u"Lowercase"},
            {u"mnuUppercase", u"Uppercase"},
            stated_item(u"mnuChangeCase", u"Cha&nge case"),
            stated_item(u"mnuTitleCase", u"&Title case"),
            {u"mnuFirstToLower", u"First letter to lowercase"},
            {u"mnuFirstToUpper", u"First letter to Uppercase"}}}};
}

}  // namespace

std::u16string command_of(std::int16_t key_code, std::int16_t shift, const EditedText& edited) {
  if (key_code == 0) return {};
  if (const auto stated = stated_command(key_code, shift); !stated.empty()) {
    return std::u16string(stated);
  }
  if (edited.way == Way::stated) return {};
  for (const auto& toggle : commands::toggles) {
    const auto& label = toggle.label;
    if (label.key_code == key_code && label.shift == shift) return std::u16string(label.name);
  }
  const auto& plain = commands::plain;
  const bool is_plain = key_code == plain.key_code && shift == plain.shift;
  if (is_plain && edited.acts_on_plain) return std::u16string(plain.name);
  const auto number = static_cast<std::int16_t>(key_code - first_function_key + 1);
  if (number < 1 || number > 9) return {};
  if (shift == alt_key) return commands::font_command(number);
  return shift == ctrl_key ? commands::color_command(number) : std::u16string();
}

platform::EditorDescription description(const EditedText& edited) {
  const bool is_stated = edited.way == Way::stated;
  platform::EditorDescription description = {is_stated ? u"Text Editor" : u"Large Editor",
                                             u"OK",
                                             u"Cancel",
                                             {},
                                             u"Markup",
                                             edited.replaced,
                                             !is_stated};
  description.menus = is_stated ? stated_menus()
                                : std::vector<Menu>{edit_menu(), format_menu(), font_menu(edited),
                                                    color_menu(edited), case_menu()};
  for (Menu& menu : description.menus) {
    for (MenuItem& item : menu.items) item.has_check = has_check(item.name);
  }
  return description;
}

}  // namespace qel::editor_commands
