#include <gtest/gtest.h>

#include <QImage>
#include <QPainter>

#include "qel/qt/PainterCanvas.h"
#include "qel/qt/QtPlatform.h"
#include "qel/text/TextAndFormatting.h"

namespace qel {
namespace {

TEST(PainterCanvas, MeasuresAndDrawsInPointsOnAnyDevice) {
  for (const int dots : {72, 300}) {
    SCOPED_TRACE(dots);
    constexpr double inch = 0.0254;
    QImage image(dots * 2, dots, QImage::Format_RGB32);
    image.setDotsPerMeterX(static_cast<int>(dots / inch));
    image.setDotsPerMeterY(static_cast<int>(dots / inch));
    image.fill(Qt::white);
    QPainter painter(&image);
    qt::PainterCanvas canvas(painter);
    platform::CanvasText text;
    text.text = u"MMM";
    text.font.size = 24;
    text.x = 36;
    text.y = 36;
    text.color = rgb(255, 0, 0);
    const float width = canvas.text_width(text.text, text.font);
    EXPECT_NEAR(width, 3 * 24 * 0.833, 4);
    EXPECT_NEAR(canvas.text_width(u"AVAV", text.font), 2 * canvas.text_width(u"AV", text.font), 1);
    EXPECT_LT(canvas.text_width(u"\u0628\u0628", text.font),
              1.8F * canvas.text_width(u"\u0628", text.font))
        << "letters that join";
    EXPECT_EQ(canvas.text_width(u"\t", text.font), canvas.text_width(u" ", text.font));
    qt::QtPlatform::use();
    TextAndFormatting without_canvas;
    without_canvas.put_DefaultFontSize(text.font.size);
    for (const auto* const measured : {u"MMM", u"\u0628\u0628"}) {
      EXPECT_NEAR(without_canvas.fmtTextWidth(measured), canvas.text_width(measured, text.font),
                  0.2);
    }
    EXPECT_NEAR(canvas.font_extent(text.font).ascent, 22, 3);
    canvas.draw_text(text);
    canvas.fill_rectangle({0, 60, 10, 5}, rgb(0, 0, 255));
    painter.end();
    QRect inked;
    for (int y = 0; y < image.height() * 50 / 72; ++y) {
      for (int x = 0; x < image.width(); ++x) {
        if (image.pixelColor(x, y).green() < 128) inked |= QRect(x, y, 1, 1);
      }
    }
    const double unit = dots / 72.0;
    EXPECT_NEAR(inked.left() / unit, 36, 4);
    EXPECT_NEAR(inked.right() / unit, 36 + static_cast<double>(width), 4);
    EXPECT_NEAR(inked.bottom() / unit, 36, 3);
    EXPECT_EQ(image.pixelColor(static_cast<int>(5 * unit), static_cast<int>(62 * unit)),
              QColor(0, 0, 255));
  }
}

}  // namespace
}  // namespace qel
