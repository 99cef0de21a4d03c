#pragma once

#include <memory>

#include "qel/platform/Platform.h"

namespace qel::qt {

/// The desktop by way of Qt: boxes and editor windows that are seen, the system's clipboard, the
/// colours of the application's palette and the fonts of its font database. Needs a `QApplication`
/// from the creation of the first box on, and its thread.
///
/// A window handle is the address of a `QWidget`, which must outlive the boxes on it; scale units
/// are device-independent pixels. There are no visual styles to ask for the name of.
class QtPlatform : public platform::Platform {
 public:
  /// The one that widgets share.
  static std::shared_ptr<const QtPlatform> shared();
  /// The platform of this thread from now on is the shared one, unless a `QtPlatform` is already.
  static std::shared_ptr<const platform::Platform> use();

  const platform::SystemColors& system_colors() const override;
  const platform::VisualStyles& visual_styles() const override;
  platform::Clipboard& clipboard() const override;
  platform::Screen screen() const override;
  std::shared_ptr<platform::RichEdit> create_rich_edit(platform::WindowHandle owner) const override;
  std::shared_ptr<platform::MeasuringSurface> create_measuring_surface() const override;
  std::unique_ptr<platform::EditorWindow> create_editor_window(
      const platform::EditorDescription& description) const override;

  static constexpr std::int32_t window_text = 8;
  /// What the palette has for the system colour of that index, now.
  static Color system_color_value(std::int32_t index);
};

}  // namespace qel::qt
