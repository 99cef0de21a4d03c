#include "qt/widget/TextBoxAccessible.h"

#include <QAccessible>
#include <QAccessibleWidget>

#include "qel/qt/TextBox.h"

namespace qel::qt::accessible {
namespace {

class TextBoxAccessible : public QAccessibleWidget {
 public:
  explicit TextBoxAccessible(TextBox* box) : QAccessibleWidget(box, QAccessible::Grouping) {}

  QAccessible::State state() const override {
    QAccessible::State state = QAccessibleWidget::state();
    state.focusable = false;  // the box takes the focus
    return state;
  }
  int childCount() const override { return of_shown_box() == nullptr ? 0 : 1; }
  QAccessibleInterface* child(int index) const override {
    return index == 0 ? of_shown_box() : nullptr;
  }
  int indexOfChild(const QAccessibleInterface* child) const override {
    return child != nullptr && child == of_shown_box() ? 0 : -1;
  }

  QString text(QAccessible::Text kind) const override {
    QAccessibleInterface* const shown = kind == QAccessible::Value ? of_shown_box() : nullptr;
    return shown == nullptr ? QAccessibleWidget::text(kind) : shown->text(kind);
  }

 private:
  QAccessibleInterface* of_shown_box() const {
    QWidget* const shown = widget()->focusProxy();
    return shown == nullptr ? nullptr : QAccessible::queryAccessibleInterface(shown);
  }
};

QAccessibleInterface* create(const QString& /*class_name*/, QObject* object) {
  auto* const box = qobject_cast<TextBox*>(object);
  return box == nullptr ? nullptr : new TextBoxAccessible(box);
}

}  // namespace

void install() {
  static const bool is_installed = [] {
    QAccessible::installFactory(create);
    return true;
  }();
  static_cast<void>(is_installed);
}

}  // namespace qel::qt::accessible
