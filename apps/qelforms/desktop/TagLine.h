#pragma once

#include <QStringList>
#include <QWidget>
#include <vector>

class QAbstractButton;
class QLineEdit;

namespace qel::forms {

/// The tags of a record: each a button that takes it away, and a field to add more. Enter or a
/// comma ends a tag; Backspace in the empty field takes the last one back for editing.
class TagLine : public QWidget {
  Q_OBJECT

 public:
  explicit TagLine(QWidget* parent = nullptr);

  const QStringList& tags() const { return tags_; }
  /// Shows these tags; no signal is sent.
  void put_tags(const QStringList& tags);
  /// Offers tags of other records while one is typed.
  void offer(const QStringList& known);
  void put_editable(bool editable);
  /// Adds the tag that is being typed, if any.
  void finish();
  QLineEdit& field() { return *field_; }

  QSize sizeHint() const override;
  QSize minimumSizeHint() const override;
  bool hasHeightForWidth() const override { return true; }
  int heightForWidth(int width) const override { return place(width, false); }

 signals:
  /// The user has added a tag or taken one away.
  void edited();

 protected:
  void resizeEvent(QResizeEvent* event) override;
  void keyPressEvent(QKeyEvent* event) override;
  bool eventFilter(QObject* watched, QEvent* event) override;

 private:
  void show_chips();
  void take_away(const QString& tag);
  int place(int width, bool moves) const;

  QStringList tags_;
  std::vector<QAbstractButton*> chips_;
  QLineEdit* field_;
};

}  // namespace qel::forms
