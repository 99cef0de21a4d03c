#pragma once

#include <memory>

#include "qel/platform/Platform.h"

namespace qel::qt {

/// The desktop, through Qt: visible boxes and editor windows, the system's clipboard, the colours
/// of the application's palette and the fonts of its font database. From the creation of the first
/// box or canvas on it needs a `QApplication`, and may be used on the application's thread only.
///
/// A window handle is the address of a `QWidget`, which must outlive the boxes on it; scale units
/// are device-independent pixels. It knows no visual styles.
class QtPlatform : public platform::Platform {
 public:
  /// The platform that widgets share.
  static std::shared_ptr<const QtPlatform> shared();
  /// Makes the shared platform this thread's, unless that is a `QtPlatform` already; returns it.
  static std::shared_ptr<const platform::Platform> use();

  const platform::SystemColors& system_colors() const override;
  const platform::VisualStyles& visual_styles() const override;
  platform::Clipboard& clipboard() const override;
  platform::Screen screen() const override;
  std::shared_ptr<platform::RichEdit> create_rich_edit(platform::WindowHandle owner) const override;
  std::shared_ptr<platform::MeasuringSurface> create_measuring_surface() const override;
  std::shared_ptr<platform::Canvas> create_measuring_canvas() const override;
  std::unique_ptr<platform::EditorWindow> create_editor_window(
      const platform::EditorDescription& description) const override;

  static constexpr std::int32_t window_text = 8;
  /// The palette's current value for the system colour of that index.
  static Color system_color_value(std::int32_t index);
};

}  // namespace qel::qt
