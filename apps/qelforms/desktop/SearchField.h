#pragma once

#include "FlatField.h"

namespace qel::forms {

/// The field for what is searched. Keys that lead out of it are signals.
class SearchField : public FlatField {
  Q_OBJECT

 public:
  explicit SearchField(QWidget* parent = nullptr);

 signals:
  /// To the records that were found.
  void entered();
  /// Back to where the user came from.
  void left();

 protected:
  void keyPressEvent(QKeyEvent* event) override;
  void paintEvent(QPaintEvent* event) override;
};

}  // namespace qel::forms
