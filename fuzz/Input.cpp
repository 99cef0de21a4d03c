#include "Input.h"

#include <cstdio>
#include <cstdlib>

namespace qel::fuzz {

std::u16string Input::text() const {
  constexpr std::uint8_t first_of_three = 0xF0;
  std::u16string text;
  for (std::size_t i = 0; i < bytes_.size(); ++i) {
    if (at(i) < first_of_three || bytes_.size() - i < 3) {
      text.push_back(at(i));
    } else {
      text.push_back(static_cast<char16_t>(at(i + 1) << 8U | at(i + 2)));
      i += 2;
    }
  }
  return text;
}

std::int16_t Input::number(std::size_t index, std::int16_t least, std::int16_t most) const {
  const std::size_t back = 2 * index + 2;
  const int value =
      back > bytes_.size() ? 0 : at(bytes_.size() - back) << 8 | at(bytes_.size() - back + 1);
  return static_cast<std::int16_t>(least + value % (most - least + 1));
}

void require(bool holds, const char* what) {
  if (holds) return;
  std::fprintf(stderr, "Does not hold: %s\n", what);
  std::abort();
}

}  // namespace qel::fuzz
