#pragma once

#include <cstdint>
#include <string_view>

#include "qel/headless/BoxView.h"

namespace qel::headless {

/// The hands of a user at a box of a headless platform: keys and mouse do what they do in a window.
/// Key codes and masks are those of `platform/Keys.h`; the box's listener receives each event
/// before it acts. Nothing happens in a disabled box, and nothing changes in a read-only one.
///
/// The keys are those of `box::Keyboard`, and Up, Down, Home, End and the page keys, by lines.
class BoxUser {
 public:
  /// The box must outlive its user.
  explicit BoxUser(const platform::RichEdit& box) : view_(BoxView::of(box)) {}

  /// Presses and releases a key. Returns the code that was left to the box: 0 when the listener
  /// swallowed it.
  std::int16_t press(std::int16_t key_code, std::int16_t shift = 0);
  /// Types characters, each with its key; a line feed is Enter.
  void type(std::u16string_view text);

  /// The mouse, at points in the box's scale units. Buttons are 1 left, 2 right and 4 middle.
  void mouse_down(float x, float y, std::int16_t shift = 0, std::int16_t button = 1);
  void mouse_move(float x, float y, std::int16_t shift = 0);
  void mouse_up(float x, float y, std::int16_t shift = 0);
  void click(float x, float y, std::int16_t shift = 0);
  /// Selects the word there.
  void double_click(float x, float y);

 private:
  std::int16_t stroke(std::int16_t key_code, std::int16_t shift, std::u16string_view character);
  void put_caret(float x, float y, bool selects) {
    view_.box().put_caret(view_.position_at(x, y), selects);
  }

  BoxView& view_;
  std::int16_t button_ = 0;  // pressed
};

}  // namespace qel::headless
