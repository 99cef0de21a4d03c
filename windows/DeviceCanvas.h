#pragma once

#include <windows.h>

#include <string_view>

#include "qel/platform/Canvas.h"
#include "windows/Fonts.h"

namespace qel::windows {

/// Draws on a device context: of a window, a printer or a bitmap. Its unit is the point, from the
/// context's origin, whatever the device and the mapping mode.
///
/// Fonts are the system's, or its substitutes for them. Text in font Symbol is drawn as the
/// characters that it stands for. A TAB is a blank.
class DeviceCanvas : public platform::Canvas {
 public:
  /// The context must outlive the canvas, which leaves it as it was. The mapping mode must not
  /// change meanwhile.
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
  // Text is measured many times in the same font.
  mutable platform::TextFont last_font_;
  mutable Font last_handle_;
};

}  // namespace qel::windows
