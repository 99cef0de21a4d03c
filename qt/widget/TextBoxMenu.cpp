#include "qt/widget/TextBoxMenu.h"

#include <QCoreApplication>
#include <QMenu>

#include "qel/control/QELTextbox.h"
#include "qt/platform/BoxMenu.h"
#include "qt/platform/BoxView.h"

namespace qel::qt {
namespace {

QString caption(const char* text) { return QCoreApplication::translate("qel::qt::TextBox", text); }

/// A format that is on or off.
struct Format {
  const char* caption;
  bool (QELTextbox::*get)() const;
  void (QELTextbox::*put)(bool);
};

constexpr Format styles[] = {
    {QT_TRANSLATE_NOOP("qel::qt::TextBox", "&Bold\tCtrl+B"), &QELTextbox::get_SelBold,
     &QELTextbox::put_SelBold},
    {QT_TRANSLATE_NOOP("qel::qt::TextBox", "&Italic\tCtrl+I"), &QELTextbox::get_SelItalic,
     &QELTextbox::put_SelItalic},
    {QT_TRANSLATE_NOOP("qel::qt::TextBox", "&Underline\tCtrl+U"), &QELTextbox::get_SelUnderline,
     &QELTextbox::put_SelUnderline},
    {QT_TRANSLATE_NOOP("qel::qt::TextBox", "Stri&keout\tCtrl+Shift+K"),
     &QELTextbox::get_SelStrikeOut, &QELTextbox::put_SelStrikeOut},
    {QT_TRANSLATE_NOOP("qel::qt::TextBox", "S&ubscript\tCtrl+Shift+B"),
     &QELTextbox::get_SelSubscript, &QELTextbox::put_SelSubscript},
    {QT_TRANSLATE_NOOP("qel::qt::TextBox", "&Superscript\tCtrl+Shift+P"),
     &QELTextbox::get_SelSuperscript, &QELTextbox::put_SelSuperscript},
};

constexpr Format marks[] = {
    {QT_TRANSLATE_NOOP("qel::qt::TextBox", "I&gnore Text"), &QELTextbox::get_SelIgnore,
     &QELTextbox::put_SelIgnore},
    {QT_TRANSLATE_NOOP("qel::qt::TextBox", "&Hide Text"), &QELTextbox::get_SelHide,
     &QELTextbox::put_SelHide},
    {QT_TRANSLATE_NOOP("qel::qt::TextBox", "&Note Text"), &QELTextbox::get_SelNote,
     &QELTextbox::put_SelNote},
};

class Filling {
 public:
  Filling(QMenu& menu, QELTextbox& control, BoxView& view)
      : menu_(menu), control_(control), view_(view) {}

  template <class Act>
  void add(const char* text, bool enabled, Act act) {
    QAction* const action = menu_.addAction(caption(text));
    action->setEnabled(enabled);
    QObject::connect(action, &QAction::triggered, &view_, act);
  }

  template <std::size_t Size>
  void add(const Format (&formats)[Size]) {
    for (const Format& format : formats) {
      add(format.caption, control_.get_AllowEdits(),
          [&control = control_, &format] { (control.*format.put)(!(control.*format.get)()); });
      QAction* const action = menu_.actions().back();
      action->setCheckable(true);
      action->setChecked((control_.*format.get)());
    }
  }

 private:
  QMenu& menu_;
  QELTextbox& control_;
  BoxView& view_;
};

}  // namespace

void fill_menu(QMenu& menu, QELTextbox& control, BoxView& view) {
  Filling filling(menu, control, view);
  const bool edits = control.get_AllowEdits();
  fill_edit_menu(menu, view);
  menu.addSeparator();
  filling.add(styles);
  filling.add("&Plain\tAlt+F10", edits, [&control] { control.SelPlain(); });
  menu.addSeparator();
  filling.add(marks);
  if (!control.get_ShowEditorOnShiftF2()) return;
  menu.addSeparator();
  filling.add("Text &Editor\tShift+F2", true, [&control] { control.InvokeLargeEditor(); });
}

}  // namespace qel::qt
