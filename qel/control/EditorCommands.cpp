#include "qel/control/EditorCommands.h"

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <iterator>
#include <string>
#include <utility>

#include "qel/base/CaseMapping.h"
#include "qel/base/Graphemes.h"
#include "qel/control/Conversion.h"
#include "qel/model/ReservedColors.h"
#include "qel/richtext/Document.h"
#include "qel/richtext/DocumentReader.h"
#include "qel/tables/QELIndexColors.h"
#include "qel/tables/QELIndexFonts.h"
#include "qel/text/DocumentCase.h"

namespace qel::editor_commands {
namespace {

using richtext::FormatChange;

void toggle(platform::RichEdit& box, std::optional<bool> richtext::FormatFields::*field) {
  FormatChange change;
  change.*field = !(box.format().*field).value_or(false);
  box.change_format(change);
}

/// Raises text, or lowers it for a negative `offset`; text that is so already goes back to the
/// line.
void shift(platform::RichEdit& box, std::int16_t offset) {
  const std::int16_t now = box.get_SelCharOffset().value_or(0);
  const bool is_shifted = offset > 0 ? now > 0 : now < 0;
  box.put_SelCharOffset(is_shifted ? std::int16_t{0} : offset);
}

bool has_font(const Target& target, std::size_t index) {
  const auto name = target.box.get_SelFontName();
  return name && equal_ignoring_case(*name, target.edited.fonts[index]);
}

void make_plain(const Target& target) {
  FormatChange plain;
  plain.bold = plain.italic = plain.underline = plain.strike_through = false;
  plain.small_caps = false;
  plain.offset = std::int16_t{0};
  plain.color = target.edited.colors[0];
  plain.font_name = target.edited.fonts[0];
  target.box.change_format(plain);
}

void delete_selection(const Target& target) {
  // The Delete key is this command's, so without a selection it erases the next character.
  if (target.box.get_SelLength() == 0) {
    const auto caret = static_cast<std::size_t>(target.box.get_SelStart());
    const std::size_t next = cluster_after(target.box.get_Text(), caret);
    target.box.put_SelLength(static_cast<std::int32_t>(next - caret));
  }
  if (target.box.get_SelLength() > 0) target.box.put_SelText(u"");
}

void copy(const Target& target) {
  if (target.box.get_SelLength() == 0) return;
  target.clipboard.put(target.box.get_SelText(), target.box.get_SelRTF());
}

void cut(const Target& target) {
  if (target.box.get_SelLength() == 0) return;
  copy(target);
  delete_selection(target);
}

/// The converter of a target that has a parser, with the tables of its control.
class TargetConversion {
 public:
  explicit TargetConversion(const Target& target)
      : conversion_{*target.parser, QELIndexFonts(), colors_} {
    for (std::int16_t i = 0; i < 10; ++i) {
      conversion_.fonts.put_Font(i, target.edited.fonts[static_cast<std::size_t>(i)]);
      colors_.put_Color(i, target.edited.colors[static_cast<std::size_t>(i)]);
    }
    conversion_.fonts.put_FontSize(target.edited.font_size);
  }
  Conversion* operator->() { return &conversion_; }

