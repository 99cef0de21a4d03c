#include "qel/headless/EditorWindow.h"

#include <utility>

namespace qel::headless {

EditorWindow::EditorWindow(platform::EditorDescription description, User user,
                           std::shared_ptr<platform::RichEdit> box)
    : description_(std::move(description)), user_(std::move(user)), box_(std::move(box)) {}

void EditorWindow::put_extent(std::int32_t width, std::int32_t height) {
  width_ = width;
  height_ = height;
  if (is_open_) listener_->on_resize(width_, height_);
}

void EditorWindow::lay_out(const platform::EditorRectangle& box,
                           const platform::EditorRectangle& ok,
                           const platform::EditorRectangle& cancel) {
  rectangles_[0] = box;
  rectangles_[1] = ok;
  rectangles_[2] = cancel;
}

void EditorWindow::show_modal(platform::EditorListener& listener) {
  listener_ = &listener;
  is_open_ = true;
  listener.on_resize(width_, height_);
  listener.on_activate();
  if (user_) user_(*this);
  if (is_open_) close_by_frame();
  listener_ = nullptr;
}

void EditorWindow::close_by_frame() {
  if (!is_open_) return;
  listener_->on_close();
  is_open_ = false;
}

}  // namespace qel::headless
