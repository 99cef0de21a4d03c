#include "qel/model/QELCode.h"

#include <cstddef>

#include "qel/base/Ascii.h"
#include "qel/base/Scan.h"

namespace qel {
namespace {

bool is_one_of(char16_t character, std::u16string_view set) {
  return set.find(character) != std::u16string_view::npos;
}

bool is_toggle_digit(char16_t digit) { return digit == u'0' || digit == u'1'; }
bool is_digit(char16_t digit) { return digit >= u'0' && digit <= u'9'; }
bool is_index_letter(char16_t letter) { return letter == u'f' || letter == u'y'; }

// Small capitals are left out here on purpose, unlike in the set of sfAll.
constexpr std::u16string_view formatting_letters = u"biufypskt";

bool is_index_or_toggle(char16_t index_letter, char16_t letter, char16_t digit) {
  return letter == index_letter ? is_digit(digit) : is_toggle_digit(digit);
}

bool is_formatting_code(char16_t letter, char16_t digit) {
  if (!is_one_of(letter, formatting_letters)) return false;
  return is_index_letter(letter) ? is_digit(digit) : is_toggle_digit(digit);
}

bool is_on_code(char16_t letter, char16_t digit) {
  if (!is_one_of(letter, formatting_letters)) return false;
  return digit == u'1' || (is_index_letter(letter) && digit >= u'2' && digit <= u'9');
}

template <class Char>
std::size_t length_of_break(std::basic_string_view<Char> markup, Way way) {
  constexpr auto code = ascii<Char, "/nl">;
  if (markup.starts_with(code)) return code.size();
  if (way == Way::stated || markup.empty()) return 0;
  if (markup.starts_with(ascii<Char, "\r\n">)) return 2;
  return markup.front() == '\r' || markup.front() == '\n' ? 1 : 0;
}

}  // namespace

bool IsQELCode(std::u16string_view Text, std::int32_t Flags) {
  if (Text.size() < 3 || Text.front() != u'/') return false;
  if (Text == u"/nl") return true;
  const char16_t letter = Text[1];
  const char16_t digit = Text.back();
  switch (Flags) {
    case sfAll:
      return is_text_model_code(letter, digit);
    case sfFormatting:
      return is_formatting_code(letter, digit);
    case sfColor:
      return is_index_or_toggle(u'y', letter, digit);
    case sfFont:
      return is_index_or_toggle(u'f', letter, digit);
    case sfOnCode:
      return is_on_code(letter, digit);
    case sfOffCode:
      return is_one_of(letter, formatting_letters) && digit == u'0';
    default:
      return false;
  }
}

std::size_t line_break_length(std::u16string_view markup, Way way) {
  return length_of_break(markup, way);
}
std::size_t line_break_length(std::string_view markup, Way way) {
  return length_of_break(markup, way);
}

bool begins_with_placeholder(std::u16string_view text) {
  return text.size() >= 4 && text[0] == u'<' && text[3] == u']' && is_escapable(text[1], text[2]);
}

std::size_t length_of_code_as_text(std::u16string_view text, Way way) {
  if (way == Way::stated) return begins_with_placeholder(text) ? 4 : 0;
  return text.size() >= 3 && text[0] == u'/' && is_escapable(text[1], text[2]) ? 3 : 0;
}

std::u16string protect_escaped_codes(std::u16string_view text) {
  constexpr std::size_t part = std::size_t{1} << 13U;  // stays in the processor's cache
  constexpr std::size_t code_length = 4;
  std::u16string copy;
  copy.reserve(text.size());
  std::size_t hit = 0;
  while (copy.size() < text.size()) {
    copy.append(text.substr(copy.size(), part));
    for (hit = find_any<u'~'>(copy, hit); hit + code_length <= copy.size();
         hit = find_any<u'~'>(copy, hit + 1)) {
      if (!begins_with_escaped_code(std::u16string_view(copy).substr(hit))) continue;
      // The placeholder is as long as the escaped code, so the text is changed in place.
      copy[hit] = u'<';
      copy[hit + 1] = copy[hit + 2];
      copy[hit + 2] = copy[hit + 3];
      copy[hit + 3] = u']';
    }
  }
  return copy;
}

std::u16string restore_escaped_codes(std::u16string text) {
  for (std::size_t hit = find_any<u'<'>(text, 0); hit + 3 < text.size();
       hit = find_any<u'<'>(text, hit + 1)) {
    if (!begins_with_placeholder(std::u16string_view(text).substr(hit))) continue;
    text[hit + 3] = text[hit + 2];
    text[hit + 2] = text[hit + 1];
    text[hit + 1] = u'/';
    text[hit] = u'~';
  }
  return text;
}

}  // namespace qel
