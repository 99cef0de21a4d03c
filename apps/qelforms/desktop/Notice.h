#pragma once

#include <QFrame>
#include <QString>
#include <QTimer>
#include <functional>

class QLabel;
class QPushButton;

namespace qel::forms {

/// A line that tells what has happened and offers one thing to do about it. It is in nobody's way,
/// and takes no focus.
class Notice : public QFrame {
  Q_OBJECT

 public:
  explicit Notice(QWidget* parent = nullptr);

  /// Shows the text, with a button if it has a caption.
  void tell(const QString& text, const QString& caption = {}, std::function<void()> work = {});
  /// The same until it is taken back, or something else is told.
  void tell_until_done(const QString& text, const QString& caption = {},
                       std::function<void()> work = {});
  void take_back();
  /// What is told at the moment.
  QString text() const;

 private:
  QLabel* label_;
  QPushButton* button_;
  std::function<void()> work_;
  QTimer timer_;
};

}  // namespace qel::forms
