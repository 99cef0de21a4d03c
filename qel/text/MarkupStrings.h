#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "qel/model/cReplaceData.h"
#include "qel/text/TextCase.h"

/// String functions for markup of any length. They count the characters of its plain text, in
/// UTF-16 code units: codes and line codes ("/nl") count nothing, an escaped code ("~/b1") counts
/// as the four characters that plain text has for it.
///
/// Positions are zero-based, and `npos` as a count means all the rest. What lies beyond the text is
/// not found, cut or changed. The members of `QELText` do the same with positions of 16 bits that
/// count from 1 (`ToggleTextAttribute` and changes of case: from 0).
///
/// Markup that is returned was decoded and encoded: codes that do nothing are gone (see
/// `StyleDecoder::get_QELText`), and line codes unless `LineCodes::kept` asks for them. A cut
/// through an escaped code parts its characters, and what begins with "/b1" then reads as a code.
namespace qel::markup {

inline constexpr std::size_t npos = std::u16string_view::npos;

/// What becomes of the line codes of a text.
enum class LineCodes : std::uint8_t {
  dropped,
  kept,  ///< they stay between their characters, but go at an edge where characters are cut off
};

enum class Matching : std::uint8_t { exact, ignoring_case };

/// The text without codes and line codes, and how many characters it has.
std::u16string plain_text(std::u16string_view markup);
std::size_t length(std::u16string_view markup);

/// Position of the first match in the plain text; `npos` when there is none, and always in an empty
/// text. `search` is markup too: its codes do not matter. An empty one is found at 0.
std::size_t find(std::u16string_view markup, std::u16string_view search,
                 Matching matching = Matching::exact);
/// Position of the last match that lies wholly within the first `within` characters.
std::size_t find_last(std::u16string_view markup, std::u16string_view search,
                      Matching matching = Matching::exact, std::size_t within = npos);

/// The first or last `count` characters, or `count` from the one at `start` on.
std::u16string left(std::u16string_view markup, std::size_t count,
                    LineCodes line_codes = LineCodes::dropped);
std::u16string right(std::u16string_view markup, std::size_t count,
                     LineCodes line_codes = LineCodes::dropped);
std::u16string mid(std::u16string_view markup, std::size_t start, std::size_t count = npos,
                   LineCodes line_codes = LineCodes::dropped);

/// The markup with `replacement` in place of `count` characters from the one at `start` on, or at
/// its end. The replacement is markup and is taken as it stands, line codes included: what it
/// leaves switched on reaches on.
std::u16string replace(std::u16string_view markup, std::size_t start, std::size_t count,
                       std::u16string_view replacement, LineCodes line_codes = LineCodes::dropped);
/// The same with the replacement in the codes of a style, which `style` gives or takes from the
/// text as in `QELText::StuffWithStyleData`. Line codes of the replacement go with the others.
std::u16string replace(std::u16string_view markup, std::size_t start, std::size_t count,
                       std::u16string_view replacement, const cReplaceData& style,
                       LineCodes line_codes = LineCodes::dropped);

/// The parts between the delimiters, which are looked for in the plain text. A delimiter at the
/// very end adds no part; an empty text has none. An empty delimiter is found nowhere, and a text
/// without the delimiter comes back as it stands.
std::vector<std::u16string> split(std::u16string_view markup, std::u16string_view delimiter,
                                  LineCodes line_codes = LineCodes::dropped);

/// Toggles an attribute (see `TextAttribute`): the first run of the span decides whether it is set
/// or cleared in all of the span.
std::u16string toggle(std::u16string_view markup, std::int32_t attribute, std::size_t start = 0,
                      std::size_t count = npos, LineCodes line_codes = LineCodes::dropped);

/// Changes the case of letters; title case spares the ignored words of `rules`.
std::u16string change_case(std::u16string_view markup, CaseChange change, std::size_t start = 0,
                           std::size_t count = npos, LineCodes line_codes = LineCodes::dropped,
                           const TextCase& rules = TextCase());

}  // namespace qel::markup
