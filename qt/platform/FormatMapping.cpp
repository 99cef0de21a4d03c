#include "qt/platform/FormatMapping.h"

#include <QBrush>
#include <QColor>
#include <QFont>
#include <QStringList>

#include "qt/platform/Text.h"

namespace qel::qt {

using richtext::Alignment;
using richtext::CharFormat;
using richtext::FormatChange;

QColor to_qt(Color color) { return {red_of(color), green_of(color), blue_of(color)}; }

Color from_qt(const QColor& color) { return rgb(color.red(), color.green(), color.blue()); }

QTextCharFormat to_qt(const CharFormat& format, Color window_text) {
  FormatChange all;
  all.bold = format.bold;
  all.italic = format.italic;
  all.underline = format.underline;
  all.strike_through = format.strike_through;
  all.offset = format.offset;
  all.color = format.color;
  all.font_name = format.font_name;
  all.size = format.size;
  return to_qt(all, window_text);
}

CharFormat from_qt(const QTextCharFormat& format) {
  CharFormat read;
  read.bold = format.fontWeight() >= QFont::DemiBold;
  read.italic = format.fontItalic();
  read.underline = format.fontUnderline();
  read.strike_through = format.fontStrikeOut();
  read.offset = static_cast<std::int16_t>(format.intProperty(offset_property));
  const QBrush foreground = format.foreground();
  if (foreground.style() != Qt::NoBrush) read.color = from_qt(foreground.color());
  const QStringList families = format.fontFamilies().toStringList();
  if (!families.empty()) read.font_name = from_qt(families.front());
  if (format.hasProperty(QTextFormat::FontPointSize)) {
    read.size = static_cast<float>(format.fontPointSize());
  }
  return read;
}

QTextCharFormat to_qt(const FormatChange& change, Color window_text) {
  QTextCharFormat format;
  if (change.bold) format.setFontWeight(*change.bold ? QFont::Bold : QFont::Normal);
  if (change.italic) format.setFontItalic(*change.italic);
  if (change.underline) format.setFontUnderline(*change.underline);
  if (change.strike_through) format.setFontStrikeOut(*change.strike_through);
  if (change.offset) {
    format.setProperty(offset_property, int{*change.offset});
    format.setVerticalAlignment(*change.offset > 0   ? QTextCharFormat::AlignSuperScript
                                : *change.offset < 0 ? QTextCharFormat::AlignSubScript
                                                     : QTextCharFormat::AlignNormal);
  }
  if (change.color) {
    const bool is_automatic = *change.color == 0 || *change.color == window_text;
    format.setForeground(is_automatic ? QBrush(Qt::NoBrush) : QBrush(to_qt(*change.color)));
  }
  if (change.font_name) format.setFontFamilies({to_qt(*change.font_name)});
  // Whether it is a size at all is for the library to say.
  CharFormat sized;
  change.apply_to(sized);
  if (change.size && sized.size == *change.size) {
    format.setFontPointSize(static_cast<double>(sized.size));
  }
  return format;
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
