#pragma once

#include <QPointer>

#include "qel/platform/EditorWindow.h"

namespace qel::qt {

class EditorDialog;

/// The large editor's window as a modal dialog in front of the window of the box that it replaces,
/// or of the active one without such a box. Supports the whole interface. Escape is the second
/// button; closing by the frame is reported as such. Menu items show their shortcuts, whose keys
/// the listener gets from the box.
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
  // A dialog is deleted together with the window in front of which it stands.
  QPointer<EditorDialog> dialog_;
  std::shared_ptr<platform::RichEdit> box_;
};

}  // namespace qel::qt
