#include "qt/widget/TextBoxMenu.h"

#include <QMenu>

#include "qel/qt/TextBox.h"
#include "qt/platform/BoxHandling.h"
#include "qt/platform/BoxMenu.h"
#include "qt/platform/BoxView.h"
#include "qt/widget/FormatActions.h"

namespace qel::qt {

void fill_menu(QMenu& menu, TextBox& box, BoxView& view) {
  auto* const actions = new FormatActions(&menu);
  actions->put_box(&box);
  fill_edit_menu(menu, view);
  menu.addSeparator();
  for (QAction* const toggle : actions->toggles()) menu.addAction(toggle);
  menu.addAction(actions->font());
  menu.addAction(actions->color());
  menu.addAction(actions->plain());
  menu.addSeparator();
  menu.addAction(actions->cases());
  // The large editor itself is no way to a larger one.
  const bool is_in_editor = &view != box.focusProxy();
  if (is_in_editor || !box.get_ShowEditorOnShiftF2()) return;
  menu.addSeparator();
  const QString key = QStringLiteral("\tShift+F2");
  menu.addAction(TextBox::tr("Large &Editor") + key, &box, [&box, &view] {
    const BoxView::Handling handling(view);
    box.InvokeLargeEditor();
  });
}

}  // namespace qel::qt
