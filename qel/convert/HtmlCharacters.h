#pragma once

#include <cstddef>
#include <string_view>

/// Characters that HTML does not take as they are. UTF-8 is valid.
namespace qel::convert {

/// How much from `at` on can be copied: up to a character that is escaped or forbidden, or half of
/// a surrogate pair, or a blank that has another behind it. May stop at some others.
std::size_t end_of_copy(std::u16string_view text, std::size_t at);
std::size_t end_of_copy(std::string_view text, std::size_t at);

/// The length of the control character at the beginning of the text that HTML forbids; 0 where
/// there is none. The text is not empty.
constexpr std::size_t forbidden_length(std::u16string_view text) {
  const char16_t c = text.front();
  return (c < u' ' && c != u'\t') || (c >= 0x7F && c < 0xA0) ? 1 : 0;
}
constexpr std::size_t forbidden_length(std::string_view text) {
  const auto c = static_cast<unsigned char>(text.front());
  if ((c < ' ' && c != '\t') || c == 0x7F) return 1;
  const bool is_control =
      c == 0xC2 && text.size() > 1 && static_cast<unsigned char>(text[1]) < 0xA0;
  return is_control ? 2 : 0;
}

}  // namespace qel::convert
