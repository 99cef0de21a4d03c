#pragma once

#include <functional>
#include <memory>
#include <string>
#include <string_view>

#include "qel/platform/EditorWindow.h"

namespace qel::headless {

/// An editor window that nobody sees. While it is shown, its platform's user acts in it; without a
/// user it is closed by its frame at once.
class EditorWindow : public platform::EditorWindow {
 public:
  /// Plays the part of the user: chooses, presses buttons, edits in the box.
  using User = std::function<void(EditorWindow& window)>;

  EditorWindow(platform::EditorDescription description, User user,
               std::shared_ptr<platform::RichEdit> box);

  std::shared_ptr<platform::RichEdit> box() const override { return box_; }
  /// The listener is told of the new extent once the window is shown.
  void put_extent(std::int32_t width, std::int32_t height) override;
  void lay_out(const platform::EditorRectangle& box, const platform::EditorRectangle& ok,
               const platform::EditorRectangle& cancel) override;
  void focus_box() override { has_focus_ = true; }
  void show_modal(platform::EditorListener& listener) override;
  void close() override { is_open_ = false; }

  // For the user. None of these acts unless the window is open.

  const platform::EditorDescription& description() const { return description_; }
  bool is_open() const { return is_open_; }
  bool box_has_focus() const { return has_focus_; }
  const platform::EditorRectangle& box_rectangle() const { return rectangles_[0]; }
  const platform::EditorRectangle& ok_rectangle() const { return rectangles_[1]; }
  const platform::EditorRectangle& cancel_rectangle() const { return rectangles_[2]; }
  /// Chooses the menu item of that name.
  void choose(std::u16string_view name) {
    if (is_open_) listener_->on_command(name);
  }
  /// Whether that menu item is checked.
  bool is_checked(std::u16string_view name) const {
    return is_open_ && listener_->is_checked(name);
  }
  /// What the pane shows.
  std::u16string pane_text() const { return is_open_ ? listener_->pane_text() : u""; }
  /// Moves the focus from the box to a button.
  void leave_box() { has_focus_ = false; }
  /// Comes back from another window.
  void come_back() {
    if (is_open_) listener_->on_activate();
  }
  void press_ok() {
    if (is_open_) listener_->on_ok();
  }
  void press_cancel() {
    if (is_open_) listener_->on_cancel();
  }
  void close_by_frame();

 private:
  platform::EditorDescription description_;
  User user_;
  std::shared_ptr<platform::RichEdit> box_;
  platform::EditorListener* listener_ = nullptr;
  platform::EditorRectangle rectangles_[3] = {};
  std::int32_t width_ = 0;
  std::int32_t height_ = 0;
  bool is_open_ = false;
  bool has_focus_ = false;
};

}  // namespace qel::headless