 private:
  QELIndexColors colors_;
  Conversion conversion_;
};

bool is_lossless(const Target& target) {
  return target.parser != nullptr && target.parser->get_Lossless();
}

void paste(const Target& target) {
  if (is_lossless(target)) {
    platform::DragData data = target.clipboard.data();
    paste(data, target);
    return;
  }
  const auto [format, alignment] = target.box.text_defaults(platform::Scope::selection);
  const bool in_one_line = !target.box.appearance().takes_breaks;
  auto content = richtext::read_transfer(target.clipboard.rtf(), target.clipboard.text(), format,
                                         alignment, in_one_line);
  if (content) target.box.put_content(platform::Scope::selection, *std::move(content));
}

/// Makes one change of the box, which keeps all formats.
void change_letters(const Target& target, CaseChange change) {
  if (target.box.get_SelLength() == 0) return;
  const platform::Range selection = target.box.selection();
  richtext::Document document = target.box.content(platform::Scope::selection);
  change_case(document, change, target.edited.colors[hidden_color]);
  target.box.put_content(platform::Scope::selection, std::move(document));
  target.box.select(selection);
}

struct Command {
  std::u16string_view name;
  void (*run)(const Target& target);
};

constexpr Command commands[] = {
    {u"mnuCut", cut},
    {u"mnuCopy", copy},
    {u"mnuPaste", paste},
    {u"mnuDelete", delete_selection},
    {u"mnuBold", [](const Target& t) { toggle(t.box, &FormatChange::bold); }},
    {u"mnuItalic", [](const Target& t) { toggle(t.box, &FormatChange::italic); }},
    {u"mnuUnderline", [](const Target& t) { toggle(t.box, &FormatChange::underline); }},
    {u"mnuStrikeOut", [](const Target& t) { toggle(t.box, &FormatChange::strike_through); }},
    {u"mnuSuperscript", [](const Target& t) { shift(t.box, t.script_offset); }},
    {u"mnuSubscript",
     [](const Target& t) { shift(t.box, static_cast<std::int16_t>(-t.script_offset)); }},
    {u"mnuAltFont1", [](const Target& t) { t.box.put_SelFontName(t.edited.fonts[1]); }},
    {u"mnuAltFont2", [](const Target& t) { t.box.put_SelFontName(t.edited.fonts[2]); }},
    {u"mnuPlain", make_plain},
    {u"mnuIgnoreText", [](const Target& t) { t.box.put_SelColor(t.edited.colors[1]); }},
    {u"mnuHideText", [](const Target& t) { t.box.put_SelColor(t.edited.colors[2]); }},
    {u"mnuNoteText", [](const Target& t) { t.box.put_SelColor(t.edited.colors[3]); }},
    {u"mnuLowercase", [](const Target& t) { change_letters(t, CaseChange::lower); }},
    {u"mnuUppercase", [](const Target& t) { change_letters(t, CaseChange::upper); }},
    {u"mnuChangeCase", [](const Target& t) { change_letters(t, CaseChange::swap); }},
    {u"mnuTitleCase", [](const Target& t) { change_letters(t, CaseChange::title); }},
    {u"mnuFirstToLower", [](const Target& t) { change_letters(t, CaseChange::first_to_lower); }},
    {u"mnuFirstToUpper", [](const Target& t) { change_letters(t, CaseChange::first_to_upper); }},
};

/// Decides the check mark of a command.
struct Check {
  std::u16string_view name;
  bool (*is_on)(const Target& target);
};

constexpr Check checks[] = {
    {u"mnuBold", [](const Target& t) { return t.box.get_SelBold() == true; }},
    {u"mnuItalic", [](const Target& t) { return t.box.get_SelItalic() == true; }},
    {u"mnuUnderline", [](const Target& t) { return t.box.get_SelUnderline() == true; }},
    {u"mnuStrikeOut", [](const Target& t) { return t.box.get_SelStrikeThru() == true; }},
    {u"mnuSuperscript", [](const Target& t) { return t.box.get_SelCharOffset() > 0; }},
    {u"mnuSubscript", [](const Target& t) { return t.box.get_SelCharOffset().value_or(0) < 0; }},
    {u"mnuAltFont1", [](const Target& t) { return has_font(t, 1); }},
    {u"mnuAltFont2", [](const Target& t) { return has_font(t, 2); }},
    {u"mnuIgnoreText", [](const Target& t) { return t.box.get_SelColor() == t.edited.colors[1]; }},
    {u"mnuHideText", [](const Target& t) { return t.box.get_SelColor() == t.edited.colors[2]; }},
    {u"mnuNoteText", [](const Target& t) { return t.box.get_SelColor() == t.edited.colors[3]; }},
};

const Check* find_check(std::u16string_view name) {
  const auto check = std::find_if(std::begin(checks), std::end(checks),
                                  [name](const Check& row) { return row.name == name; });
  return check == std::end(checks) ? nullptr : check;
}

}  // namespace

bool is_checked(std::u16string_view name, const Target& target) {
  const Check* const check = find_check(name);
  return check != nullptr && check->is_on(target);
}

std::u16string markup(const Target& target) {
  return target.parser == nullptr ? std::u16string()
                                  : TargetConversion(target)->markup_in(target.box);
}

bool paste(platform::DragData& data, const Target& target) {
  if (!is_lossless(target)) return false;
  auto content = TargetConversion(target)->pasted(data, target.box, target.edited.pastes_text_only);
  if (content) target.box.put_content(platform::Scope::selection, *std::move(content));
  return true;
}

bool run(std::u16string_view name, const Target& target) {
  const auto command = std::find_if(std::begin(commands), std::end(commands),
                                    [name](const Command& row) { return row.name == name; });
  if (command == std::end(commands)) return false;
  command->run(target);
  return true;
}

platform::EditorDescription description() {
  const platform::MenuItem separator = {};
  platform::EditorDescription description = {
      u"Text Editor",
      u"OK",
      u"Cancel",
      {{u"&Edit",
        {{u"mnuUndo", u"Undo"},
         {u"mnuCut", u"C&ut"},
         {u"mnuCopy", u"&Copy"},
         {u"mnuPaste", u"&Paste"},
         {u"mnuDelete", u"&Delete"}}},
       {u"Fo&rmat",
        {{u"mnuBold", u"&Bold"},
         {u"mnuItalic", u"&Italic"},
         {u"mnuUnderline", u"&Underline"},
         {u"mnuStrikeOut", u"Stri&keout\tCtrl+Shift+K"},
         {u"mnuSubscript", u"S&ubscript\tCtrl+Shift+B"},
         {u"mnuSuperscript", u"&Superscript\tCtrl+Shift+P"},
         separator,
         {u"mnuAltFont1", u"Alt Font &1\tAlt+F1"},
         {u"mnuAltFont2", u"Alt Font &2\tAlt+F2"},
         {u"mnuPlain", u"&Plain\tAlt+F10"},
         separator,
         {u"mnuIgnoreText", u"Ignore Text"},
         {u"mnuHideText", u"Hide Text"},
         {u"mnuNoteText", u"&Note Text\tCtrl+Shift+O"},
         separator,
         {u"mnuLowercase", u"Lowercase"},
         {u"mnuUppercase", u"Uppercase"},
         {u"mnuChangeCase", u"Cha&nge case\tCtrl+Shift+H"},
         {u"mnuTitleCase", u"&Title case\tCtrl+Shift+T"},
         {u"mnuFirstToLower", u"First letter to lowercase"},
         {u"mnuFirstToUpper", u"First letter to Uppercase"}}}},
      u"Markup"};
  for (platform::Menu& menu : description.menus) {
    for (platform::MenuItem& item : menu.items) item.has_check = find_check(item.name) != nullptr;
  }
  return description;
}

}  // namespace qel::editor_commands
