#include "RecordDelegate.h"

#include <QAbstractItemView>
#include <QPainter>
#include <QTextLayout>
#include <algorithm>
#include <cmath>

#include "RecordModel.h"
#include "qel/base/Contrast.h"

namespace qel::forms {
namespace {

constexpr int inset = 6;  // of the selection from the edges of the list
constexpr int padding = 10;
constexpr int line_gap = 4;
constexpr int date_gap = 8;
constexpr qreal radius = 6;
/// As words are marked in texts.
constexpr QColor marker(255, 222, 89);

QFont title_font(const QFont& base) {
  QFont font = base;
  font.setWeight(QFont::DemiBold);
  return font;
}

QFont small_font(const QFont& base) {
  constexpr qreal share = 0.9;
  QFont font = base;
  if (font.pointSizeF() > 0) font.setPointSizeF(font.pointSizeF() * share);
  return font;
}

QPalette::ColorGroup group_of(const QStyleOptionViewItem& option) {
  return option.state.testFlag(QStyle::State_Active) ? QPalette::Active : QPalette::Inactive;
}

/// The colour in the nearest lightness that is easy to read on, or to read from, the other.
QColor readable(const QColor& color, const QColor& other) {
  const auto of = [](const QColor& c) { return rgb(c.red(), c.green(), c.blue()); };
  const Color shown = readable_color(of(color), of(other));
  return {red_of(shown), green_of(shown), blue_of(shown)};
}

/// What the colours of a row follow from.
struct Colors {
  QColor back;
  QColor text;
  QColor quiet;
};

Colors colors_of(const QStyleOptionViewItem& option) {
  constexpr double tint = 0.18;
  constexpr double hover = 0.05;
  constexpr double quiet = 0.35;
  const QPalette& palette = option.palette;
  const QColor base = palette.color(QPalette::Base);
  const QColor accent = palette.color(QPalette::Active, QPalette::Highlight);
  Colors colors = {base, palette.color(QPalette::Text), {}};
  if (option.state.testFlag(QStyle::State_Selected)) {
    const auto* const view = qobject_cast<const QAbstractItemView*>(option.widget);
    if (view != nullptr && view->hasFocus()) {
      const QColor text = palette.color(group_of(option), QPalette::HighlightedText);
      const QColor back = readable(accent, text);
      return {back, text, text};
    }
    colors.back = mixed(base, accent, tint);
  } else if (option.state.testFlag(QStyle::State_MouseOver)) {
    colors.back = mixed(base, colors.text, hover);
  }
  colors.quiet = readable(mixed(colors.text, colors.back, quiet), colors.back);
  return colors;
}

}  // namespace

QColor mixed(const QColor& from, const QColor& to, double share) {
  const auto part = [share](int a, int b) {
    return static_cast<int>(std::lround(a * (1 - share) + b * share));
  };
  return {part(from.red(), to.red()), part(from.green(), to.green()), part(from.blue(), to.blue())};
}

QSize RecordDelegate::sizeHint(const QStyleOptionViewItem& option,
                               const QModelIndex& /*index*/) const {
  const int title = QFontMetrics(title_font(option.font)).height();
  const int below = QFontMetrics(small_font(option.font)).height();
  return {0, title + line_gap + below + 2 * padding};
}

void RecordDelegate::paint(QPainter* painter, const QStyleOptionViewItem& option,
                           const QModelIndex& index) const {
  painter->save();
  painter->setRenderHint(QPainter::Antialiasing);
  const Colors colors = colors_of(option);
  const QRect card = option.rect.adjusted(inset, 1, -inset, -1);
  if (colors.back != option.palette.color(QPalette::Base)) {
    painter->setPen(Qt::NoPen);
    painter->setBrush(colors.back);
    painter->drawRoundedRect(card, radius, radius);
  }
  if (option.state.testFlag(QStyle::State_HasFocus)) {
    painter->setPen(colors.quiet);
    painter->setBrush(Qt::NoBrush);
    painter->drawRoundedRect(QRectF(card).adjusted(0.5, 0.5, -0.5, -0.5), radius, radius);
  }
  const QFont small = small_font(option.font);
  QRect place = card.adjusted(padding, padding - 1, -padding, 0);
  QFont font = title_font(option.font);
  font.setItalic(index.data(RecordModel::untitled_role).toBool());
  place.setHeight(QFontMetrics(font).height());
  const auto marks = [&index](int role) { return index.data(role).value<std::vector<Part>>(); };
  draw(*painter, place,
       {index.data().toString(), font, colors.text, marks(RecordModel::title_marks_role)});
  place.translate(0, place.height() + line_gap);
  place.setHeight(QFontMetrics(small).height());
  const int width = draw(*painter, place,
                         {index.data(RecordModel::date_role).toString(), small, colors.text, {}});
  place = QStyle::visualRect(option.direction, place, place.adjusted(width + date_gap, 0, 0, 0));
  draw(*painter, place,
       {index.data(RecordModel::context_role).toString(), small, colors.quiet,
        marks(RecordModel::context_marks_role)});
  painter->restore();
}

/// Returns how wide the text is.
int RecordDelegate::draw(QPainter& painter, QRect place, const Line& line) {
  const QString text = QFontMetrics(line.font).elidedText(line.text, Qt::ElideRight, place.width());
  QTextLayout layout(text, line.font);
  QTextOption option(painter.layoutDirection() == Qt::RightToLeft ? Qt::AlignRight : Qt::AlignLeft);
  option.setWrapMode(QTextOption::NoWrap);
  layout.setTextOption(option);
  QList<QTextLayout::FormatRange> marks;
  // The sign of what is left out is no part of the text.
  const auto end = static_cast<std::size_t>(text == line.text ? text.size() : text.size() - 1);
  for (const Part& found : line.marks) {
    if (found.start >= end) break;
    QTextCharFormat format;
    format.setBackground(marker);
    format.setForeground(Qt::black);
    format.setFontUnderline(true);
    const std::size_t length = std::min(found.length, end - found.start);
    marks.append({static_cast<int>(found.start), static_cast<int>(length), format});
  }
  layout.setFormats(marks);
  layout.beginLayout();
  QTextLine shown = layout.createLine();
  if (shown.isValid()) shown.setLineWidth(place.width());
  layout.endLayout();
  painter.setPen(line.color);
  layout.draw(&painter, place.topLeft());
  return shown.isValid() ? static_cast<int>(std::ceil(shown.naturalTextWidth())) : 0;
}

}  // namespace qel::forms
