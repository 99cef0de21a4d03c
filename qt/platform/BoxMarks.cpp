#include "qt/platform/BoxMarks.h"

#include <QAbstractTextDocumentLayout>
#include <QEvent>
#include <QGlyphRun>
#include <QPainter>
#include <QScrollBar>
#include <QTextBlock>
#include <QTextLayout>
#include <algorithm>
#include <string_view>

#include "qel/base/Bidi.h"
#include "qt/platform/BoxView.h"
#include "qt/platform/Positions.h"

namespace qel::qt {

using richtext::Extent;

namespace {

/// The line of the document that holds the position.
Span line_at(const QTextDocument& document, int position) {
  constexpr int endless = 1000;
  const QTextBlock block = document.findBlock(position);
  const QTextLine line = block.layout()->lineForTextPosition(position - block.position());
  const int start = block.position() + (line.isValid() ? line.textStart() : 0);
  const int length = line.isValid() ? line.textLength() : block.length() - 1;
  // Composed text counts in lines.
  const int end = std::min(start + length, block.position() + block.length() - 1);
  return {std::max(start, position - endless), std::min(end, position + endless)};
}

bool has_wave(const QTextCharFormat& format) {
  return format.underlineStyle() == QTextCharFormat::WaveUnderline;
}

/// A part of a block as its layout counts, which also shows composed text.
Span shown_span(const QTextLayout& layout, Span span) {
  const int at = layout.preeditAreaPosition();
  const int composed = static_cast<int>(layout.preeditAreaText().size());
  return {span.start + (span.start >= at ? composed : 0),
          span.end + (span.end > at ? composed : 0)};
}

/// What Qt is to paint of the format.
QTextCharFormat without_own(QTextCharFormat format) {
  format.clearBackground();
  if (has_wave(format)) {
    format.clearProperty(QTextFormat::TextUnderlineStyle);
    format.clearProperty(QTextFormat::TextUnderlineColor);
    format.clearProperty(QTextFormat::FontUnderline);
  }
  return format;
}

/// A wavy line from the left to the right edge of the place, at its bottom.
void draw_wave(QPainter& painter, const QRectF& place, const QColor& color) {
  constexpr double step = 2;
  constexpr double height = 1.5;
  QPolygonF wave;
  const int steps = static_cast<int>(place.width() / step);
  for (int i = 0; i <= steps; ++i) {
    wave.append(QPointF(place.left() + i * step, place.bottom() - (i % 2 == 0 ? 0 : height)));
  }
  painter.setRenderHint(QPainter::Antialiasing);
  painter.setPen(QPen(color, 1));
  painter.drawPolyline(wave);
  painter.setRenderHint(QPainter::Antialiasing, false);
}

void draw(QPainter& painter, QRectF place, const QTextLine& line, const QTextCharFormat& format) {
  constexpr double below = 3;  // where a wave is, below the letters' own line
  if (format.background().style() != Qt::NoBrush) painter.fillRect(place, format.background());
  if (!has_wave(format)) return;
  place.setHeight(std::min(line.ascent() + below, line.height()));
  draw_wave(painter, place, format.underlineColor());
}

/// Where a part of the line is in the layout; in several places where directions change.
QList<QRectF> places(const QTextLayout& layout, const QTextLine& line, Span span, bool is_bidi) {
  const auto place = [&line](double left, double right) {
    return QRectF(left, line.y(), right - left, line.height());
  };
  if (!is_bidi) return {place(line.cursorToX(span.start), line.cursorToX(span.end))};
  // Of the two places of a caret between two directions, `cursorToX` knows one.
  QList<QRectF> all;
  for (const QGlyphRun& run : layout.glyphRuns(span.start, span.end - span.start)) {
    all.append(place(run.boundingRect().left(), run.boundingRect().right()));
  }
  return all;
}

}  // namespace

BoxMarks::BoxMarks(BoxView& view) : view_(view) {
  connect(view.document(), &QTextDocument::contentsChange, this, &BoxMarks::ask_soon);
  connect(view.verticalScrollBar(), &QScrollBar::valueChanged, this, &BoxMarks::ask_soon);
  connect(view.horizontalScrollBar(), &QScrollBar::valueChanged, this, &BoxMarks::ask_soon);
  connect(&view, &BoxView::options_changed, this, &BoxMarks::ask_soon);
  view.viewport()->installEventFilter(this);
}

void BoxMarks::add(MarkSource& source, Layer layer) {
  remove(source);
  const auto above = std::find_if(sources_.begin(), sources_.end(),
                                  [layer](const Source& other) { return other.layer > layer; });
  sources_.insert(above, {&source, layer});
  connect(&source, &MarkSource::changed, this, &BoxMarks::ask_soon);
  connect(&source, &QObject::destroyed, this, [this, &source] { remove(source); });
  ask_soon();
}

void BoxMarks::remove(MarkSource& source) {
  const auto is_source = [&source](const Source& other) { return other.source == &source; };
  const auto found = std::find_if(sources_.begin(), sources_.end(), is_source);
  if (found == sources_.end()) return;
  ask_soon();
  sources_.erase(found);
  source.disconnect(this);
}

bool BoxMarks::eventFilter(QObject* watched, QEvent* event) {
  const bool shows_other_part = event->type() == QEvent::Resize || event->type() == QEvent::Show ||
                                event->type() == QEvent::PaletteChange;
  if (shows_other_part) ask_soon();
  return QObject::eventFilter(watched, event);
}

Extent BoxMarks::visible() const {
  const QTextDocument& document = *view_.document();
  QRect shown = view_.viewport()->rect();
  // Of a text just loaded, looking at a place lays out as much as is above it; but at one in the
  // margin above the text, Qt takes the last line that is laid out.
  const QRectF first = document.documentLayout()->blockBoundingRect(document.begin());
  shown.setTop(std::max(0, qCeil(first.top()) - view_.verticalScrollBar()->value()));
  Span span = {document.characterCount() - 1, 0};
  for (const QPoint corner :
       {shown.topLeft(), shown.topRight(), shown.bottomLeft(), shown.bottomRight()}) {
    const int at = document.documentLayout()->hitTest(corner + view_.origin(), Qt::FuzzyHit);
    const Span line = line_at(document, std::clamp(at, 0, document.characterCount() - 1));
    span = {std::min(span.start, line.start), std::max(span.end, line.end)};
  }
  return {static_cast<std::size_t>(box_position(document, span.start)),
          static_cast<std::size_t>(box_position(document, span.end))};
}

void BoxMarks::ask_soon() {
  if (sources_.empty() || will_ask_) return;
  will_ask_ = true;
  QMetaObject::invokeMethod(this, &BoxMarks::ask, Qt::QueuedConnection);
}

void BoxMarks::ask() {
  will_ask_ = false;
  const box::Box* const box = view_.box();
  if (box == nullptr || !view_.isVisible()) return;
  const Extent shown = visible();
  has_right_to_left_ =
      has_right_to_left(std::u16string_view(box->text()).substr(shown.start, shown.length()));
  std::vector<Mark> marks;
  for (const Source& source : std::vector(sources_)) {
    const std::vector<Mark> more = source.source->marks(*box, shown);
    marks.insert(marks.end(), more.begin(), more.end());
  }
  show(marks);
}

void BoxMarks::show(const std::vector<Mark>& marks) {
  const QTextDocument& document = *view_.document();
  const bool had_marks = !shown_.isEmpty();
  shown_.clear();
  QList<QTextEdit::ExtraSelection> selections;
  for (const Mark& mark : marks) {
    QTextCursor cursor(view_.document());
    cursor.setPosition(document_position(document, static_cast<std::int64_t>(mark.extent.start)));
    cursor.setPosition(document_position(document, static_cast<std::int64_t>(mark.extent.end)),
                       QTextCursor::KeepAnchor);
    shown_.append({cursor, mark.format});
    const QTextCharFormat rest = without_own(mark.format);
    if (rest.propertyCount() != 0) selections.append({cursor, rest});
  }
  if (!selections.isEmpty() || !view_.extraSelections().isEmpty()) {
    view_.setExtraSelections(selections);
  }
  if (had_marks || !shown_.isEmpty()) view_.viewport()->update();
}

// Qt itself takes a third of a millisecond for each mark, where there are many in one paragraph.

void BoxMarks::paint(QPainter& painter, const QRect& part) const {
  if (shown_.isEmpty()) return;
  const QPoint origin = view_.origin();
  painter.translate(-origin);
  const QRectF shown = QRectF(part).translated(origin);
  for (const QTextEdit::ExtraSelection& mark : shown_) paint(painter, shown, mark);
}

void BoxMarks::paint(QPainter& painter, const QRectF& part,
                     const QTextEdit::ExtraSelection& mark) const {
  const QTextDocument& document = *view_.document();
  const int end = mark.cursor.selectionEnd();
  QTextBlock block = document.findBlock(mark.cursor.selectionStart());
  for (; block.isValid() && block.position() < end; block = block.next()) {
    if (!document.documentLayout()->blockBoundingRect(block).intersects(part)) continue;
    const QTextLayout& layout = *block.layout();
    const bool is_bidi = has_right_to_left_ || block.textDirection() == Qt::RightToLeft;
    auto [from, to] =
        shown_span(layout, {std::max(mark.cursor.selectionStart() - block.position(), 0),
                            std::min(end - block.position(), block.length() - 1)});
    while (from < to) {
      const QTextLine line = layout.lineForTextPosition(from);
      if (!line.isValid()) break;
      const int line_end = std::min(line.textStart() + line.textLength(), to);
      for (const QRectF& place : places(layout, line, {from, line_end}, is_bidi)) {
        draw(painter, place.translated(layout.position()), line, mark.format);
      }
      from = std::max(line_end, from + 1);
    }
  }
}

}  // namespace qel::qt
