#pragma once

#include <QDialog>
#include <array>

#include "Tables.h"

class QComboBox;
class QDoubleSpinBox;
class QGridLayout;
class QPushButton;

namespace qel::forms {

/// Asks for the ten fonts, their size and the ten colours of a form.
class TablesDialog : public QDialog {
 public:
  explicit TablesDialog(const command::Tables& tables, QWidget* parent = nullptr);

  /// Puts the chosen values into the tables; everything else in them stays.
  void put_into(command::Tables& tables) const;

 private:
  static constexpr int entries = 10;

  void add_row(QGridLayout& grid, int index, const QString& meaning);
  void choose_color(int index);
  void put_color(int index, Color color);

  std::array<QComboBox*, entries> fonts_ = {};
  std::array<QPushButton*, entries> buttons_ = {};
  std::array<Color, entries> colors_ = {};
  QDoubleSpinBox* size_;
};

}  // namespace qel::forms
