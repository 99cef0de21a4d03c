#pragma once

#include <QListView>
#include <QString>
#include <cstdint>
#include <vector>

#include "RecordDelegate.h"
#include "RecordModel.h"

namespace qel::forms {

/// The list of the records, as many as there are. Where there are none, it says so.
class RecordList : public QListView {
  Q_OBJECT

 public:
  explicit RecordList(QWidget* parent = nullptr);

  RecordModel& records() { return *model_; }
  /// Shows these records; those that were selected stay selected, and no signal is sent.
  void show_headings(std::vector<Heading> headings, Order order);
  /// What to show where there are no records: a line, and a quieter one below it.
  void put_empty_text(const QString& line, const QString& hint);
  QString empty_text() const { return empty_line_; }

  /// The numbers of the selected records, from top to bottom.
  std::vector<std::int64_t> selected() const;
  /// Selects these records only, as far as they are shown. No signal is sent.
  void select(const std::vector<std::int64_t>& ids);
  void select(std::int64_t id) { select(std::vector<std::int64_t>{id}); }
  /// The number of the record on top; 0 when there is none.
  std::int64_t first() const { return model_->id(0); }
  /// Takes the focus, with the first record selected where none is.
  void enter();

 signals:
  /// Another selection was made by the user.
  void selection_made();
  /// The user wants to edit the record.
  void opened(std::int64_t id);
  /// The user wants to go back to the text.
  void left();

 protected:
  void keyPressEvent(QKeyEvent* event) override;
  void paintEvent(QPaintEvent* event) override;
  void focusInEvent(QFocusEvent* event) override;
  void focusOutEvent(QFocusEvent* event) override;

 private:
  RecordModel* model_;
  RecordDelegate* delegate_;
  QString empty_line_;
  QString empty_hint_;
};

}  // namespace qel::forms
