#pragma once

#include <functional>

#include "com/platform/RichEdit.h"

namespace qel::windows {

/// The box of an editor window: keys that the listener leaves to it can be the window's.
class EditorBox : public RichEdit {
 public:
  /// Whether the window acts on a key that the listener has left.
  using TakeKey = std::function<bool(std::int16_t key_code, std::int16_t shift)>;

  EditorBox(HWND owner, platform::Clipboard& clipboard, TakeKey take_key)
      : RichEdit(owner, clipboard), take_key_(std::move(take_key)) {
    RichEdit::listen(&relay_);
  }
  ~EditorBox() override { RichEdit::listen(nullptr); }

  void listen(platform::BoxListener* listener) override {
    relay_.listener = listener == nullptr ? &nobody_ : listener;
  }
  /// The window is gone.
  void keep_keys() { take_key_ = {}; }

 private:
  class Relay : public platform::BoxListener {
   public:
    explicit Relay(EditorBox& box) : listener(&box.nobody_), box_(box) {}

    void on_change() override { listener->on_change(); }
    void on_click() override { listener->on_click(); }
    void on_double_click() override { listener->on_double_click(); }
    void on_key_down(std::int16_t& key_code, std::int16_t& shift) override {
      listener->on_key_down(key_code, shift);
      if (key_code != 0 && box_.take_key_ && box_.take_key_(key_code, shift)) key_code = 0;
    }
    void on_key_press(std::int16_t& character) override { listener->on_key_press(character); }
    void on_key_up(std::int16_t& key_code, std::int16_t& shift) override {
      listener->on_key_up(key_code, shift);
    }
    void on_mouse_down(std::int16_t button, std::int16_t shift, float x, float y) override {
      listener->on_mouse_down(button, shift, x, y);
    }
    void on_mouse_move(std::int16_t button, std::int16_t shift, float x, float y) override {
      listener->on_mouse_move(button, shift, x, y);
    }
    void on_mouse_up(std::int16_t button, std::int16_t shift, float x, float y) override {
      listener->on_mouse_up(button, shift, x, y);
    }
    void on_start_drag(platform::DragData& data, std::int32_t& allowed_effects) override {
      listener->on_start_drag(data, allowed_effects);
    }
    void on_set_data(platform::DragData& data, std::int16_t format) override {
      listener->on_set_data(data, format);
    }
    void on_give_feedback(std::int32_t& effect, bool& default_cursors) override {
      listener->on_give_feedback(effect, default_cursors);
    }
    void on_drag_over(platform::DragData& data, std::int32_t& effect, std::int16_t button,
                      std::int16_t shift, float x, float y, std::int16_t state) override {
      listener->on_drag_over(data, effect, button, shift, x, y, state);
    }
    void on_drag_drop(platform::DragData& data, std::int32_t& effect, std::int16_t button,
                      std::int16_t shift, float x, float y) override {
      listener->on_drag_drop(data, effect, button, shift, x, y);
    }
    void on_complete_drag(std::int32_t& effect) override { listener->on_complete_drag(effect); }

    platform::BoxListener* listener;

   private:
    EditorBox& box_;
  };

  TakeKey take_key_;
  platform::BoxListener nobody_;
  Relay relay_{*this};
};

}  // namespace qel::windows
