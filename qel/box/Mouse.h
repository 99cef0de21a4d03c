#pragma once

#include <cstdint>
#include <utility>

namespace qel::box {

class Box;

/// The mouse at a box: informs its listener, and decides when a drag of the selection begins. The
/// view places the caret. Buttons are masks of 1 left, 2 right and 4 middle.
class Mouse {
 public:
  struct Event {
    std::int16_t button = 0;  ///< the one that the event is about, or those held while it moves
    std::int16_t shift = 0;
    float x = 0;  ///< in the box's scale units
    float y = 0;
  };

  /// The box must outlive this.
  explicit Mouse(Box& box) : box_(box) {}

  /// A button goes down, on a selected character or not. Whether the view is to place the caret,
  /// which it is not where a drag may begin.
  bool press(const Event& event, bool on_selection);
  /// The pointer moves; `is_far` when it is far enough from where the button went down for a drag
  /// to begin. Whether the view is to select up to there.
  bool move(const Event& event, bool is_far);
  /// A button comes up. Whether the view is to place the caret now, since no drag has begun. After
  /// that, `released` reports the event in any case.
  bool release() { return std::exchange(may_drag_, false); }
  void released(const Event& event);
  /// The left button goes down for the second time; the view selects the word.
  void double_click();

  /// Whether a drag begins when the pointer has moved far enough.
  bool may_drag() const { return may_drag_; }
  void forget_drag() { may_drag_ = false; }

 private:
  Box& box_;
  bool may_drag_ = false;
  bool after_double_click_ = false;
};

}  // namespace qel::box
