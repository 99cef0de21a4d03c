// The menus of the window.

#include <QAction>
#include <QActionGroup>
#include <QApplication>
#include <QKeySequence>
#include <QMenu>
#include <QMenuBar>
#include <utility>

#include "EditCommands.h"
#include "EditorSide.h"
#include "ListSide.h"
#include "MainWindow.h"
#include "RecordList.h"
#include "Shortcuts.h"
#include "TagLine.h"
#include "qel/version.h"

namespace qel::forms {
namespace {

constexpr int zoom_step = 10;
constexpr int normal_zoom = 100;

}  // namespace

QAction& MainWindow::add_action(QMenu& menu, const char* name, const QString& text,
                                std::function<void()> work) {
  QAction* const action = menu.addAction(text);
  action->setObjectName(QLatin1String(name));
  connect(action, &QAction::triggered, this, [this, work = std::move(work)] {
    try {
      work();
    } catch (const std::exception& error) {
      report(error);
    }
  });
  return *action;
}

QAction& MainWindow::action(const char* name) const {
  return *findChild<QAction*>(QLatin1String(name));
}

void MainWindow::add_actions() {
  QMenu& records = *menuBar()->addMenu(tr("&Record"));
  QMenu& edit = *menuBar()->addMenu(tr("&Edit"));
  QMenu& format = *menuBar()->addMenu(tr("F&ormat"));
  QMenu& view = *menuBar()->addMenu(tr("&View"));
  QMenu& help = *menuBar()->addMenu(tr("&Help"));
  add_record_actions(records);
  add_edit_actions(edit);
  add_format_actions(format);
  add_view_actions(view);
  add_help_actions(help);
}

void MainWindow::add_record_actions(QMenu& menu) {
  QAction& create = add_action(menu, "new", tr("&New"), [this] { new_record(); });
  create.setShortcut(QKeySequence::New);
  create.setToolTip(
      tr("New record (%1)").arg(create.shortcut().toString(QKeySequence::NativeText)));
  side_->put_new_action(create);
  add_action(menu, "open", tr("&Open File..."), [this] {
    open_file(true);
  }).setShortcut(QKeySequence::Open);
  add_action(menu, "open_new", tr("Open File in New &Window..."), [this] {
    open_file(false);
  }).setShortcut(Qt::CTRL | Qt::ALT | Qt::Key_O);
  QMenu& recent = *menu.addMenu(tr("Open &Recent"));
  connect(&recent, &QMenu::aboutToShow, this, [this, &recent] { fill_recent_files(recent); });
  for (QAction* const action :
       {&this->action("open"), &this->action("open_new"), recent.menuAction()}) {
    action->setEnabled(options_.open != nullptr);
  }
  menu.addSeparator();
  add_action(menu, "save", tr("&Save"), [this] { save(); }).setShortcut(QKeySequence::Save);
  add_action(menu, "revert", tr("Re&vert"), [this] { revert(); });
  add_action(menu, "duplicate", tr("D&uplicate"), [this] {
    duplicate_selected();
  }).setShortcut(Qt::CTRL | Qt::SHIFT | Qt::Key_D);
  add_trash_actions(menu);
  menu.addSeparator();
  add_file_actions(menu);
}

void MainWindow::add_trash_actions(QMenu& menu) {
  QAction& remove = add_action(menu, "delete", tr("&Delete"), [this] { remove_selected(); });
  QAction& restore = add_action(menu, "restore", tr("Res&tore"), [this] { restore_selected(); });
  QAction& for_good =
      add_action(menu, "delete_for_good", tr("Delete for &Good..."), [this] { remove_for_good(); });
  QAction& empty =
      add_action(menu, "empty_trash", tr("Empt&y Trash..."), [this] { empty_trash(); });
  for_good.setIconText(tr("Delete for Good"));
  empty.setIconText(tr("Empty"));
  // In a text, the same key deletes a character; of the two, only one is possible at a time.
  for (QAction* const action : {&remove, &for_good}) {
    action->setShortcut(QKeySequence::Delete);
    action->setShortcutContext(Qt::WidgetShortcut);
    list().addAction(action);
  }
  side_->put_trash_actions({&restore, &for_good, &empty});
}

void MainWindow::add_file_actions(QMenu& menu) {
  add_action(menu, "import", tr("&Import..."), [this] { choose_imports(); });
  add_action(menu, "export", tr("E&xport..."), [this] {
    export_selected();
  }).setShortcut(Qt::CTRL | Qt::Key_E);
  add_action(menu, "print", tr("&Print..."), [this] { print(); }).setShortcut(QKeySequence::Print);
  add_action(menu, "preview", tr("Print Previ&ew..."), [this] { preview(); });
  menu.addSeparator();
  add_action(menu, "recover", tr("Recover Unsaved Wor&k"), [this] { recover_other(); });
  menu.addSeparator();
  add_action(menu, "close", tr("&Close Window"), [this] {
    close();
  }).setShortcut(Qt::CTRL | Qt::Key_W);
  add_action(menu, "quit", tr("&Quit"), [] {
    QApplication::closeAllWindows();
  }).setShortcut(Qt::CTRL | Qt::Key_Q);
}

void MainWindow::add_edit_actions(QMenu& menu) {
  edit_commands_->add_to(menu);
  menu.addSeparator();
  add_action(menu, "undo_delete", tr("Undo De&leting"), [this] {
    if (const auto undo = undo_removal_) undo();
  });
  menu.addSeparator();
  qt::FindBar& bar = editor_->find_bar();
  add_action(menu, "find", tr("&Find..."), [&bar] { bar.open(); }).setShortcut(QKeySequence::Find);
  add_action(menu, "replace", tr("R&eplace..."), [&bar] {
    bar.open_replace();
  }).setShortcut(Qt::CTRL | Qt::Key_H);
  add_action(menu, "find_next", tr("Find &Next"), [&bar] {
    bar.find_next();
  }).setShortcut(Qt::Key_F3);
  add_action(menu, "find_previous", tr("Find Pre&vious"), [&bar] {
    bar.find_previous();
  }).setShortcut(Qt::SHIFT | Qt::Key_F3);
  menu.addSeparator();
  add_action(menu, "search", tr("&Search Records"), [this] {
    side_->start_search();
  }).setShortcut(Qt::CTRL | Qt::SHIFT | Qt::Key_F);
  add_action(menu, "edit_tags", tr("Edit Ta&gs"), [this] {
    editor_->tags().setFocus();
  }).setShortcut(Qt::CTRL | Qt::SHIFT | Qt::Key_G);
}

void MainWindow::add_format_actions(QMenu& menu) {
  for (QAction* const action : editor_->format_bar().actions()) {
    const QString name = action->objectName();
    if (name == QLatin1String("CopyFormat")) continue;  // a matter of the mouse
    // The Edit menu has these.
    if (name == QLatin1String("UndoStep") || name == QLatin1String("Redo")) continue;
    // Colours have the usual letter.
    if (name == QLatin1String("Plain")) action->setText(tr("Pl&ain\tCtrl+Space"));
    menu.addAction(action);
  }
  menu.addSeparator();
  add_action(menu, "tables", tr("Fonts an&d Colours..."), [this] { edit_tables(); });
}

void MainWindow::add_view_actions(QMenu& menu) {
  QAction& format = add_action(menu, "format_bar", tr("&Format Bar"), [this] {
    look_.format_bar = action("format_bar").isChecked();
    editor_->show_format_bar(look_.format_bar);
  });
  format.setCheckable(true);
  format.setChecked(look_.format_bar);
  QAction& find = add_action(menu, "find_bar", tr("Find &Bar"), [this] {
    if (action("find_bar").isChecked()) {
      editor_->find_bar().open();
    } else {
      editor_->find_bar().dismiss();
    }
  });
  find.setCheckable(true);
  connect(&menu, &QMenu::aboutToShow, this,
          [this, &find] { find.setChecked(editor_->find_bar().isVisible()); });
  QAction& codes = add_action(menu, "reveal", tr("Reveal &Codes"),
                              [this] { form_->put_RevealCodes(action("reveal").isChecked()); });
  codes.setCheckable(true);
  codes.setShortcut(Qt::Key_F9);
  menu.addSeparator();
  add_zoom_actions(menu);
  menu.addSeparator();
  add_order_actions(*menu.addMenu(tr("&Sort By")));
  add_action(menu, "all_records", tr("&All Records"), [this] { side_->show_trash(false); });
  add_action(menu, "trash", tr("&Trash"), [this] { side_->show_trash(true); });
  menu.addSeparator();
  add_action(menu, "editor", tr("&Large Editor\tShift+F2"),
             [this] { editor_->edited_box().InvokeLargeEditor(); });
}

void MainWindow::add_zoom_actions(QMenu& menu) {
  // The text handles these keys itself while it has the focus.
  add_action(menu, "zoom_in", tr("Zoom &In"), [this] {
    put_zoom(look_.zoom + zoom_step);
  }).setShortcuts({QKeySequence(Qt::CTRL | Qt::Key_Plus), QKeySequence(Qt::CTRL | Qt::Key_Equal)});
  add_action(menu, "zoom_out", tr("Zoom &Out"), [this] {
    put_zoom(look_.zoom - zoom_step);
  }).setShortcut(Qt::CTRL | Qt::Key_Minus);
  add_action(menu, "zoom_normal", tr("&Normal Size"), [this] {
    put_zoom(normal_zoom);
  }).setShortcut(Qt::CTRL | Qt::Key_0);
}

void MainWindow::add_order_actions(QMenu& menu) {
  auto* const group = new QActionGroup(this);
  const std::pair<const char*, QString> orders[] = {{"by_changed", tr("Date &Changed")},
                                                    {"by_created", tr("Date C&reated")},
                                                    {"by_title", tr("&Title")}};
  for (const auto& [name, caption] : orders) {
    QAction& action = add_action(menu, name, caption, [this] { follow_order(); });
    action.setCheckable(true);
    group->addAction(&action);
    orders_.push_back(&action);
  }
  orders_[static_cast<std::size_t>(look_.order)]->setChecked(true);
  menu.addSeparator();
  QAction& reverse = add_action(menu, "reverse", tr("Re&verse Order"), [this] { follow_order(); });
  reverse.setCheckable(true);
  reverse.setChecked(look_.ascending != (look_.order == Order::title));
  side_->put_order_menu(menu);
}

/// Titles begin with A, times with the newest.
void MainWindow::follow_order() {
  for (std::size_t i = 0; i < orders_.size(); ++i) {
    if (orders_[i]->isChecked()) look_.order = static_cast<Order>(i);
  }
  look_.ascending = (look_.order == Order::title) != action("reverse").isChecked();
  side_->put_order(look_.order, look_.ascending);
  keep_look();
}

void MainWindow::add_help_actions(QMenu& menu) {
  add_action(menu, "shortcuts", tr("&Keyboard Shortcuts"), [this] {
    show_shortcuts(*this);
  }).setShortcut(QKeySequence::HelpContents);
  add_action(menu, "about", tr("&About"), [this] {
    QMessageBox::about(
        this, tr("About Records"),
        tr("<h3>Records</h3><p>Version %1</p><p>Keeps records with formatted text in a file, and "
           "shows how a program uses the text box and its bars.</p>")
            .arg(QString::fromUtf8(version)));
  });
}

}  // namespace qel::forms
