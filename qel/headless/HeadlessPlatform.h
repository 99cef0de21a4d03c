#pragma once

#include <functional>
#include <memory>
#include <utility>

#include "qel/headless/EditorWindow.h"
#include "qel/headless/Shared.h"
#include "qel/platform/Platform.h"

namespace qel::headless {

/// The platform without any window: everything lives in memory, and every answer is the same on
/// every system. Offers rich edit boxes (`BoxUser` is their user), a measuring surface that knows
/// the common symbol fonts by name, a canvas that measures as `SvgCanvas` does, and the classic
/// system colours. Visual styles are switched off.
class HeadlessPlatform : public platform::Platform {
 public:
  const platform::SystemColors& system_colors() const override;
  const platform::VisualStyles& visual_styles() const override;
  /// This platform's own, which no other program sees.
  OwnClipboard& clipboard() const override { return shared_->clipboard; }
  /// 1024 by 768 pixels of 15 twips.
  platform::Screen screen() const override { return {1024, 768, 15, 15}; }
  std::shared_ptr<platform::RichEdit> create_rich_edit(platform::WindowHandle owner) const override;
  std::shared_ptr<platform::MeasuringSurface> create_measuring_surface() const override;
  std::shared_ptr<platform::Canvas> create_measuring_canvas() const override;
  std::unique_ptr<platform::EditorWindow> create_editor_window(
      const platform::EditorDescription& description) const override;

  /// Sets the user of the editor windows that are created from now on.
  void put_user(EditorWindow::User user) { user_ = std::move(user); }
  /// Sets who carries out the drags from the platform's boxes.
  void put_dragger(std::function<void(Drag&)> dragger) { shared_->dragger = std::move(dragger); }

 private:
  EditorWindow::User user_;
  std::shared_ptr<Shared> shared_ = std::make_shared<Shared>();
};

}  // namespace qel::headless
