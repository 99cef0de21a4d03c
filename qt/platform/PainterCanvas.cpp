#include "qel/qt/PainterCanvas.h"

#include <QFontMetricsF>
#include <QPaintDevice>
#include <QPainter>
#include <algorithm>

#include "qt/platform/FormatMapping.h"
#include "qt/platform/Text.h"

namespace qel::qt {
namespace {

/// Whether the text may have letters that are joined, marked or mirrored: any from Hebrew on but
/// for accented Latin and Greek ones, punctuation and signs.
bool needs_shaping(std::u16string_view text) {
  return std::any_of(text.begin(), text.end(), [](char16_t unit) {
    return unit >= 0x590 && (unit < 0x1E00 || unit >= 0x2E00);
  });
}

QFont font_of(const platform::TextFont& font, bool shapes) {
  QFont made(shown_family(font.name));
  constexpr float least = 0.01F;  // Qt ignores a size of 0 and keeps its default
  made.setPointSizeF(static_cast<double>(std::max(font.size, least)));
  made.setBold(font.bold);
  made.setItalic(font.italic);
  made.setKerning(false);
  if (!shapes) made.setStyleStrategy(QFont::PreferNoShaping);
  // Widths in whole pixels would break lines on a coarse device differently from those on a page.
  made.setHintingPreference(QFont::PreferNoHinting);
  return made;
}

/// The characters to draw.
QString shown(std::u16string_view text, const platform::TextFont& font) {
  QString out;
  out.reserve(static_cast<qsizetype>(text.size()));
  const bool maps = is_symbol_font(font.name);
  for (const char16_t unit : text) {
    const char16_t visible = unit == u'\t' ? u' ' : unit;
    out.append(QChar(maps ? shown_symbol(visible) : visible));
  }
  return out;
}

}  // namespace

PainterCanvas::PainterCanvas(QPainter& painter) : painter_(painter) {
  constexpr double points_per_inch = 72;
  across_ = painter.device()->logicalDpiX() / points_per_inch;
  down_ = painter.device()->logicalDpiY() / points_per_inch;
}

float PainterCanvas::text_width(std::u16string_view text, const platform::TextFont& font) const {
  const QFontMetricsF metrics(font_of(font, needs_shaping(text)), painter_.device());
  return static_cast<float>(metrics.horizontalAdvance(shown(text, font)) / across_);
}

platform::FontExtent PainterCanvas::font_extent(const platform::TextFont& font) const {
  const QFontMetricsF metrics(font_of(font, false), painter_.device());
  const auto points = [this](double units) { return static_cast<float>(units / down_); };
  return {points(metrics.ascent()), points(metrics.descent()),
          points(std::max(0.0, metrics.leading()))};
}

void PainterCanvas::draw_text(const platform::CanvasText& text) {
  if (!(text.font.size > 0)) return;
  // What stands in text from right to left may be mirrored.
  painter_.setFont(font_of(text.font, text.right_to_left || needs_shaping(text.text)));
  painter_.setPen(to_qt(text.color));
  painter_.setLayoutDirection(text.right_to_left ? Qt::RightToLeft : Qt::LeftToRight);
  painter_.drawText(
      QPointF(static_cast<double>(text.x) * across_, static_cast<double>(text.y) * down_),
      shown(text.text, text.font));
}

void PainterCanvas::fill_rectangle(const platform::CanvasRectangle& rectangle, Color color) {
  painter_.fillRect(QRectF(static_cast<double>(rectangle.left) * across_,
                           static_cast<double>(rectangle.top) * down_,
                           static_cast<double>(rectangle.width) * across_,
                           static_cast<double>(rectangle.height) * down_),
                    to_qt(color));
}

}  // namespace qel::qt
