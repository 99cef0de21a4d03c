#include "qt/platform/BoxMarks.h"

#include <QEvent>
#include <QScrollBar>
#include <QTextBlock>
#include <QTextLayout>
#include <algorithm>
#include <map>

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
  return {std::max(start, position - endless), std::min(start + length, position + endless)};
}

/// Qt paints one mark over the other as if that were not there. So they are cut up into pieces that
/// do not overlap; `marks` are in the order of their layers.
std::vector<Mark> without_overlaps(const std::vector<Mark>& marks) {
  std::map<std::size_t, QTextCharFormat> pieces;  // by where they begin; an empty format marks none
  const auto cut = [&pieces](std::size_t at) {
    const auto behind = pieces.upper_bound(at);
    const QTextCharFormat format =
        behind == pieces.begin() ? QTextCharFormat() : std::prev(behind)->second;
    return pieces.try_emplace(at, format).first;
  };
  for (const Mark& mark : marks) {
    if (mark.extent.length() == 0) continue;
    const auto begin = cut(mark.extent.start);
    const auto end = cut(mark.extent.end);
    for (auto piece = begin; piece != end; ++piece) piece->second.merge(mark.format);
  }
  std::vector<Mark> apart;
  for (auto piece = pieces.begin(); piece != pieces.end(); ++piece) {
    if (piece->second.propertyCount() == 0) continue;
    apart.push_back({{piece->first, std::next(piece)->first}, piece->second});
  }
  return apart;
}

}  // namespace

BoxMarks::BoxMarks(BoxView& view) : view_(view) {
  connect(view.document(), &QTextDocument::contentsChange, this, &BoxMarks::ask_soon);
  connect(view.verticalScrollBar(), &QScrollBar::valueChanged, this, &BoxMarks::ask_soon);
  connect(view.horizontalScrollBar(), &QScrollBar::valueChanged, this, &BoxMarks::ask_soon);
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
  const bool shows_other_part =
      event->type() == QEvent::Resize || event->type() == QEvent::PaletteChange;
  if (shows_other_part) ask_soon();
  return QObject::eventFilter(watched, event);
}

Extent BoxMarks::visible() const {
  const QTextDocument& document = *view_.document();
  document.size();  // otherwise a text just loaded has no layout yet
  const QRect shown = view_.viewport()->rect();
  Span span = {document.characterCount() - 1, 0};
  for (const QPoint corner :
       {shown.topLeft(), shown.topRight(), shown.bottomLeft(), shown.bottomRight()}) {
    const Span line = line_at(document, view_.cursorForPosition(corner).position());
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
  if (box == nullptr) return;
  const Extent shown = visible();
  std::vector<Mark> marks;
  for (const Source& source : std::vector(sources_)) {
    const std::vector<Mark> more = source.source->marks(*box, shown);
    marks.insert(marks.end(), more.begin(), more.end());
  }
  const QTextDocument& document = *view_.document();
  QList<QTextEdit::ExtraSelection> selections;
  for (const Mark& mark : without_overlaps(marks)) {
    QTextCursor cursor(view_.document());
    cursor.setPosition(document_position(document, static_cast<std::int64_t>(mark.extent.start)));
    cursor.setPosition(document_position(document, static_cast<std::int64_t>(mark.extent.end)),
                       QTextCursor::KeepAnchor);
    selections.append({cursor, mark.format});
  }
  if (!selections.isEmpty() || !view_.extraSelections().isEmpty()) {
    view_.setExtraSelections(selections);
  }
}

}  // namespace qel::qt
