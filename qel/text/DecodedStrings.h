#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "qel/model/StyleDecoder.h"
#include "qel/model/cReplaceData.h"
#include "qel/text/WordSet.h"

/// The work behind `QELText` and MarkupStrings.h, in a decoder that keeps what is left of the text,
/// in its own way. Lossless, the line codes at a cut are in the part behind it, except those at the
/// end of the text, and the parts of a text put together are the text again. Positions count the
/// characters of the plain text from 0. Positions and lengths may reach beyond the text on either
/// side, where there is nothing to cut.
namespace qel::decoded {

/// Position of the first or last `search` in a plain text; `npos` when there is none, and always in
/// an empty text. An empty `search` is found at 0.
std::size_t find(std::u16string_view plain, std::u16string_view search, bool ignores_case);
std::size_t find_last(std::u16string_view plain, std::u16string_view search, bool ignores_case);

/// Each of these decodes `text` and returns the markup of the part that it leaves in the decoder:
/// the first `length` characters, the last `length`, or `length` from `start` on (-1 for all the
/// rest).
std::u16string left(StyleDecoder& decoder, std::u16string_view text, std::ptrdiff_t length);
std::u16string right(StyleDecoder& decoder, std::u16string_view text, std::ptrdiff_t length);
std::u16string mid(StyleDecoder& decoder, std::u16string_view text, std::ptrdiff_t start,
                   std::ptrdiff_t length);

/// `text` with the markup `replacement` in place of `length` characters from `start` on. Leaves
/// what comes behind them. Lossless, the line codes around these characters stay.
std::u16string stuff(StyleDecoder& decoder, std::u16string_view text, std::ptrdiff_t start,
                     std::ptrdiff_t length, std::u16string_view replacement);

/// Leaves `text` with `length` characters from `start` on replaced, and the replacement enclosed in
/// the codes of a style. What `given` takes of the style from the text is as in
/// `QELText::StuffWithStyleData`.
void replace(StyleDecoder& decoder, std::u16string_view text, std::ptrdiff_t start,
             std::ptrdiff_t length, std::u16string_view replacement, const iStyle& given);
void replace(StyleDecoder& decoder, std::u16string_view text, std::ptrdiff_t start,
             std::ptrdiff_t length, std::u16string_view replacement, const cReplaceData& given);

/// The markup between the delimiters, which are searched for in the plain text; `text` as it is
/// when there are none. Leaves what comes after the last one.
std::vector<std::u16string> split(StyleDecoder& decoder, std::u16string_view text,
                                  std::u16string_view delimiter);

/// Toggles an attribute (see `TextAttribute`) of the decoder's text, or of `length` characters from
/// `start` on when `length` is above 0. Title case leaves the `ignored` words in lower case.
void toggle(StyleDecoder& decoder, std::int32_t attribute, std::ptrdiff_t start,
            std::ptrdiff_t length, const WordSet& ignored);

}  // namespace qel::decoded
