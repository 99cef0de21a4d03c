#pragma once

#include <QTextDocument>
#include <cstdint>

/// Positions of a box and of the Qt document that shows it: a break takes two of the former, one of
/// the latter. All take time logarithmic in the number of paragraphs.
namespace qel::qt {

/// Part of a Qt document, from `start` up to but without `end`.
struct Span {
  int start = 0;
  int end = 0;
};

std::int32_t box_position(const QTextDocument& document, int position);
/// Positions out of range are moved to the nearest end, those inside a break before it.
int document_position(const QTextDocument& document, std::int64_t position);

}  // namespace qel::qt
