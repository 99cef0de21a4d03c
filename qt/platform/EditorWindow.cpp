#include "qt/platform/EditorWindow.h"

#include <QApplication>

#include "qel/qt/QtPlatform.h"
#include "qt/platform/BoxView.h"
#include "qt/platform/EditorDialog.h"

namespace qel::qt {
namespace {

QRect in_pixels(const platform::EditorRectangle& rectangle, const platform::Screen& screen) {
  return {rectangle.left / screen.twips_per_pixel_x, rectangle.top / screen.twips_per_pixel_y,
          rectangle.width / screen.twips_per_pixel_x, rectangle.height / screen.twips_per_pixel_y};
}

/// The window of the box whose text is edited, whichever is active.
QWidget* owner_of(const platform::EditorDescription& description) {
  const BoxView* const replaced =
      description.replaced == nullptr ? nullptr : BoxView::of(*description.replaced);
  const bool is_on_window = replaced != nullptr && replaced->parentWidget() != nullptr;
  return is_on_window ? replaced->QWidget::window() : QApplication::activeWindow();
}

}  // namespace

EditorWindow::EditorWindow(const platform::EditorDescription& description)
    : dialog_(new EditorDialog(description, owner_of(description))), box_(dialog_->box()) {}

EditorWindow::~EditorWindow() { delete dialog_; }

std::shared_ptr<platform::RichEdit> EditorWindow::box() const { return box_; }

void EditorWindow::put_extent(std::int32_t width, std::int32_t height) {
  const platform::Screen screen = QtPlatform().screen();
  if (dialog_) {
    dialog_->open_form({width / screen.twips_per_pixel_x, height / screen.twips_per_pixel_y});
  }
}

void EditorWindow::lay_out(const platform::EditorRectangle& box,
                           const platform::EditorRectangle& ok,
                           const platform::EditorRectangle& cancel) {
  const platform::Screen screen = QtPlatform().screen();
  if (dialog_) {
    dialog_->lay_out(in_pixels(box, screen), in_pixels(ok, screen), in_pixels(cancel, screen));
  }
}

void EditorWindow::focus_box() {
  if (dialog_) dialog_->view().setFocus();
}

void EditorWindow::show_modal(platform::EditorListener& listener) {
  if (!dialog_) return;
  dialog_->listen(&listener);
  dialog_->tell_size();
  dialog_->exec();
  if (dialog_) dialog_->listen(nullptr);
}

void EditorWindow::close() {
  if (dialog_) dialog_->done(QDialog::Accepted);
}

}  // namespace qel::qt
