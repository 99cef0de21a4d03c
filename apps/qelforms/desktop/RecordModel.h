#pragma once

#include <QAbstractListModel>
#include <QHash>
#include <QString>
#include <cstdint>
#include <functional>
#include <vector>

#include "RecordStore.h"

namespace qel::forms {

/// The records that a list shows. What each row needs is read when the row is shown.
class RecordModel : public QAbstractListModel {
  Q_OBJECT

 public:
  enum Role {
    id_role = Qt::UserRole,  ///< the record's number
    date_role,               ///< the time that the list is in order of, as text
    context_role,            ///< a line of the text
    title_marks_role,        ///< what was searched in the title: `std::vector<Part>`
    context_marks_role,      ///< the same in the line of the text
    untitled_role,           ///< whether the title is the first words of the text
  };

  /// The beginning of a record's visible text.
  using Preview = std::function<QString(std::int64_t id)>;

  explicit RecordModel(QObject* parent = nullptr) : QAbstractListModel(parent) {}

  void put_preview(Preview preview) { preview_ = std::move(preview); }
  /// Shows these, with the time that `order` is about.
  void show(std::vector<Heading> headings, Order order);

  /// The record in a row; 0 where there is none.
  std::int64_t id(int row) const;
  /// The row of a record; -1 when it is not shown.
  int row_of(std::int64_t id) const;

  int rowCount(const QModelIndex& parent = {}) const override;
  QVariant data(const QModelIndex& index, int role) const override;

 private:
  QString date_of(const Heading& heading) const;
  QString context_of(const Heading& heading) const;

  std::vector<Heading> headings_;
  Order order_ = Order::changed;
  Preview preview_;
  mutable QHash<std::int64_t, QString> previews_;  // of the rows that have been shown
};

}  // namespace qel::forms
