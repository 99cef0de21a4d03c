#pragma once

#include <cstddef>
#include <string>
#include <string_view>

/// Positions between a box, where a break is CR LF, and the system's rich edit window, where it is
/// CR alone.
namespace qel::windows {

/// Walks through a text of a box; a walk forward costs what it passes.
class NativePositions {
 public:
  /// The text must outlive this.
  explicit NativePositions(std::u16string_view text) : text_(text) {}

  /// The window's position for one that lies in the text and within no break.
  long of(std::size_t position);

 private:
  std::u16string_view text_;
  std::size_t at_ = 0;
  std::size_t breaks_ = 0;  // before `at_`
};

/// The position in the text for one of the window; the end for those behind it.
std::size_t box_position(std::u16string_view text, long native);

/// The text as the window shows it: with its breaks, and a blank or a sign in place of each
/// character that the window would make something else of. Each character takes as many positions.
std::u16string native_text(std::u16string_view text);

/// Text read from the window, with the breaks of a box.
std::u16string box_text(std::u16string_view native);

}  // namespace qel::windows
