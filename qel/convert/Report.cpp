#include "qel/convert/Report.h"

namespace qel::convert {

std::string in_words(const Dropped& dropped) {
  std::string words;
  for (const DroppedKind& kind : dropped_kinds) {
    const std::uint64_t count = dropped.*kind.count;
    if (count == 0) continue;
    if (!words.empty()) words.append(", ");
    words.append(std::to_string(count)).append(" ").append(count == 1 ? kind.one : kind.several);
  }
  return words;
}

}  // namespace qel::convert
