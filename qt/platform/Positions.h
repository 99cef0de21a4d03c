#pragma once

#include <QTextDocument>
#include <cstdint>

#include "qel/platform/RichEdit.h"

/// Positions of a box and of a Qt document: a break takes two of the former, one of the latter.
/// All take time logarithmic in the number of paragraphs.
namespace qel::qt {

/// Part of a Qt document, from `start` up to but without `end`.
struct Span {
  int start = 0;
  int end = 0;

  bool is_empty() const { return start == end; }
  friend bool operator==(const Span&, const Span&) = default;
};

/// Length of the text as a box counts it.
std::int32_t box_length(const QTextDocument& document);
std::int32_t box_position(const QTextDocument& document, int position);

enum class InBreak { before, behind };
/// Positions out of range are moved to the nearest end, those inside a break to one of its sides.
int document_position(const QTextDocument& document, std::int64_t position, InBreak side);

platform::Range box_range(const QTextDocument& document, Span span);
/// The span of a range, widened so that it cuts no break.
Span document_span(const QTextDocument& document, platform::Range range);

/// All of the text.
inline Span whole(const QTextDocument& document) { return {0, document.characterCount() - 1}; }

}  // namespace qel::qt
