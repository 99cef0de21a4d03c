#pragma once

#include <QString>
#include <QWidget>
#include <string>
#include <vector>

#include "RecordStore.h"

class QAction;
class QComboBox;
class QLineEdit;
class QToolButton;

namespace qel::forms {

class RecordList;

/// The side of the window that shows which records there are: what is shown (all of them, those
/// with a tag, the trash), in which order, a search field, and the list.
class ListSide : public QWidget {
  Q_OBJECT

 public:
  explicit ListSide(QWidget* parent = nullptr);

  RecordList& list() { return *list_; }
  QLineEdit& search() { return *search_; }

  /// What is to be listed.
  Listing listing() const;
  QString wanted() const;
  void put_order(Order order, bool ascending);
  void show_trash(bool shows);
  /// Offers these tags to choose from. Keeps the choice, or shows all records if it is gone.
  void put_tags(const std::vector<std::u16string>& tags);

  /// Shows these records, or why there are none.
  void show_headings(std::vector<Heading> headings);

  /// Puts the actions of the window where they are at hand here.
  void put_new_action(QAction& action);
  void put_order_menu(QMenu& menu);
  void put_trash_actions(const std::vector<QAction*>& actions);

  void start_search();
  /// Shows all records again.
  void end_search();

 signals:
  /// Other records are to be listed, or in another order.
  void listing_changed();
  /// Other records are listed: all of them, those with another tag, or the trash.
  void choice_changed();
  void left();

 private:
  QWidget* create_head();
  void say_why_empty();

  QComboBox* choice_;
  QToolButton* order_button_;
  QToolButton* new_button_;
  QLineEdit* search_;
  RecordList* list_;
  QWidget* trash_bar_;
  Order order_ = Order::changed;
  bool ascending_ = false;
};

}  // namespace qel::forms
