#pragma once

#include <memory>

#include "qel/platform/Platform.h"

namespace qel::windows {

/// The platform of Windows: visible boxes and editor windows, the system's clipboard, colours,
/// fonts and visual styles. Boxes and windows belong to the thread that creates them.
///
/// A window handle is an HWND, which must outlive the boxes on it; scale units are pixels.
/// A measuring surface's device context is valid as long as the surface.
class WindowsPlatform : public platform::Platform {
 public:
  /// The platform that controls share.
  static std::shared_ptr<const WindowsPlatform> shared();

  const platform::SystemColors& system_colors() const override;
  const platform::VisualStyles& visual_styles() const override;
  platform::Clipboard& clipboard() const override;
  platform::Screen screen() const override;
  std::shared_ptr<platform::RichEdit> create_rich_edit(platform::WindowHandle owner) const override;
  std::shared_ptr<platform::MeasuringSurface> create_measuring_surface() const override;
  std::shared_ptr<platform::Canvas> create_measuring_canvas() const override;
  std::unique_ptr<platform::EditorWindow> create_editor_window(
      const platform::EditorDescription& description) const override;
};

}  // namespace qel::windows
