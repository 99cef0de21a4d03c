#include "qt/platform/BoxMenu.h"

#include <QCoreApplication>
#include <QMenu>

#include "qt/platform/BoxView.h"

namespace qel::qt {

using namespace keys;

void fill_edit_menu(QMenu& menu, BoxView& view) {
  const box::Box& box = *view.box();
  const bool edits = box.may_edit();
  const bool selects = !box.selected().is_empty();
  const auto add = [&](const char* caption, bool enabled, std::int16_t key_code,
                       std::int16_t shift) {
    QAction* const action =
        menu.addAction(QCoreApplication::translate("qel::qt::TextBox", caption));
    action->setEnabled(enabled);
    QObject::connect(action, &QAction::triggered, &view, [&view, key_code, shift] {
      if (view.box() != nullptr) view.run_command(key_code, shift);
    });
  };
  add(QT_TRANSLATE_NOOP("qel::qt::TextBox", "U&ndo\tCtrl+Z"), box.can_undo(), letter_key('Z'),
      ctrl_key);
  add(QT_TRANSLATE_NOOP("qel::qt::TextBox", "&Redo\tCtrl+Y"), box.can_redo(), letter_key('Y'),
      ctrl_key);
  menu.addSeparator();
  add(QT_TRANSLATE_NOOP("qel::qt::TextBox", "Cu&t\tCtrl+X"), edits && selects, letter_key('X'),
      ctrl_key);
  add(QT_TRANSLATE_NOOP("qel::qt::TextBox", "&Copy\tCtrl+C"), selects, letter_key('C'), ctrl_key);
  add(QT_TRANSLATE_NOOP("qel::qt::TextBox", "&Paste\tCtrl+V"), edits && view.canPaste(),
      letter_key('V'), ctrl_key);
  add(QT_TRANSLATE_NOOP("qel::qt::TextBox", "&Delete\tDel"), edits && selects, delete_key,
      no_modifier);
  menu.addSeparator();
  add(QT_TRANSLATE_NOOP("qel::qt::TextBox", "Select &All\tCtrl+A"), !box.text().empty(),
      letter_key('A'), ctrl_key);
}

}  // namespace qel::qt
