#include "qel/richtext/FieldInstructions.h"

#include <algorithm>
#include <cstddef>

#include "qel/base/CaseMapping.h"

namespace qel::richtext {
namespace {

/// Where the quotes end that a word began with.
std::size_t end_of_quotes(std::u16string_view text) {
  std::size_t at = 0;
  while (at < text.size() && text[at] != u'"') at += text[at] == u'\\' ? 2U : 1U;
  return std::min(at, text.size());
}

std::u16string without_escapes(std::u16string_view word) {
  std::u16string text;
  for (std::size_t at = 0; at < word.size(); ++at) {
    if (word[at] == u'\\' && at + 1 < word.size()) ++at;
    text.push_back(word[at]);
  }
  return text;
}

std::u16string_view without_scheme(std::u16string_view address) {
  for (const std::u16string_view scheme : {u"http://", u"https://", u"mailto:"}) {
    if (address.starts_with(scheme)) return address.substr(scheme.size());
  }
  return address;
}

}  // namespace

std::u16string_view next_field_word(std::u16string_view& rest) {
  rest.remove_prefix(std::min(rest.find_first_not_of(u' '), rest.size()));
  const bool is_quoted = rest.starts_with(u'"');
  if (is_quoted) rest.remove_prefix(1);
  const std::size_t end = is_quoted ? end_of_quotes(rest) : std::min(rest.find(u' '), rest.size());
  const std::u16string_view word = rest.substr(0, end);
  rest.remove_prefix(std::min(end + 1, rest.size()));
  return word;
}

std::u16string address_of_field(std::u16string_view instruction) {
  if (!equal_ignoring_case(next_field_word(instruction), u"hyperlink")) return {};
  std::u16string address;
  std::u16string place;
  while (!instruction.empty()) {
    const std::u16string_view word = next_field_word(instruction);
    const bool is_switch = word.size() == 2 && word.front() == u'\\';
    if (!is_switch) {
      if (address.empty()) address = without_escapes(word);
      continue;
    }
    const char16_t letter = word.back();
    if (letter == u'l') place = without_escapes(next_field_word(instruction));
    if (letter == u'o' || letter == u't') next_field_word(instruction);
  }
  if (!address.empty() && !place.empty()) address.append(u"#").append(place);
  return address;
}

bool says_address(std::u16string_view text, std::u16string_view address) {
  if (text == address) return true;
  address = without_scheme(address);
  return text == address ||
         (address.ends_with(u'/') && text == address.substr(0, address.size() - 1));
}

}  // namespace qel::richtext
