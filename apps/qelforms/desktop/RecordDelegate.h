#pragma once

#include <QStyledItemDelegate>
#include <vector>

#include "Heading.h"

namespace qel::forms {

/// Draws a record: its title, and below it the date and a line of the text, with the words that are
/// searched for marked in both.
class RecordDelegate : public QStyledItemDelegate {
  Q_OBJECT

 public:
  using QStyledItemDelegate::QStyledItemDelegate;

  void paint(QPainter* painter, const QStyleOptionViewItem& option,
             const QModelIndex& index) const override;
  QSize sizeHint(const QStyleOptionViewItem& option, const QModelIndex& index) const override;

 private:
  struct Line {
    QString text;
    QFont font;
    QColor color;
    std::vector<Part> marks;
  };

  static int draw(QPainter& painter, QRect place, const Line& line);
};

/// A colour on the way from one to another.
QColor mixed(const QColor& from, const QColor& to, double share);

}  // namespace qel::forms
