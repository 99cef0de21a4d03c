// How a box's view shows its text: size, colours, space.

#include <QAbstractTextDocumentLayout>
#include <QPaintEvent>
#include <QPainter>
#include <QPalette>
#include <QScrollBar>
#include <QStyle>
#include <QTextBlock>
#include <QTextFrame>
#include <QWheelEvent>
#include <algorithm>
#include <array>
#include <utility>

#include "qel/base/Contrast.h"
#include "qel/base/Scoped.h"
#include "qel/qt/QtPlatform.h"
#include "qt/platform/BoxHandling.h"
#include "qt/platform/FormatMapping.h"
#include "qt/platform/Text.h"

namespace qel::qt {

using box::Change;

namespace {

constexpr std::int32_t window_background = 5;
constexpr int whole = 100;
constexpr Color black = rgb(0, 0, 0);
constexpr Color white = rgb(255, 255, 255);

constexpr std::array zoom_steps = {25,  33,  50,  67,  75,  80,  90,  100, 110,
                                   125, 150, 175, 200, 250, 300, 400, 500};

/// The step that is next to a zoom in a direction, above or below 0.
int next_zoom(int zoom, int direction) {
  const auto* const at = direction > 0
                             ? std::upper_bound(zoom_steps.begin(), zoom_steps.end(), zoom)
                             : std::lower_bound(zoom_steps.begin(), zoom_steps.end(), zoom);
  if (direction > 0) return at == zoom_steps.end() ? zoom_steps.back() : *at;
  return at == zoom_steps.begin() ? zoom_steps.front() : *std::prev(at);
}

/// The colour as it comes out where it is painted on another.
QColor painted_on(const QColor& color, const QColor& background) {
  const auto mixed = [&](double own, double other) {
    return static_cast<float>(own * color.alphaF() + other * (1 - color.alphaF()));
  };
  return QColor::fromRgbF(mixed(color.redF(), background.redF()),
                          mixed(color.greenF(), background.greenF()),
                          mixed(color.blueF(), background.blueF()));
}

}  // namespace

/// Keeps the first visible line where it is while the text is laid out anew.
class BoxView::Place {
 public:
  explicit Place(BoxView& view) : view_(view) {
    const QTextCursor first = view.cursorForPosition({0, 0});
    at_ = view.position_at({0, 0});
    const QRect line = view.cursorRect(first);
    hidden_ = static_cast<double>(line.top()) / std::max(line.height(), 1);
    is_scrolled_ = view.verticalScrollBar()->value() > 0;
  }
  Place(const Place&) = delete;
  Place& operator=(const Place&) = delete;
  ~Place() {
    if (!is_scrolled_) return;
    QTextCursor first(view_.document());
    first.setPosition(document_position(*view_.document(), static_cast<std::int64_t>(at_)));
    QScrollBar& bar = *view_.verticalScrollBar();
    const QRect line = view_.cursorRect(first);
    const int wanted = bar.value() + line.top() - qRound(hidden_ * line.height());
    // Only now, where the text ends may have to be known.
    if (wanted > bar.maximum()) view_.document()->size();
    bar.setValue(wanted);
  }

