#include "qt/platform/Positions.h"

#include <QTextBlock>
#include <algorithm>

namespace qel::qt {

namespace {

/// The length of the text as a box counts it.
std::int32_t box_length(const QTextDocument& document) {
  return document.characterCount() - 1 + document.blockCount() - 1;
}

}  // namespace

std::int32_t box_position(const QTextDocument& document, int position) {
  return position + document.findBlock(position).blockNumber();
}

int document_position(const QTextDocument& document, std::int64_t position) {
  const std::int64_t wanted = std::clamp<std::int64_t>(position, 0, box_length(document));
  int first = 0;
  int count = document.blockCount();
  // Searches for the last paragraph that begins at or before the position.
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
  return block.position() + std::min(in_block, block.length() - 1);
}

}  // namespace qel::qt
