#pragma once

#include <algorithm>
#include <cstddef>
#include <string_view>

/// Names and white space in HTML are those of ASCII.
namespace qel::html {

constexpr bool is_space(char c) {
  return c == ' ' || c == '\t' || c == '\n' || c == '\r' || c == '\f';
}
constexpr bool is_digit(char c) { return c >= '0' && c <= '9'; }
constexpr char lower(char c) { return c >= 'A' && c <= 'Z' ? static_cast<char>(c + 32) : c; }
constexpr bool is_letter(char c) { return lower(c) >= 'a' && lower(c) <= 'z'; }

/// `lower_case` has no capitals.
constexpr bool equals(std::string_view text, std::string_view lower_case) {
  return std::equal(text.begin(), text.end(), lower_case.begin(), lower_case.end(),
                    [](char one, char other) { return lower(one) == other; });
}

constexpr bool begins_with(std::string_view text, std::string_view lower_case) {
  return equals(text.substr(0, lower_case.size()), lower_case);
}

/// Position of the first occurrence at or after `from`; the length of the text when there is none.
inline std::size_t find(std::string_view text, std::string_view lower_case, std::size_t from) {
  const auto begin = text.begin() + static_cast<std::ptrdiff_t>(std::min(from, text.size()));
  const auto found = std::search(begin, text.end(), lower_case.begin(), lower_case.end(),
                                 [](char one, char other) { return lower(one) == other; });
  return static_cast<std::size_t>(found - text.begin());
}

constexpr std::string_view trimmed(std::string_view text) {
  while (!text.empty() && is_space(text.front())) text.remove_prefix(1);
  while (!text.empty() && is_space(text.back())) text.remove_suffix(1);
  return text;
}

/// Takes the first word off the text: up to white space, or a separator, which is taken too.
constexpr std::string_view take_word(std::string_view& text, char separator = ' ') {
  while (!text.empty() && is_space(text.front())) text.remove_prefix(1);
  std::size_t end = 0;
  while (end < text.size() && !is_space(text[end]) && text[end] != separator) ++end;
  const std::string_view word = text.substr(0, end);
  text.remove_prefix(std::min(end + 1, text.size()));
  return word;
}

}  // namespace qel::html
