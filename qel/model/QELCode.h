#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>

namespace qel {

/// Which codes `IsQELCode` accepts.
enum QELCodeFlags : std::int32_t {
  sfAll = 0,         ///< any code of the text model
  sfFormatting = 1,  ///< attribute (except "c"), font and colour codes
  sfColor = 2,       ///< "y" with any digit, and any toggle code
  sfFont = 3,        ///< "f" with any digit, and any toggle code
  sfOnCode = 4,      ///< codes that switch something on (except "/c1")
  sfOffCode = 5,     ///< codes that switch something off (except "/c0")
};

/// Whether `Text` is a code of the kind that `Flags` asks for. Only the leading slash, the second
/// and the last character are looked at; "/nl" is a code for every value, even one outside 0 to 5,
/// which accepts nothing else.
bool IsQELCode(std::u16string_view Text, std::int32_t Flags = sfAll);

/// Turns each escaped code ("~/b1") into the placeholder that hides its slash ("<b1]").
/// Small capitals are not in the escape set: "~/c1" stays as it is.
std::u16string protect_escaped_codes(std::u16string_view text);

/// The two ways of reading and writing markup.
enum class Way : std::uint8_t {
  stated,    ///< the letter of the format, with what it loses
  lossless,  ///< all that the format can say survives, and text that looks like a code stays text
};

namespace code_letters {

/// What may follow a letter.
enum Kind : std::uint8_t {
  toggle = 1,      ///< 0 or 1, and the text model knows the code
  index = 2,       ///< any digit
  escapable = 4,   ///< a tilde makes it text
  rtf_toggle = 8,  ///< 0 or 1, and only conversions to RTF know the code
};

inline constexpr auto kinds = [] {
  std::array<std::uint8_t, 128> table = {};
  for (const char16_t letter : {u'b', u'i', u'u', u'p', u's', u'k', u't'}) {
    table[letter] = toggle | escapable;
  }
  table['c'] = toggle;
  table['f'] = table['y'] = index | escapable;
  table['r'] = table['l'] = rtf_toggle;
  return table;
}();

/// The kinds of the code with this letter and this digit; 0 for none.
constexpr unsigned kind(char16_t letter, char16_t digit) {
  const unsigned number = static_cast<unsigned>(digit) - u'0';
  if (letter >= kinds.size() || number > 9) return 0;
  const unsigned found = kinds[letter];
  return (found & index) != 0 || number <= 1 ? found : 0;
}

}  // namespace code_letters

/// Whether a slash and these two characters are a code of the text model, but for the line code.
constexpr bool is_text_model_code(char16_t letter, char16_t digit) {
  return (code_letters::kind(letter, digit) & (code_letters::toggle | code_letters::index)) != 0;
}

/// The same with the line code.
constexpr bool is_code_of_text_model(char16_t second, char16_t third) {
  return is_text_model_code(second, third) || (second == u'n' && third == u'l');
}

/// Whether a tilde before the slash of this code makes it text.
constexpr bool is_escapable(char16_t letter, char16_t digit) {
  return (code_letters::kind(letter, digit) & code_letters::escapable) != 0;
}

/// Whether a slash and these two characters are a code for any reader of markup, the line code and
/// the codes that only conversions to RTF know included.
constexpr bool is_code_of_any_reader(char16_t second, char16_t third) {
  return code_letters::kind(second, third) != 0 || (second == u'n' && third == u'l');
}

/// The length of the line break at the beginning of markup: "/nl", and in the lossless way CR LF,
/// CR or LF; 0 where there is none.
std::size_t line_break_length(std::u16string_view markup, Way way);
std::size_t line_break_length(std::string_view markup, Way way);

/// Whether the text begins with an escaped code, which is four characters long.
template <class Char>
constexpr bool begins_with_escaped_code(std::basic_string_view<Char> text) {
  return text.size() >= 4 && text[0] == '~' && text[1] == '/' &&
         is_escapable(static_cast<char16_t>(text[2]), static_cast<char16_t>(text[3]));
}
template <class Char>
bool begins_with_escaped_code(const std::basic_string<Char>& text) {
  return begins_with_escaped_code(std::basic_string_view<Char>(text));
}

/// Whether the text begins with a placeholder, which is four characters long.
bool begins_with_placeholder(std::u16string_view text);

/// How long the code is that stands as text at the beginning of decoded text: 4 for a placeholder,
/// 3 for a code itself in the lossless way, 0 where there is none.
std::size_t length_of_code_as_text(std::u16string_view text, Way way);

/// Turns each placeholder back into the escaped code.
std::u16string restore_escaped_codes(std::u16string text);

}  // namespace qel
