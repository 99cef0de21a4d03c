#include "qt/platform/Positions.h"

#include <QTextBlock>
#include <algorithm>

namespace qel::qt {

std::int32_t box_length(const QTextDocument& document) {
  return document.characterCount() - 1 + document.blockCount() - 1;
}

std::int32_t box_position(const QTextDocument& document, int position) {
  return position + document.findBlock(position).blockNumber();
}

int document_position(const QTextDocument& document, std::int64_t position, InBreak side) {
  const std::int64_t wanted = std::clamp<std::int64_t>(position, 0, box_length(document));
  int first = 0;
  int count = document.blockCount();
  // The last paragraph that begins at or before the position.
  while (count > 1) {
    const int half = count / 2;
    const int begin = document.findBlockByNumber(first + half).position() + first + half;
    if (begin <= wanted) {
      first += half;
      count -= half;
    } else {
      count = half;
    }
  }
  const QTextBlock block = document.findBlockByNumber(first);
  const int in_block = static_cast<int>(wanted) - block.position() - first;
  const int break_at = block.length() - 1;
  if (in_block <= break_at) return block.position() + in_block;
  return block.position() + break_at + (side == InBreak::behind ? 1 : 0);
}

platform::Range box_range(const QTextDocument& document, Span span) {
  const std::int32_t start = box_position(document, span.start);
  return {start, span.is_empty() ? 0 : box_position(document, span.end) - start};
}

Span document_span(const QTextDocument& document, platform::Range range) {
  const std::int64_t start = std::clamp<std::int64_t>(range.start, 0, box_length(document));
  const int first = document_position(document, start, InBreak::before);
  if (range.length <= 0) return {first, first};
  return {first, document_position(document, start + range.length, InBreak::behind)};
}

}  // namespace qel::qt
