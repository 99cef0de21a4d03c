#include "qt/platform/FormatMapping.h"

#include <QBrush>
#include <QColor>
#include <QFont>

#include "qel/base/Contrast.h"
#include "qel/headless/FontMetrics.h"
#include "qt/platform/Text.h"

namespace qel::qt {

using richtext::Alignment;
using richtext::CharFormat;

QColor to_qt(Color color) { return {red_of(color), green_of(color), blue_of(color)}; }

Color from_qt(const QColor& color) { return rgb(color.red(), color.green(), color.blue()); }

bool is_symbol_font(std::u16string_view name) {
  return headless::family_named(name) == headless::FontFamily::symbol;
}

QString shown_family(std::u16string_view name) {
  return is_symbol_font(name) ? QStringLiteral("Times New Roman") : to_qt(name);
}

char16_t shown_symbol(char16_t unit) {
  return static_cast<char16_t>(headless::symbol_character(unit));
}

QTextCharFormat to_qt(const CharFormat& format, const Scheme& scheme) {
  QTextCharFormat shown;
  shown.setFontWeight(format.bold ? QFont::Bold : QFont::Normal);
  shown.setFontItalic(format.italic);
  shown.setFontUnderline(format.underline);
  shown.setFontStrikeOut(format.strike_through);
  shown.setFontCapitalization(format.small_caps ? QFont::SmallCaps : QFont::MixedCase);
  shown.setVerticalAlignment(format.offset > 0   ? QTextCharFormat::AlignSuperScript
                             : format.offset < 0 ? QTextCharFormat::AlignSubScript
                                                 : QTextCharFormat::AlignNormal);
  if (format.color == 0 || format.color == scheme.window_text) {
    shown.setForeground(QBrush(Qt::NoBrush));
  } else {
    shown.setForeground(
        to_qt(scheme.background ? readable_color(format.color, *scheme.background) : format.color));
  }
  shown.setFontFamilies({shown_family(format.font_name)});
  shown.setFontPointSize(static_cast<double>(format.size));
  return shown;
}

CharFormat format_of(const QTextCharFormat& format, const CharFormat& base) {
  CharFormat read;
  read.bold = format.fontWeight() > QFont::Medium;
  read.italic = format.fontItalic();
  read.underline = format.fontUnderline();
  read.strike_through = format.fontStrikeOut();
  read.small_caps = format.fontCapitalization() == QFont::SmallCaps;
  constexpr std::int16_t raised = 45;
  if (format.verticalAlignment() == QTextCharFormat::AlignSuperScript) read.offset = raised;
  if (format.verticalAlignment() == QTextCharFormat::AlignSubScript) read.offset = -raised;
  const bool has_color = format.foreground().style() != Qt::NoBrush;
  read.color = has_color ? from_qt(format.foreground().color()) : base.color;
  const QStringList families = format.fontFamilies().toStringList();
  read.font_name = families.isEmpty() ? base.font_name : from_qt(families.first());
  read.size = format.fontPointSize() > 0 ? static_cast<float>(format.fontPointSize()) : base.size;
  return read;
}

Qt::Alignment to_qt(Alignment alignment) {
  switch (alignment) {
    case Alignment::right:
      return Qt::AlignRight | Qt::AlignAbsolute;
    case Alignment::center:
      return Qt::AlignHCenter;
    case Alignment::left:
      break;
  }
  return Qt::AlignLeft;
}

Alignment alignment_of(const QTextBlockFormat& format) {
  const Qt::Alignment alignment = format.alignment();
  if (alignment.testFlag(Qt::AlignHCenter)) return Alignment::center;
  return alignment.testFlag(Qt::AlignRight) ? Alignment::right : Alignment::left;
}

}  // namespace qel::qt
