#pragma once

#include <QLineEdit>

namespace qel::forms {

/// A field without a frame or a background of its own, whose placeholder is easy to read.
class FlatField : public QLineEdit {
  Q_OBJECT

 public:
  explicit FlatField(QWidget* parent = nullptr);

 protected:
  void changeEvent(QEvent* event) override;

 private:
  void follow_colors();
};

}  // namespace qel::forms
