// The actions of the window: its menus and its tool bar.

#include <QAction>
#include <QKeySequence>
#include <QLineEdit>
#include <QMenu>
#include <QMenuBar>
#include <QToolBar>
#include <utility>

#include "MainWindow.h"
#include "RecordList.h"

namespace qel::forms {

QAction* MainWindow::add_action(QMenu& menu, const char* name, const QString& text,
                                std::function<void()> work) {
  QAction* const action = menu.addAction(text);
  action->setObjectName(QLatin1String(name));
  connect(action, &QAction::triggered, this, [this, work = std::move(work)] { attempt(work); });
  return action;
}

void MainWindow::add_actions() {
  add_record_actions();
  add_text_actions();
  auto* const bar = new QToolBar(tr("Tools"), this);
  bar->setMovable(false);
  bar->toggleViewAction()->setEnabled(false);
  for (const char* const name : {"new", "save", "revert", "delete", "export", "", "bold", "italic",
                                 "underline", "", "reveal", "editor", "tables"}) {
    if (*name == '\0') {
      bar->addSeparator();
    } else {
      bar->addAction(findChild<QAction*>(QLatin1String(name)));
    }
  }
  addToolBar(bar);
  // Each button shows its letter in the format that it sets.
  for (const Format& format : formats_) {
    QFont font = bar->font();
    font.setBold(format.get == &QELTextbox::get_SelBold);
    font.setItalic(format.get == &QELTextbox::get_SelItalic);
    font.setUnderline(format.get == &QELTextbox::get_SelUnderline);
    QWidget* const button = bar->widgetForAction(format.action);
    button->setFont(font);
    button->setMinimumWidth(button->sizeHint().height());
    button->setAccessibleName(format.action->toolTip());
  }
}

void MainWindow::add_record_actions() {
  QMenu& menu = *menuBar()->addMenu(tr("&Record"));
  add_action(menu, "new", tr("&New"), [this] { new_record(); })->setShortcut(QKeySequence::New);
  save_ = add_action(menu, "save", tr("&Save"), [this] { save(); });
  save_->setShortcut(QKeySequence::Save);
  revert_ = add_action(menu, "revert", tr("Re&vert"), [this] { revert(); });
  QAction* const remove = add_action(menu, "delete", tr("&Delete"), [this] { remove_selected(); });
  // In a text, the same key deletes a character.
  remove->setShortcut(QKeySequence::Delete);
  remove->setShortcutContext(Qt::WidgetShortcut);
  list_->addAction(remove);
  menu.addSeparator();
  add_action(menu, "export", tr("&Export..."), [this] {
    export_selected();
  })->setShortcut(Qt::CTRL | Qt::Key_E);
  add_action(menu, "find", tr("&Find"), [this] {
    search_->setFocus();
    search_->selectAll();
  })->setShortcut(QKeySequence::Find);
  add_action(menu, "recover", tr("Recover &Unsaved Work"), [this] { recover_other(); });
  menu.addSeparator();
  add_action(menu, "quit", tr("&Quit"), [this] { close(); })->setShortcut(Qt::CTRL | Qt::Key_Q);
}

void MainWindow::add_text_actions() {
  QMenu& menu = *menuBar()->addMenu(tr("F&ormat"));
  // The keys after the TAB are only shown: the control handles them.
  add_format(menu, "bold", tr("&Bold\tCtrl+B"),
             {nullptr, &QELTextbox::get_SelBold, &QELTextbox::put_SelBold});
  add_format(menu, "italic", tr("&Italic\tCtrl+I"),
             {nullptr, &QELTextbox::get_SelItalic, &QELTextbox::put_SelItalic});
  add_format(menu, "underline", tr("&Underline\tCtrl+U"),
             {nullptr, &QELTextbox::get_SelUnderline, &QELTextbox::put_SelUnderline});
  menu.addSeparator();
  add_action(menu, "tables", tr("&Fonts and Colours..."), [this] {
    edit_tables();
  })->setIconText(tr("Fonts"));
  QMenu& view = *menuBar()->addMenu(tr("&View"));
  reveal_ = add_action(view, "reveal", tr("Reveal &Codes"), [this] {
    form_->put_RevealCodes(reveal_->isChecked());
    const bool may_format = !reveal_->isChecked() && !store_.is_read_only();
    for (const Format& format : formats_) format.action->setEnabled(may_format);
  });
  reveal_->setCheckable(true);
  reveal_->setIconText(tr("Codes"));
  reveal_->setShortcut(Qt::Key_F9);
  add_action(view, "editor", tr("&Large Editor\tShift+F2"), [this] {
    edited_box().InvokeLargeEditor();
  })->setIconText(tr("Editor"));
}

void MainWindow::add_format(QMenu& menu, const char* name, const QString& text, Format format) {
  format.action = add_action(menu, name, text, [this, format] {
    QELTextbox& control = edited_box().control();
    (control.*format.put)(!(control.*format.get)());
    show_formats();
  });
  format.action->setCheckable(true);
  QString caption = text;
  caption.remove(QChar(u'&'));
  format.action->setIconText(caption.left(1));
  format.action->setToolTip(caption.replace(QChar(u'\t'), QStringLiteral(" (")) + QChar(u')'));
  formats_.push_back(format);
}

}  // namespace qel::forms
