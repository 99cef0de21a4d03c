#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "qel/model/QELCode.h"
#include "qel/model/cReplaceData.h"
#include "qel/text/TextCase.h"

/// String functions for markup of any length. They count the characters of its plain text in UTF-16
/// code units: codes and line codes ("/nl") do not count, and an escaped code ("~/b1") counts as
/// the four characters that plain text has for it.
///
/// Positions are zero-based. A count of `npos`, or one that reaches beyond the text, means all the
/// rest. The members of `QELText` do the same in 16 bits, with positions that begin at 1 (at 0 in
/// `ToggleTextAttribute` and the changes of case).
///
/// The markup that they return was decoded and encoded again: codes that do nothing are gone. In
/// the stated way so are line codes (see `StyleDecoder::get_QELText`); lossless, they stay where
/// they are, an escaped code counts as its three characters, and the parts into which a text was
/// cut, put together, are the text (see `QELText::get_Lossless`).
namespace qel::markup {

inline constexpr std::size_t npos = std::u16string_view::npos;

enum class Matching : std::uint8_t { exact, ignoring_case };

/// The text without codes and line codes, and how many characters it has.
std::u16string plain_text(std::u16string_view markup, Way way = Way::stated);
std::size_t length(std::u16string_view markup, Way way = Way::stated);

/// Position of the first match in the plain text; `npos` when there is none, and always in an empty
/// text. `search` is markup too, whose codes do not matter; an empty one is found at 0.
std::size_t find(std::u16string_view markup, std::u16string_view search,
                 Matching matching = Matching::exact, Way way = Way::stated);
/// Position of the last match that lies wholly within the first `within` characters.
std::size_t find_last(std::u16string_view markup, std::u16string_view search,
                      Matching matching = Matching::exact, std::size_t within = npos,
                      Way way = Way::stated);

/// The markup of the first `count` characters, of the last `count`, or of `count` from the one at
/// `start` on.
std::u16string left(std::u16string_view markup, std::size_t count, Way way = Way::stated);
std::u16string right(std::u16string_view markup, std::size_t count, Way way = Way::stated);
std::u16string mid(std::u16string_view markup, std::size_t start, std::size_t count = npos,
                   Way way = Way::stated);

/// The markup with `replacement` in place of `count` characters from the one at `start` on; beyond
/// the text, `replacement` is appended. It is markup too and is inserted as it is, line codes
/// included; lossless, its ends are kept apart from what they would form a code with.
std::u16string replace(std::u16string_view markup, std::size_t start, std::size_t count,
                       std::u16string_view replacement, Way way = Way::stated);
/// The same with the replacement enclosed in the codes of a style (see
/// `QELText::StuffWithStyleData`), and the whole encoded again.
std::u16string replace(std::u16string_view markup, std::size_t start, std::size_t count,
                       std::u16string_view replacement, const cReplaceData& style,
                       Way way = Way::stated);

/// The markup between the delimiters, which are searched for in the plain text. A delimiter at the
/// very end adds no part; an empty text has none. An empty delimiter is never found, and a text
/// without the delimiter is returned as it is.
std::vector<std::u16string> split(std::u16string_view markup, std::u16string_view delimiter,
                                  Way way = Way::stated);

/// Toggles an attribute (see `TextAttribute`) of `count` characters from the one at `start` on: if
/// the first run of the span has it, it is cleared in all of the span, else it is set.
std::u16string toggle(std::u16string_view markup, std::int32_t attribute, std::size_t start = 0,
                      std::size_t count = npos, Way way = Way::stated);

/// Changes the case of the same span; title case leaves the ignored words of `rules` in lower case.
std::u16string change_case(std::u16string_view markup, CaseChange change, std::size_t start = 0,
                           std::size_t count = npos, Way way = Way::stated,
                           const TextCase& rules = TextCase());

}  // namespace qel::markup
