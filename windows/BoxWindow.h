#pragma once

#include <windows.h>

#include <cstdint>
#include <memory>
#include <optional>

#include "qel/headless/BoxUser.h"
#include "qel/headless/RichEdit.h"
#include "qel/platform/BoxListener.h"
#include "windows/BoxDisplay.h"
#include "windows/DropTarget.h"

namespace qel::windows {

/// A box and its window. The content is that of a box in memory, which also knows what can be
/// undone; the window shows it, moves the caret by lines and with the mouse, and takes what is
/// composed from several keys. Keys that change the text act on the box in memory.
///
/// Listeners may let go of the box whenever they are told something: whoever calls a member holds
/// on to it.
class BoxWindow : public std::enable_shared_from_this<BoxWindow>, private DropClient {
 public:
  explicit BoxWindow(platform::Clipboard& clipboard);
  BoxWindow(const BoxWindow&) = delete;
  BoxWindow& operator=(const BoxWindow&) = delete;
  ~BoxWindow() override = default;

  /// The content; changes are shown at once, and the listener is told of them.
  headless::RichEdit& content() { return content_; }
  const headless::RichEdit& content() const { return content_; }
  void select(platform::Range range);
  void put_appearance(const platform::BoxAppearance& appearance);
  void listen(platform::BoxListener* listener) {
    listener_ = listener == nullptr ? &nobody_ : listener;
  }

  /// The window, which is made when it is asked for.
  HWND window();
  /// Puts the box on a window; one on none (null) is never shown.
  void put_owner(HWND owner);
  /// The box goes. Its window does too, as soon as it handles no message any more.
  void close();

  /// Drags the selection until it is dropped.
  void start_drag();
  std::int32_t position_at(POINT point) const { return display_.position_at(point); }
  POINT point_of(std::int32_t position) const { return display_.point_of(position); }

 private:
  class Busy;

  /// The box in memory, on the clipboard of the platform.
  class Content : public headless::RichEdit {
   public:
    Content(BoxWindow& box, platform::Clipboard& clipboard) : box_(box), clipboard_(clipboard) {}
    platform::Clipboard& clipboard() const override { return clipboard_; }

   private:
    void carry(headless::Drag& drag) const override { box_.carry(drag); }

    BoxWindow& box_;
    platform::Clipboard& clipboard_;
  };

  /// Hears of what happens to the content.
  class Teller : public platform::BoxListener {
   public:
    explicit Teller(BoxWindow& box) : box_(box) {}
    void on_change() override {
      box_.show();
      box_.listener_->on_change();
    }
    void on_key_press(std::int16_t& character) override { box_.listener_->on_key_press(character); }
    void on_start_drag(platform::DragData& data, std::int32_t& allowed_effects) override {
      box_.listener_->on_start_drag(data, allowed_effects);
    }
    void on_set_data(platform::DragData& data, std::int16_t format) override {
      box_.listener_->on_set_data(data, format);
    }
    void on_complete_drag(std::int32_t& effect) override {
      box_.listener_->on_complete_drag(effect);
    }

   private:
    BoxWindow& box_;
  };

  /// What a handler of a message returns: the result, or nothing for a message that is left to the
  /// window's own procedure.
  using Handled = std::optional<LRESULT>;

  static LRESULT CALLBACK procedure(HWND window, UINT message, WPARAM parameter, LPARAM data,
                                    UINT_PTR id, DWORD_PTR box);
  LRESULT handle(UINT message, WPARAM parameter, LPARAM data);
  Handled handle_own(UINT message, WPARAM parameter, LPARAM data);
  LRESULT act_natively(UINT message, WPARAM parameter, LPARAM data);
  Handled compose(UINT message, WPARAM parameter, LPARAM data);

  void create(HWND parent);
  void destroy();
  void place();
  richtext::Extent selected() const;
  void show(BoxDisplay::Patience patience = BoxDisplay::Patience::some);
  void take_from_window(BoxDisplay::Touch touch);
  void take_foreign_text(BoxDisplay::Touch touch);
  const platform::BoxAppearance& appearance() const { return appearance_; }

  // Keys.
  Handled handle_key(UINT message, WPARAM parameter, LPARAM data);
  LRESULT press(UINT message, WPARAM key, LPARAM data);
  LRESULT release(UINT message, WPARAM key, LPARAM data);
  LRESULT take_character(char16_t character);
  bool is_about_to_type() const;
  void drop_characters() const;
  void leave_by_tab(bool back) const;
  void leave_to_dialog(std::int16_t key_code) const;
  void move_natively(UINT message, WPARAM key, LPARAM data);
  void act(std::int16_t key_code, std::int16_t shift);

  // Drag and drop.
  void carry(headless::Drag& what);
  platform::BoxListener& drop_listener() override { return *listener_; }
  const platform::BoxAppearance& drop_appearance() const override { return appearance_; }
  bool take_drop(platform::DragData& data, POINT at, std::int32_t effect) override;

  // The mouse.
  Handled handle_mouse(UINT message, WPARAM parameter, LPARAM data);
  LRESULT press_button(UINT message, WPARAM parameter, LPARAM data);
  LRESULT double_click(LPARAM data);
  LRESULT move_mouse(UINT message, WPARAM parameter, LPARAM data);
  LRESULT release_button(UINT message, WPARAM parameter, LPARAM data);
  bool is_on_selection(POINT point) const;

  Content content_;
  headless::BoxUser hands_{content_};
  BoxDisplay display_;
  Teller teller_{*this};
  platform::BoxListener nobody_;
  platform::BoxListener* listener_ = &nobody_;
  platform::BoxAppearance appearance_;

  HWND window_ = nullptr;
  HWND owner_ = nullptr;
  int busy_ = 0;  // messages being handled
  bool is_closed_ = false;
  bool composes_ = false;
  bool goes_on_ = false;  // with what the display has left over
  bool after_double_click_ = false;
  std::optional<POINT> may_drag_from_;
  std::optional<DropTarget> drop_target_;
  bool carries_ = false;          // what is dragged comes from here
  bool stays_in_source_ = false;  // and was dropped here, too
};

}  // namespace qel::windows
