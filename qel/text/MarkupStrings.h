#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "qel/model/StyleDecoder.h"

/// Cutting and joining markup by the characters of its plain text, in a decoder. Lengths and
/// positions of any size, unlike those of the members that are built on these.
namespace qel::markup {

/// Where `search` first or last occurs in a plain text, one-based; 0 when it does not. Nothing
/// occurs in an empty text; an empty `search` occurs at 1.
std::size_t find(std::u16string_view plain, std::u16string_view search, bool ignores_case);
std::size_t find_last(std::u16string_view plain, std::u16string_view search, bool ignores_case);

/// Length of the plain text that the decoder holds.
std::int32_t plain_length(StyleDecoder& decoder);

/// Decodes `text` and leaves its first `length` characters, whose markup it returns. A length
/// beyond the text leaves all of it.
std::u16string left(StyleDecoder& decoder, std::u16string_view text, std::int32_t length);
/// Decodes `text` and leaves its last `length` characters, whose markup it returns.
std::u16string right(StyleDecoder& decoder, std::u16string_view text, std::int32_t length);

/// What stands before and behind `length` characters from `start` (one-based) on. Decodes `text`
/// and leaves what is behind.
struct Surroundings {
  std::u16string before;
  std::u16string behind;
};
Surroundings around(StyleDecoder& decoder, std::u16string_view text, std::int32_t start,
                    std::int32_t length);

/// The markup between the delimiters, which are looked for in the plain text. Leaves what is behind
/// the last one in the decoder.
std::vector<std::u16string> split(StyleDecoder& decoder, std::u16string_view text,
                                  std::u16string_view delimiter);

}  // namespace qel::markup
