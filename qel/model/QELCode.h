#pragma once

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
std::u16string protect_escaped_codes(std::u16string text);

/// Whether the text begins with an escaped code, which is four characters long.
bool begins_with_escaped_code(std::u16string_view text);

/// Whether the text begins with a placeholder, which is four characters long.
bool begins_with_placeholder(std::u16string_view text);

/// Turns each placeholder back into the escaped code.
std::u16string restore_escaped_codes(std::u16string text);

}  // namespace qel
