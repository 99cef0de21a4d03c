#pragma once

#include <windows.h>

#include <string_view>

#include "qel/platform/Canvas.h"
#include "windows/Fonts.h"

namespace qel::windows {

/// Draws on a device context: of a window, a printer or a bitmap. Its unit is the point, from the
/// context's origin, whatever the device and the mapping mode are.
///
/// Fonts are those of the system, or what it has in their place. Text in font Symbol is drawn with
/// the characters that it means. A TAB is a gap of four blanks.
class DeviceCanvas : public platform::Canvas {
 public:
  /// The context has to outlive the canvas, and is left as it was found. The mapping mode must stay
  /// the same meanwhile.
  explicit DeviceCanvas(HDC context);

  float text_width(std::u16string_view text, const platform::TextFont& font) const override;
  platform::FontExtent font_extent(const platform::TextFont& font) const override;
  void draw_text(const platform::CanvasText& text) override;
  void fill_rectangle(const platform::CanvasRectangle& rectangle, Color color) override;

 private:
  HFONT handle_of(const platform::TextFont& font) const;

  HDC context_;
  double across_;  // logical units in a point
  double down_;
  // Text is measured in one font many times over.
  mutable platform::TextFont last_font_;
  mutable Font last_handle_;
};

}  // namespace qel::windows
