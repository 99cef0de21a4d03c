#pragma once

#include <QTextDocument>
#include <cstdint>

/// Converts positions between a box and the Qt document that shows it: a break takes two of the
/// former and one of the latter. Each takes time logarithmic in the number of paragraphs.
namespace qel::qt {

/// Part of a Qt document, from `start` up to, but not including, `end`.
struct Span {
  int start = 0;
  int end = 0;
};

std::int32_t box_position(const QTextDocument& document, int position);
/// A position out of range becomes the nearest end, one inside a break that before it.
int document_position(const QTextDocument& document, std::int64_t position);

}  // namespace qel::qt