 private:
  BoxView& view_;
  std::size_t at_ = 0;
  double hidden_ = 0;  // how much of the line is above the window
  bool is_scrolled_ = false;
};

void BoxView::put_options(const ViewOptions& options) {
  ViewOptions wanted = options;
  wanted.zoom = std::clamp(wanted.zoom, ViewOptions::least_zoom, ViewOptions::greatest_zoom);
  wanted.line_spacing = std::max(wanted.line_spacing, 1);
  wanted.margin = std::max(wanted.margin, 0);
  if (wanted == options_) return;
  const ViewOptions before = std::exchange(options_, wanted);
  {
    const Place place(*this);
    // Only what is visible is laid out again.
    document()->setLayoutEnabled(false);
    show_space();
    if (wanted.zoom != before.zoom) show_zoom();
    document()->setLayoutEnabled(true);
    if (box_ != nullptr && !box_->appearance().multiline) center_line();
    viewport()->update();
    if (wanted.adapts_colors != before.adapts_colors) show_text_colors();
  }
  emit options_changed();
}

// Size.

void BoxView::show_zoom() {
  const Scoped showing(showing_, showing_ + 1);
  zoomed_.put_zoom(options_.zoom);
  // Each paragraph remembers the fonts that it was laid out with.
  for (QTextBlock block = document()->begin(); block.isValid(); block = block.next()) {
    block.layout()->setFont(document()->defaultFont());
  }
}

void BoxView::zoom_by(int direction) {
  const Handling handling(*this, Handling::Foreign::leave);
  ViewOptions options = options_;
  options.zoom = direction == 0 ? whole : next_zoom(options.zoom, direction);
  put_options(options);
}

std::optional<int> BoxView::zoom_direction(const QKeyEvent& event) {
  if ((event.modifiers() & ~(Qt::ShiftModifier | Qt::KeypadModifier)) != Qt::ControlModifier) {
    return {};
  }
  switch (event.key()) {
    case Qt::Key_Plus:
    case Qt::Key_Equal:
      return 1;
    case Qt::Key_Minus:
      return -1;
    case Qt::Key_0:
      return 0;
    default:
      return {};
  }
}

void BoxView::wheelEvent(QWheelEvent* event) {
  if (box_ == nullptr || event->modifiers() != Qt::ControlModifier) {
    QTextEdit::wheelEvent(event);
    return;
  }
  constexpr int notch = 120;
  wheel_turned_ += event->angleDelta().y();
  for (; wheel_turned_ >= notch; wheel_turned_ -= notch) zoom_by(1);
  for (; wheel_turned_ <= -notch; wheel_turned_ += notch) zoom_by(-1);
  event->accept();
}

// Space.

void BoxView::show_space() {
  if (box_ == nullptr) return;
  const Scoped showing(showing_, showing_ + 1);
  const bool has_lines = box_->appearance().multiline;
  display_.put_line_spacing(has_lines ? options_.line_spacing : whole);
  // The layout enlarges margins, too.
  const double unzoomed = static_cast<double>(options_.margin) * whole / options_.zoom;
  if (document()->documentMargin() != unzoomed) document()->setDocumentMargin(unzoomed);
  if (!has_lines) center_line();
}

/// A single line stands in the middle of its box, however high that is.
void BoxView::center_line() {
  const Scoped showing(showing_, showing_ + 1);
  // Laid out again, an empty line has no height until it counts as changed.
  if (document()->isEmpty()) document()->markContentsDirty(0, document()->characterCount());
  QTextFrame& frame = *document()->rootFrame();
  const double line = document()->documentLayout()->blockBoundingRect(document()->begin()).height();
  const double margin = std::max((viewport()->height() - line) / 2, 0.0) * whole / options_.zoom;
  QTextFrameFormat format = frame.frameFormat();
  if (format.topMargin() == margin && format.bottomMargin() == 0) return;
  format.setTopMargin(margin);
  format.setBottomMargin(0);
  frame.setFrameFormat(format);
}

void BoxView::resizeEvent(QResizeEvent* event) {
  QTextEdit::resizeEvent(event);
  if (box_ != nullptr && !box_->appearance().multiline) center_line();
}

// Colours.

/// Keeps text without a colour of its own readable on any background.
void BoxView::show_colors() {
  if (box_ == nullptr || std::exchange(shows_colors_, true)) return;
  const Color back = box_->appearance().back_color;
  QPalette colors;
  if (is_system_color(back) && system_color_index(back) != window_background) {
    colors.setColor(QPalette::Base,
                    to_qt(QtPlatform::system_color_value(system_color_index(back))));
  } else if (!is_system_color(back)) {
    const QColor base = to_qt(back);
    QColor text = contrast(white, back) > contrast(black, back) ? Qt::white : Qt::black;
    colors.setColor(QPalette::Base, base);
    colors.setColor(QPalette::Text, text);
    constexpr int half = 128;
    text.setAlpha(half);
    colors.setColor(QPalette::PlaceholderText, text);
    colors.setColor(QPalette::Disabled, QPalette::Text, painted_on(text, base));
  }
  setPalette(colors);
  shows_colors_ = false;
  show_text_colors();
}

void BoxView::changeEvent(QEvent* event) {
  QTextEdit::changeEvent(event);
  const bool is_theme =
      event->type() == QEvent::ApplicationPaletteChange || event->type() == QEvent::PaletteChange;
  if (is_theme && box_ != nullptr) show_colors();
  if (event->type() == QEvent::LayoutDirectionChange && box_ != nullptr) show_selection();
}

/// Shows text that has a colour anew where colours are to look different now.
void BoxView::show_text_colors() {
  Scheme scheme{text_color(), {}};
  if (options_.adapts_colors) {
    scheme.background = from_qt(palette().color(QPalette::Active, QPalette::Base));
  }
  if (scheme == display_.scheme()) return;
  display_.put_scheme(scheme);
  const richtext::Document& content = box_->document();
  if (!display_.has_colors(content)) return show_selection();
  const Place place(*this);
  show({Change::Kind::formats, {0, content.size()}, content.size()});
}

// The placeholder.

void BoxView::put_placeholder(const QString& text) {
  placeholder_ = text;
  if (document()->isEmpty()) viewport()->update();
}

void BoxView::paintEvent(QPaintEvent* event) {
  {
    QPainter painter(viewport());
    marks_.paint(painter, event->rect());
  }
  QTextEdit::paintEvent(event);
  if (placeholder_.isEmpty() || !document()->isEmpty() || composes()) return;
  QPainter painter(viewport());
  const QColor base = palette().color(QPalette::Base);
  const QColor color = painted_on(palette().color(QPalette::PlaceholderText), base);
  painter.setPen(to_qt(readable_color(from_qt(color), from_qt(base))));
  QFont font = textCursor().charFormat().font();
  font.setPointSizeF(font.pointSizeF() * options_.zoom / whole);
  painter.setFont(font);
  QRectF place = viewport()->rect().adjusted(options_.margin, 0, -options_.margin, 0);
  place.setTop(cursorRect().top());
  QTextOption option(QStyle::visualAlignment(layoutDirection(), Qt::AlignLeft | Qt::AlignTop) |
                     Qt::AlignAbsolute);
  option.setTextDirection(placeholder_.isRightToLeft() ? Qt::RightToLeft : Qt::LeftToRight);
  const bool has_lines = box_ != nullptr && box_->appearance().multiline;
  option.setWrapMode(has_lines ? QTextOption::WordWrap : QTextOption::NoWrap);
  painter.drawText(place, placeholder_, option);
}

}  // namespace qel::qt
