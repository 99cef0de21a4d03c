#include "RecordList.h"

#include <QDateTime>
#include <QHeaderView>
#include <QLocale>
#include <QSignalBlocker>
#include <QTreeWidgetItem>
#include <algorithm>

namespace qel::forms {
namespace {

constexpr int title_column = 0;
constexpr int changed_column = 1;

std::int64_t id_of(const QTreeWidgetItem& item) {
  return item.data(title_column, Qt::UserRole).toLongLong();
}

QTreeWidgetItem* item_of(const Heading& heading, int height) {
  auto* const item = new QTreeWidgetItem;
  const QString title = QString::fromStdU16String(heading.title).simplified();
  const QString snippet = QString::fromStdU16String(heading.snippet).simplified();
  QString text = title.isEmpty() ? RecordList::tr("(no title)") : title;
  if (!snippet.isEmpty()) text.append(QLatin1Char('\n')).append(snippet);
  item->setText(title_column, text);
  item->setToolTip(title_column, text);
  item->setSizeHint(title_column, QSize(0, height));
  item->setData(title_column, Qt::UserRole, qlonglong{heading.id});
  const QDateTime changed = QDateTime::fromMSecsSinceEpoch(heading.changed);
  const QLocale locale;
  item->setText(changed_column, locale.toString(changed.date(), QLocale::ShortFormat));
  item->setToolTip(changed_column, locale.toString(changed, QLocale::LongFormat));
  return item;
}

}  // namespace

RecordList::RecordList(QWidget* parent) : QTreeWidget(parent) {
  setHeaderLabels({tr("Title"), tr("Changed")});
  setAccessibleName(tr("Records"));
  setRootIsDecorated(false);
  setUniformRowHeights(true);
  setAllColumnsShowFocus(true);
  setSelectionMode(ExtendedSelection);
  setTabKeyNavigation(false);
  header()->setStretchLastSection(false);
  header()->setSectionResizeMode(title_column, QHeaderView::Stretch);
  header()->setSectionResizeMode(changed_column, QHeaderView::ResizeToContents);
}

void RecordList::show_headings(const std::vector<Heading>& headings) {
  const QSignalBlocker silence(this);
  const std::vector<std::int64_t> kept = selected();
  const bool has_snippets =
      std::any_of(headings.begin(), headings.end(),
                  [](const Heading& heading) { return !heading.snippet.empty(); });
  QList<QTreeWidgetItem*> items;
  constexpr int padding = 8;
  const int height = fontMetrics().lineSpacing() * (has_snippets ? 2 : 1) + padding;
  for (const Heading& heading : headings) items.append(item_of(heading, height));
  clear();
  addTopLevelItems(items);
  for (QTreeWidgetItem* const item : items) {
    if (std::find(kept.begin(), kept.end(), id_of(*item)) != kept.end()) item->setSelected(true);
  }
}

std::vector<std::int64_t> RecordList::selected() const {
  std::vector<std::int64_t> ids;
  for (int i = 0; i < topLevelItemCount(); ++i) {
    if (topLevelItem(i)->isSelected()) ids.push_back(id_of(*topLevelItem(i)));
  }
  return ids;
}

void RecordList::select(std::int64_t id) {
  const QSignalBlocker silence(this);
  clearSelection();
  for (int i = 0; i < topLevelItemCount(); ++i) {
    if (id_of(*topLevelItem(i)) == id) setCurrentItem(topLevelItem(i));
  }
}

std::int64_t RecordList::first() const {
  return topLevelItemCount() == 0 ? 0 : id_of(*topLevelItem(0));
}

}  // namespace qel::forms
