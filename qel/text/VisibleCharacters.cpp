#include "qel/text/VisibleCharacters.h"

#include "qel/base/CaseMapping.h"

namespace qel::visible {
namespace {

constexpr std::size_t code_length = 3;

bool is_one_of(char16_t character, std::u16string_view set) {
  return set.find(character) != std::u16string_view::npos;
}

/// The length of the code or visible character at `at`.
std::size_t step(std::u16string_view text, std::size_t at) {
  return has_code_at(text, at) ? code_length : 1;
}

/// Where the `count`-th visible character at or after `at` ends; the end of the text when there are
/// fewer.
std::size_t end_of_character(std::u16string_view text, std::size_t at, std::size_t count) {
  while (at < text.size() && count > 0) {
    const std::size_t passed = step(text, at);
    at += passed;
    if (passed == 1) --count;
  }
  return at;
}

}  // namespace

bool is_code(std::u16string_view characters) {
  if (characters.size() != code_length || characters.front() != u'/') return false;
  const char32_t letter = to_lower(char32_t{characters[1]});
  const char16_t digit = characters[2];
  if (letter > u'z') return false;
  if (letter == u'f' || letter == u'y') return digit >= u'0' && digit <= u'9';
  return (digit == u'0' || digit == u'1') && is_one_of(static_cast<char16_t>(letter), u"biupsct");
}

bool has_code_at(std::u16string_view text, std::size_t at) {
  return at < text.size() && text[at] == u'/' && is_code(text.substr(at, code_length));
}

bool is_escape_code(std::u16string_view characters) {
  if (characters.size() != 4 || !characters.starts_with(u"\\\\")) return false;
  return (is_one_of(characters[2], u"biupsck") && is_one_of(characters[3], u"01")) ||
         (is_one_of(characters[2], u"fy") && is_one_of(characters[3], u"0123456789"));
}

std::size_t length(std::u16string_view text) {
  std::size_t count = 0;
  for (std::size_t at = 0; at < text.size();) {
    const std::size_t passed = step(text, at);
    if (passed == 1) ++count;
    at += passed;
  }
  return count;
}

std::u16string_view left(std::u16string_view text, std::size_t count) {
  return text.substr(0, end_of_character(text, 0, count));
}

std::u16string_view right(std::u16string_view text, std::size_t count) {
  std::size_t at = text.size();
  while (at > 0 && count > 0) {
    if (at >= code_length && has_code_at(text, at - code_length)) {
      at -= code_length;
    } else {
      --at;
      --count;
    }
  }
  return text.substr(at);
}

std::u16string_view mid(std::u16string_view text, std::size_t start, std::size_t count) {
  std::size_t at = end_of_character(text, 0, start);
  while (has_code_at(text, at)) at += code_length;
  const std::u16string_view rest = text.substr(at);
  return count == std::u16string_view::npos ? rest : left(rest, count);
}

}  // namespace qel::visible
