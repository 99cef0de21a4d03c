#include "qel/text/MarkupCase.h"

#include <algorithm>
#include <iterator>
#include <vector>

#include "qel/base/Scan.h"
#include "qel/model/Division.h"
#include "qel/model/QELCode.h"
#include "qel/model/StyleDecoder.h"
#include "qel/text/CaseRules.h"
#include "qel/text/TitleRules.h"

namespace qel {
namespace {

/// Masks the placeholders of escaped codes from `from` on, or in the lossless way the text that
/// looks like codes.
void mask_codes(std::u16string& text, std::size_t from, Way way) {
  for (std::size_t at = find_any<u'<', u'/'>(text, from); at < text.size();
       at = find_any<u'<', u'/'>(text, at + 1)) {
    const std::size_t length = length_of_code_as_text(std::u16string_view(text).substr(at), way);
    std::fill_n(text.begin() + static_cast<std::ptrdiff_t>(at), length, title_rules::escaped);
  }
}

/// All segments as one text, in which characters that must not change are masked and line codes are
/// a line break.
std::u16string flat_text(const SegmentCollection& segments, bool masks_hidden) {
  std::u16string flat;
  std::size_t size = 0;
  for (const auto& segment : segments) size += segment->text().size() + 1;
  flat.reserve(size);
  for (const auto& segment : segments) {
    if (segment->line_codes_before() > 0) flat.push_back(u'\n');
    if (masks_hidden && segment->code_state().color == hidden_color) {
      flat.append(segment->text().size(), title_rules::looked_through);
    } else {
      const std::size_t begin = flat.size();
      flat.append(segment->text());
      mask_codes(flat, begin, segments.way());
    }
  }
  return flat;
}

struct Piece {
  Segment* segment = nullptr;
  std::size_t begin = 0;  ///< in the flat text

  std::size_t length() const { return segment->text().size(); }
};

/// The segments of a span, which have been divided at its edges: those from its start on, up to the
/// first that ends where the span ends.
std::vector<Piece> pieces_of(const SegmentCollection& segments, std::ptrdiff_t start,
                             std::ptrdiff_t length) {
  std::vector<Piece> pieces;
  std::ptrdiff_t position = 0;
  std::size_t flat = 0;
  for (const auto& segment : segments) {
    if (segment->line_codes_before() > 0) ++flat;
    if (position >= start) pieces.push_back({segment.get(), flat});
    position += std::ssize(segment->text());
    flat += segment->text().size();
    if (position == start + length) break;
  }
  return pieces;
}

}  // namespace

std::u16string change_case(std::u16string_view markup, CaseChange change, std::ptrdiff_t start,
                           std::ptrdiff_t length, const WordSet& ignored, Way way) {
  // `ChangeCase` replaces the -1 by the length in 16 bits, which for such a text is -1 again.
  constexpr std::size_t reads_as_all = 0xFFFF;
  const bool masks_hidden =
      !case_rules::changes_hidden_text(change) ||
      (change == CaseChange::swap && length == -1 && markup.size() == reads_as_all);
  if (length == -1) length = std::ssize(markup);
  StyleDecoder decoder;
  decoder.put_Lossless(way == Way::lossless);
  decoder.put_QELText(markup);
  SegmentCollection& segments = *decoder.get_Segments();
  // Taken first, since the division may cut an escaped code in two.
  const std::u16string before = flat_text(segments, masks_hidden);
  division::divide(segments, start, length);
  const std::vector<Piece> pieces = pieces_of(segments, start, length);
  if (pieces.empty()) return decoder.get_QELText();
  std::u16string after = before;
  case_rules::apply(after, {pieces.front().begin, pieces.back().begin + pieces.back().length()},
                    change, ignored);
  for (const Piece& piece : pieces) {
    const auto part_before = std::u16string_view(before).substr(piece.begin, piece.length());
    const auto part_after = std::u16string_view(after).substr(piece.begin, piece.length());
    if (part_before == part_after) continue;
    piece.segment->put_characters(
        case_rules::with_changes(piece.segment->text(), part_before, part_after));
  }
  return decoder.get_QELText();
}

}  // namespace qel
