#include "TablesDialog.h"

#include <QColorDialog>
#include <QComboBox>
#include <QDialogButtonBox>
#include <QDoubleSpinBox>
#include <QFontDatabase>
#include <QGridLayout>
#include <QLabel>
#include <QPixmap>
#include <QPushButton>
#include <QVBoxLayout>
#include <cstddef>
#include <cstdint>

#include "qel/qt/FormatBar.h"

namespace qel::forms {
namespace {

constexpr double smallest_size = 4;
constexpr double largest_size = 96;

/// The name that marks an unused font.
QString unused() { return QString::fromStdU16String(std::u16string(QELIndexFonts::unused)); }

QColor shown_color(Color color) { return {red_of(color), green_of(color), blue_of(color)}; }

}  // namespace

TablesDialog::TablesDialog(const command::Tables& tables, QWidget* parent)
    : QDialog(parent), size_(new QDoubleSpinBox) {
  setWindowTitle(tr("Fonts and Colours"));
  auto* const grid = new QGridLayout;
  grid->addWidget(new QLabel(tr("Font")), 0, 1);
  grid->addWidget(new QLabel(tr("Colour")), 0, 2);
  constexpr int column_gap = 8;
  grid->setHorizontalSpacing(column_gap);
  grid->setColumnStretch(1, 1);
  const QStringList meanings = {tr("Default"), tr("Ignored"), tr("Hidden"), tr("Note")};
  for (int i = 0; i < entries; ++i) {
    add_row(*grid, i, meanings.value(i));
    fonts_[static_cast<std::size_t>(i)]->setEditText(
        QString::fromStdU16String(tables.fonts.get_Font(static_cast<std::int16_t>(i))));
    put_color(i, tables.colors->get_Color(static_cast<std::int16_t>(i)));
  }
  size_->setRange(smallest_size, largest_size);
  size_->setDecimals(1);
  size_->setSuffix(tr(" pt"));
  size_->setValue(static_cast<double>(tables.fonts.get_FontSize()));
  auto* const size_label = new QLabel(tr("Text si&ze"));
  size_label->setBuddy(size_);
  grid->addWidget(size_label, entries + 1, 0);
  grid->addWidget(size_, entries + 1, 1, Qt::AlignLeft);

  auto* const buttons = new QDialogButtonBox(QDialogButtonBox::Ok | QDialogButtonBox::Cancel);
  connect(buttons, &QDialogButtonBox::accepted, this, &QDialog::accept);
  connect(buttons, &QDialogButtonBox::rejected, this, &QDialog::reject);
  auto* const layout = new QVBoxLayout(this);
  layout->addLayout(grid);
  layout->addWidget(buttons);
}

void TablesDialog::add_row(QGridLayout& grid, int index, const QString& meaning) {
  auto* const font = new QComboBox;
  font->setEditable(true);
  font->addItem(unused());
  font->addItems(QFontDatabase::families());
  font->setAccessibleName(tr("Font %1").arg(index));
  auto* const color = new QPushButton;
  color->setAutoDefault(false);
  color->setStyleSheet(QStringLiteral("text-align: left; padding: 4px 8px;"));
  connect(color, &QPushButton::clicked, this, [this, index] { choose_color(index); });
  auto* const label = new QLabel(tr("&%1").arg(index));
  label->setBuddy(font);
  grid.addWidget(label, index + 1, 0, Qt::AlignTrailing | Qt::AlignVCenter);
  grid.addWidget(font, index + 1, 1);
  grid.addWidget(color, index + 1, 2);
  grid.addWidget(new QLabel(meaning), index + 1, 3);
  fonts_[static_cast<std::size_t>(index)] = font;
  buttons_[static_cast<std::size_t>(index)] = color;
}

void TablesDialog::choose_color(int index) {
  const QColor old = shown_color(colors_[static_cast<std::size_t>(index)]);
  const QColor chosen = QColorDialog::getColor(old, this, tr("Colour %1").arg(index));
  if (chosen.isValid()) put_color(index, rgb(chosen.red(), chosen.green(), chosen.blue()));
}

void TablesDialog::put_color(int index, Color color) {
  QPushButton& button = *buttons_[static_cast<std::size_t>(index)];
  const QString name = qt::FormatBar::color_name(static_cast<int>(color));
  QPixmap swatch(button.iconSize());
  swatch.fill(shown_color(color));
  button.setIcon(swatch);
  button.setText(QChar(u' ') + name);
  button.setToolTip(shown_color(color).name().toUpper());
  button.setAccessibleName(tr("Colour %1, %2").arg(index).arg(name));
  colors_[static_cast<std::size_t>(index)] = color;
}

void TablesDialog::put_into(command::Tables& tables) const {
  for (std::size_t i = 0; i < colors_.size(); ++i) {
    const auto index = static_cast<std::int16_t>(i);
    const QString name = fonts_[i]->currentText().trimmed();
    // Without a default font, text would be shown in some arbitrary font.
    if (i != 0 || (!name.isEmpty() && name != unused())) {
      tables.fonts.put_Font(index, (name.isEmpty() ? unused() : name).toStdU16String());
    }
    tables.colors->put_Color(index, colors_[i]);
  }
  tables.fonts.put_FontSize(static_cast<float>(size_->value()));
}

}  // namespace qel::forms
