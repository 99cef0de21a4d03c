#include "RecordList.h"

#include <QItemSelection>
#include <QKeyEvent>
#include <QPainter>
#include <QScrollBar>
#include <QSignalBlocker>
#include <algorithm>
#include <unordered_set>
#include <utility>

namespace qel::forms {

RecordList::RecordList(QWidget* parent)
    : QListView(parent), model_(new RecordModel(this)), delegate_(new RecordDelegate(this)) {
  setModel(model_);
  setItemDelegate(delegate_);
  setAccessibleName(tr("Records"));
  setUniformItemSizes(true);
  setSelectionMode(ExtendedSelection);
  setVerticalScrollMode(ScrollPerPixel);
  setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
  setFrameShape(QFrame::NoFrame);
  setTabKeyNavigation(false);
  setMouseTracking(true);
  connect(selectionModel(), &QItemSelectionModel::selectionChanged, this,
          &RecordList::selection_made);
  connect(this, &QListView::doubleClicked, this,
          [this](const QModelIndex& index) { emit opened(model_->id(index.row())); });
}

void RecordList::show_headings(std::vector<Heading> headings, Order order) {
  const std::vector<std::int64_t> kept = selected();
  const int scrolled = verticalScrollBar()->value();
  {
    const QSignalBlocker silence(selectionModel());
    model_->show(std::move(headings), order);
  }
  executeDelayedItemsLayout();
  select(kept);
  verticalScrollBar()->setValue(scrolled);
}

void RecordList::put_empty_text(const QString& line, const QString& hint) {
  empty_line_ = line;
  empty_hint_ = hint;
  setAccessibleDescription(model_->rowCount() == 0 ? line : QString());
  viewport()->update();
}

std::vector<std::int64_t> RecordList::selected() const {
  std::vector<int> rows;
  for (const QItemSelectionRange& range : selectionModel()->selection()) {
    for (int row = range.top(); row <= range.bottom(); ++row) rows.push_back(row);
  }
  std::sort(rows.begin(), rows.end());
  std::vector<std::int64_t> ids;
  ids.reserve(rows.size());
  for (const int row : rows) ids.push_back(model_->id(row));
  return ids;
}

void RecordList::select(const std::vector<std::int64_t>& ids) {
  const std::unordered_set<std::int64_t> wanted(ids.begin(), ids.end());
  QItemSelection selection;
  QModelIndex first;
  for (int row = 0; !wanted.empty() && row < model_->rowCount(); ++row) {
    if (!wanted.contains(model_->id(row))) continue;
    const QModelIndex index = model_->index(row);
    if (!first.isValid()) first = index;
    selection.select(index, index);
  }
  {
    const QSignalBlocker silence(selectionModel());
    selectionModel()->setCurrentIndex(first, QItemSelectionModel::NoUpdate);
    selectionModel()->select(selection, QItemSelectionModel::ClearAndSelect);
  }
  if (first.isValid()) scrollTo(first);
  viewport()->update();
}

void RecordList::enter() {
  setFocus(Qt::ShortcutFocusReason);
  if (selectionModel()->hasSelection() || model_->rowCount() == 0) return;
  selectionModel()->setCurrentIndex(model_->index(0), QItemSelectionModel::ClearAndSelect);
}

void RecordList::keyPressEvent(QKeyEvent* event) {
  switch (event->key()) {
    case Qt::Key_Return:
    case Qt::Key_Enter:
      if (currentIndex().isValid()) emit opened(model_->id(currentIndex().row()));
      return;
    case Qt::Key_Escape:
      emit left();
      return;
    default:
      QListView::keyPressEvent(event);
  }
}

void RecordList::paintEvent(QPaintEvent* event) {
  QListView::paintEvent(event);
  if (model_->rowCount() != 0 || empty_line_.isEmpty()) return;
  constexpr int margin = 24;
  constexpr double quiet = 0.35;
  QPainter painter(viewport());
  const QColor text = palette().color(QPalette::Text);
  painter.setPen(text);
  const QRect all = viewport()->rect().adjusted(margin, margin, -margin, -margin);
  const int flags = Qt::AlignHCenter | Qt::AlignTop | Qt::TextWordWrap;
  const QRect line = painter.boundingRect(all, flags, empty_line_);
  const int top = all.top() + all.height() / 4;
  painter.drawText(all.translated(0, top - all.top()), flags, empty_line_);
  painter.setPen(mixed(text, palette().color(QPalette::Base), quiet));
  painter.drawText(all.translated(0, top - all.top() + line.height() + margin / 3), flags,
                   empty_hint_);
}

void RecordList::focusInEvent(QFocusEvent* event) {
  QListView::focusInEvent(event);
  viewport()->update();  // the selection looks different without the focus
}

void RecordList::focusOutEvent(QFocusEvent* event) {
  QListView::focusOutEvent(event);
  viewport()->update();
}

}  // namespace qel::forms
