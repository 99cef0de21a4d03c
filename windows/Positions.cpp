#include "windows/Positions.h"

#include <algorithm>

#include "qel/base/Scan.h"

namespace qel::windows {

namespace {

/// The window ends its text, a line or a cell of a table at some characters, and looks for an
/// object at another.
char16_t shown(char16_t character) {
  constexpr std::u16string_view blanks = u"\v\f\u0085\u2028\u2029";
  constexpr std::u16string_view signs = u"\uFFF9\uFFFA\uFFFB\uFFFC";
  if (blanks.find(character) != std::u16string_view::npos) return u' ';
  const bool is_control = character < u' ' && character != u'\t' && character != u'\r';
  const bool is_sign = is_control || signs.find(character) != std::u16string_view::npos;
  return is_sign ? u'\uFFFD' : character;
}

}  // namespace

long NativePositions::of(std::size_t position) {
  if (position < at_) at_ = breaks_ = 0;
  const std::u16string_view passed = text_.substr(at_, position - at_);
  breaks_ += static_cast<std::size_t>(std::count(passed.begin(), passed.end(), u'\n'));
  at_ = position;
  return static_cast<long>(position - breaks_);
}

std::size_t box_position(std::u16string_view text, long native) {
  std::size_t position = static_cast<std::size_t>(std::max(native, 0L));
  std::size_t found = text.find(u'\r');
  while (found < position) {
    ++position;
    found = text.find(u'\r', found + 1);
  }
  return std::min(position, text.size());
}

std::u16string native_text(std::u16string_view text) {
  std::u16string native;
  native.reserve(text.size());
  for (const char16_t character : text) {
    if (character != u'\n') native.push_back(shown(character));
  }
  return native;
}

std::u16string box_text(std::u16string_view native) {
  return replace_all(std::u16string(native), u"\r", u"\r\n");
}

}  // namespace qel::windows
