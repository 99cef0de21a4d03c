#pragma once

#include <QColor>
#include <QPalette>

namespace qel::forms {

/// The colours of the pictures that show windows in a dark theme.
inline QPalette dark_palette() {
  const QColor quiet(127, 127, 127);
  QPalette palette(QColor(53, 53, 53));
  palette.setColor(QPalette::Base, QColor(30, 30, 30));
  palette.setColor(QPalette::Text, QColor(230, 230, 230));
  palette.setColor(QPalette::Highlight, QColor(42, 130, 218));
  palette.setColor(QPalette::HighlightedText, Qt::white);
  for (const auto role : {QPalette::Text, QPalette::ButtonText, QPalette::WindowText}) {
    palette.setColor(QPalette::Disabled, role, quiet);
  }
  return palette;
}

}  // namespace qel::forms
