#include "windows/Positions.h"

#include <algorithm>

#include "qel/base/Scan.h"

namespace qel::windows {

namespace {

/// At some characters the window would end its text, a line or a table cell, and at another it
/// would look for an object.
char16_t shown(char16_t character) {
  constexpr std::u16string_view blanks = u"\v\f\u0085\u2028\u2029";
  constexpr std::u16string_view signs = u"\uFFF9\uFFFA\uFFFB\uFFFC";
  if (blanks.find(character) != std::u16string_view::npos) return u' ';
  const bool is_control = character < u' ' && character != u'\t' && character != u'\r';
  const bool is_sign = is_control || signs.find(character) != std::u16string_view::npos;
  return is_sign ? u'\uFFFD' : character;
}

}  // namespace

void Positions::replace(richtext::Extent extent, std::u16string_view text) {
  std::vector<std::size_t> added;
  for (std::size_t at = text.find(u'\r'); at != text.npos; at = text.find(u'\r', at + 1)) {
    added.push_back(extent.start + at);
  }
  const auto first = std::lower_bound(breaks_.begin(), breaks_.end(), extent.start);
  const auto last = std::lower_bound(first, breaks_.end(), extent.end);
  std::for_each(last, breaks_.end(),
                [&](std::size_t& at) { at = at - extent.length() + text.size(); });
  const auto next = breaks_.erase(first, last);
  breaks_.insert(next, added.begin(), added.end());
  size_ = size_ - extent.length() + text.size();
}

long Positions::native(std::size_t position) const {
  const auto next = std::lower_bound(breaks_.begin(), breaks_.end(), position);
  return static_cast<long>(position) - static_cast<long>(next - breaks_.begin());
}

std::size_t Positions::of_native(long native) const {
  // The window counts one position less for each break before this one.
  const auto next =
      std::partition_point(breaks_.begin(), breaks_.end(), [&](const std::size_t& at) {
        return static_cast<long>(at) - (&at - breaks_.data()) < native;
      });
  const auto position = static_cast<std::size_t>(std::max(native, 0L)) +
                        static_cast<std::size_t>(next - breaks_.begin());
  return std::min(position, size_);
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
