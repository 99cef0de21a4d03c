#include "RecordModel.h"

#include <algorithm>

#include "Words.h"

namespace qel::forms {

void RecordModel::show(std::vector<Heading> headings, Order order) {
  beginResetModel();
  headings_ = std::move(headings);
  order_ = order;
  previews_.clear();
  endResetModel();
}

std::int64_t RecordModel::id(int row) const {
  return row < 0 || row >= rowCount() ? 0 : headings_[static_cast<std::size_t>(row)].id;
}

int RecordModel::row_of(std::int64_t id) const {
  const auto found = std::find_if(headings_.begin(), headings_.end(),
                                  [id](const Heading& heading) { return heading.id == id; });
  return found == headings_.end() ? -1 : static_cast<int>(found - headings_.begin());
}

int RecordModel::rowCount(const QModelIndex& parent) const {
  return parent.isValid() ? 0 : static_cast<int>(headings_.size());
}

QVariant RecordModel::data(const QModelIndex& index, int role) const {
  if (id(index.row()) == 0) return {};
  const Heading& heading = headings_[static_cast<std::size_t>(index.row())];
  switch (role) {
    case Qt::DisplayRole: {
      const QString title = on_one_line(heading.title);
      return title.isEmpty() ? tr("Empty record") : title;
    }
    case Qt::ToolTipRole:
      return tr("Created %1\nChanged %2")
          .arg(long_date(heading.created), long_date(heading.changed));
    case Qt::AccessibleDescriptionRole:
      return date_of(heading) + QStringLiteral(", ") + context_of(heading);
    case id_role:
      return qlonglong{heading.id};
    case date_role:
      return date_of(heading);
    case context_role:
      return context_of(heading);
    case title_marks_role:
      return QVariant::fromValue(heading.found_in_title);
    case context_marks_role:
      return QVariant::fromValue(heading.found);
    case untitled_role:
      return heading.untitled || heading.title.empty();
    default:
      return {};
  }
}

QString RecordModel::date_of(const Heading& heading) const {
  if (heading.trashed != 0) return short_date(heading.trashed);
  return short_date(order_ == Order::created ? heading.created : heading.changed);
}

QString RecordModel::context_of(const Heading& heading) const {
  if (!heading.snippet.empty()) return QString::fromStdU16String(heading.snippet);
  const auto known = previews_.constFind(heading.id);
  if (known != previews_.constEnd()) return *known;
  return *previews_.insert(heading.id, preview_ ? preview_(heading.id) : QString());
}

}  // namespace qel::forms
