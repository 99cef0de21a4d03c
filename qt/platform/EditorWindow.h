#pragma once

#include <QPointer>

#include "qel/platform/EditorWindow.h"

namespace qel::qt {

class EditorDialog;

/// The large editor's window as a modal dialog before the window that is active when it is made.
/// Everything of the interface is supported. Escape is the second button; closing by the frame is
/// told as such. Menu items show their shortcuts, and the listener hears those keys from the box.
class EditorWindow : public platform::EditorWindow {
 public:
  explicit EditorWindow(const platform::EditorDescription& description);
  EditorWindow(const EditorWindow&) = delete;
  EditorWindow& operator=(const EditorWindow&) = delete;
  ~EditorWindow() override;

  std::shared_ptr<platform::RichEdit> box() const override;
  void put_extent(std::int32_t width, std::int32_t height) override;
  void lay_out(const platform::EditorRectangle& box, const platform::EditorRectangle& ok,
               const platform::EditorRectangle& cancel) override;
  void focus_box() override;
  void show_modal(platform::EditorListener& listener) override;
  void close() override;

 private:
  // A dialog goes with the window that it stands before.
  QPointer<EditorDialog> dialog_;
  std::shared_ptr<platform::RichEdit> box_;
};

}  // namespace qel::qt
