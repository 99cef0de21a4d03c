#pragma once

#include <QMenu>
#include <functional>
#include <optional>

#include "qel/box/Search.h"

namespace qel {
class QELTextbox;
}

namespace qel::qt {

/// The formats that can be found, as a menu. Colours and fonts are those of a control's tables.
class FindFormatMenu : public QMenu {
  Q_OBJECT

 public:
  explicit FindFormatMenu(QWidget* parent);

  const box::WantedFormat& format() const { return format_; }
  /// The formats that are chosen, as "bold, Courier New"; empty for any.
  QString description() const;
  /// Offers the colours and fonts of the control; none for null.
  void fill(const QELTextbox* control);

 signals:
  void format_changed();

 private:
  QAction* add(QMenu& menu, const QString& caption, bool checked,
               const std::function<void(bool)>& put);
  template <class Value>
  QAction* add_choice(QMenu& menu, const QString& caption, std::optional<Value>& field,
                      const Value& value);

  box::WantedFormat format_;
};

}  // namespace qel::qt
