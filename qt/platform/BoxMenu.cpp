#include "qt/platform/BoxMenu.h"

#include <QCoreApplication>
#include <QMenu>

#include "qt/platform/BoxView.h"
#include "qt/platform/Text.h"

namespace qel::qt {

QString caption_of(std::u16string_view text) {
  return QCoreApplication::translate("qel::qt::TextBox", to_qt(text).toUtf8().constData());
}

QString menu_text_of(const format_commands::Label& label) {
  const QString key = to_qt(format_commands::key_text(label.key_code, label.shift));
  const QString caption = caption_of(label.caption);
  return key.isEmpty() ? caption : caption + QLatin1Char('\t') + key;
}

void fill_edit_menu(QMenu& menu, BoxView& view) {
  using namespace format_commands;
  const box::Box& box = *view.box();
  const bool edits = box.may_edit();
  const bool selects = !box.selected().is_empty();
  const auto add = [&](const Label& label, bool enabled) {
    QAction* const action = menu.addAction(menu_text_of(label));
    action->setObjectName(to_qt(label.name));
    action->setEnabled(enabled);
    QObject::connect(action, &QAction::triggered, &view, [&view, &label] {
      if (view.box() != nullptr) view.run_command(label.key_code, label.shift);
    });
  };
  view.links().fill_menu(menu);
  add(undo, box.can_undo());
  add(redo, box.can_redo());
  menu.addSeparator();
  add(cut, edits && selects);
  add(copy, selects);
  add(paste, edits && view.canPaste());
  add(paste_text, edits && view.canPaste());
  add(erase, edits && selects);
  menu.addSeparator();
  add(select_all, !box.text().empty());
}

}  // namespace qel::qt
