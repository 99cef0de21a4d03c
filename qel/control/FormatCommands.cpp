#include "qel/control/FormatCommands.h"

#include "qel/base/ColorNames.h"
#include "qel/model/ReservedColors.h"
#include "qel/tables/QELIndexFonts.h"

namespace qel::format_commands {

using namespace keys;

std::u16string font_caption(std::int16_t index, std::u16string_view name) {
  if (index == 0) return std::u16string(name) + u" (plain)";
  return std::u16string(name == QELIndexFonts::unused ? std::u16string_view() : name);
}

std::u16string_view color_caption(std::int16_t index, Color color) {
  switch (index) {
    case 0:
      return u"Plain colour";
    case ignored_color:
      return u"Ignored text";
    case hidden_color:
      return u"Hidden text";
    case note_color:
      return u"Note text";
    default:
      return color_name(color);
  }
}

namespace {

std::u16string numbered(std::u16string_view name, std::int16_t index) {
  return std::u16string(name) + static_cast<char16_t>(u'0' + index);
}

}  // namespace

std::u16string font_command(std::int16_t index) { return numbered(u"mnuAltFont", index); }

std::u16string color_command(std::int16_t index) {
  switch (index) {
    case ignored_color:
      return u"mnuIgnoreText";
    case hidden_color:
      return u"mnuHideText";
    case note_color:
      return u"mnuNoteText";
    default:
      return numbered(u"mnuColor", index);
  }
}

std::u16string key_text(std::int16_t key_code, std::int16_t shift) {
  if (key_code == 0) return {};
  std::u16string text;
  if ((shift & ctrl_key) != 0) text += u"Ctrl+";
  if ((shift & alt_key) != 0) text += u"Alt+";
  if ((shift & shift_key) != 0) text += u"Shift+";
  if (key_code == space_key) return text + u"Space";
  if (key_code == delete_key) return text + u"Del";
  const int number = key_code - first_function_key + 1;
  constexpr int ten = 10;
  if (number >= ten) return numbered(text + u"F1", static_cast<std::int16_t>(number - ten));
  if (number >= 1) return numbered(text + u"F", static_cast<std::int16_t>(number));
  return text + static_cast<char16_t>(key_code);
}

std::u16string menu_text(std::u16string_view caption, std::int16_t key_code, std::int16_t shift) {
  std::u16string text(caption);
  if (key_code != 0) text += u"\t" + key_text(key_code, shift);
  return text;
}

}  // namespace qel::format_commands
