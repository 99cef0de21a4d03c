#pragma once

#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

#include "qel/richtext/Document.h"

namespace qel::windows {

/// Converts between positions in a box, where a break is CR LF, and those in the system's rich edit
/// window, where it is CR alone. Takes logarithmic time.
class Positions {
 public:
  /// Text has replaced an extent, which cuts no break.
  void replace(richtext::Extent extent, std::u16string_view text);
  /// The length of the text.
  std::size_t size() const { return size_; }

  /// The window's position; for one within a break, that before it.
  long native(std::size_t position) const;
  /// The position in the text for one in the window; the end for one after it.
  std::size_t of_native(long native) const;

 private:
  std::vector<std::size_t> breaks_;  // where each one begins
  std::size_t size_ = 0;
};

/// The text as the window shows it: with the window's breaks, and a blank or a sign in place of
/// each character that has a special meaning to it. Each character takes as many positions as
/// before.
std::u16string native_text(std::u16string_view text);

/// Text read from the window, with the breaks of a box.
std::u16string box_text(std::u16string_view native);

}  // namespace qel::windows
