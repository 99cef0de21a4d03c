#pragma once

#include <cstdint>
#include <memory>
#include <optional>
#include <string>

#include "qel/base/Color.h"
#include "qel/platform/Canvas.h"
#include "qel/platform/Clipboard.h"
#include "qel/platform/EditorWindow.h"
#include "qel/platform/MeasuringSurface.h"
#include "qel/platform/RichEdit.h"
#include "qel/platform/WindowHandle.h"

namespace qel::platform {

/// The current values of the system's colours.
class SystemColors {
 public:
  virtual ~SystemColors() = default;
  /// The value of the colour with this index (5 window background, 8 window text, and so on);
  /// 0 for an index that the system does not know.
  virtual Color color(std::int32_t index) const = 0;
};

/// The visual styles of the system.
class VisualStyles {
 public:
  virtual ~VisualStyles() = default;
  /// Name of the colour scheme in which controls are drawn ("NormalColor" and the like); empty
  /// while styles are switched off. Raises where the system knows no visual styles.
  virtual std::optional<std::u16string> color_scheme() const = 0;
};

/// A windowing platform: the factory of what the library asks of one.
class Platform {
 public:
  virtual ~Platform() = default;
  virtual const SystemColors& system_colors() const = 0;
  virtual const VisualStyles& visual_styles() const = 0;
  virtual Clipboard& clipboard() const = 0;
  virtual Screen screen() const = 0;
  /// A box on the window `owner`, or on none (0), where nobody sees it.
  virtual std::shared_ptr<RichEdit> create_rich_edit(WindowHandle owner) const = 0;
  virtual std::shared_ptr<MeasuringSurface> create_measuring_surface() const = 0;
  /// A canvas to measure on and not to draw on, whose unit is the point.
  virtual std::shared_ptr<Canvas> create_measuring_canvas() const = 0;
  virtual std::unique_ptr<EditorWindow> create_editor_window(
      const EditorDescription& description) const = 0;
};

}  // namespace qel::platform
