#pragma once

#include <gtest/gtest.h>

#include <QAction>
#include <QApplication>
#include <QLabel>
#include <QLineEdit>
#include <QMessageBox>
#include <QPushButton>
#include <QStatusBar>
#include <QTemporaryDir>
#include <QTest>
#include <QTimer>
#include <functional>
#include <memory>
#include <string>
#include <utility>

#include "MainWindow.h"
#include "Notice.h"
#include "RecordList.h"
#include "SearchField.h"
#include "TagLine.h"
#include "qt/platform/Text.h"

namespace qel::forms {

using qt::to_qt;

/// The records window, used with keys and dialogs as a user does.
class FormsWindow : public testing::Test {
 protected:
  FormsWindow() {
    hand.callOnTimeout([this] {
      auto* const dialog = dynamic_cast<QDialog*>(QApplication::activeModalWidget());
      if (dialog == nullptr) return;
      hand.stop();
      std::exchange(awaiting, {})(*dialog);
    });
    open();
  }

  void open(bool recovers = true, std::int64_t most_pages = 0) {
    window.reset();
    store.reset();
    RecordStore::Options options;
    options.creates = true;
    options.patience = std::chrono::milliseconds(0);
    options.most_pages = most_pages;
    store = std::make_unique<RecordStore>(path("records.db").toStdString(), options);
    WindowOptions surroundings;
    surroundings.settings = path("settings.ini");
    surroundings.drafts = path("drafts");
    window = std::make_unique<MainWindow>(*store, surroundings);
    window->show();
    QApplication::setActiveWindow(window.get());
    window->begin(recovers);
  }

  QString path(const char* name) const { return folder.filePath(QLatin1String(name)); }

  std::int64_t add(std::u16string title, std::u16string body) {
    Record record;
    record.title = std::move(title);
    record.body = std::move(body);
    store->save(record);
    // As if it were long ago, so that records stand in the order of their numbers.
    QTest::qWait(2);
    choose("all_records");
    search(QStringLiteral("\n"));
    search(QString());
    return record.id;
  }

  // What the user does.

  static void type(qt::TextBox& box, const char* text) {
    box.setFocus();
    QTest::keyClicks(box.focusProxy(), QLatin1String(text));
  }
  static void press(qt::TextBox& box, Qt::Key key, Qt::KeyboardModifiers modifiers) {
    box.setFocus();
    QTest::keyClick(box.focusProxy(), key, modifiers);
  }
  /// Presses a key where the focus is.
  void press(Qt::Key key, Qt::KeyboardModifiers modifiers = {}) {
    QTest::keyClick(QApplication::focusWidget(), key, modifiers);
    settle();
  }
  void type(const char* text) {
    QTest::keyClicks(QApplication::focusWidget(), QLatin1String(text));
  }
  QAction& action(const char* name) { return *window->findChild<QAction*>(QLatin1String(name)); }
  void choose(const char* name) {
    action(name).trigger();
    settle();
  }
  SearchField& field() { return *window->findChild<SearchField*>(); }
  void search(const QString& text) { field().setText(text); }
  RecordList& list() { return *window->findChild<RecordList*>(); }
  Notice& notice() { return *window->findChild<Notice*>(); }
  /// Returns when the dialog that was awaited, if any, has been dealt with.
  void settle() {
    QApplication::processEvents();
    if (!awaiting && QApplication::activeWindow() != nullptr) return;
    wait_for([this] { return !awaiting; }, "a dialog");
    QApplication::setActiveWindow(window.get());  // no closing dialog restores that off screen
  }
  void click(int row, Qt::KeyboardModifiers modifiers = {}) {
    const QRect place = list().visualRect(list().records().index(row));
    QTest::mouseClick(list().viewport(), Qt::LeftButton, modifiers, place.center());
    settle();
  }
  /// Lets the user act in the next dialog once it is open.
  void at_dialog(std::function<void(QDialog&)> user) {
    awaiting = std::move(user);
    hand.start(1);
  }
  void answer(QMessageBox::StandardButton button) {
    at_dialog(
        [button](QDialog& dialog) { dynamic_cast<QMessageBox&>(dialog).button(button)->click(); });
  }
  /// Presses the dialog's button with that name or caption.
  void answer(const char* button) {
    at_dialog([button](QDialog& dialog) {
      for (auto* const each : dialog.findChildren<QPushButton*>()) {
        QString caption = each->text();
        if (each->objectName() == QLatin1String(button) ||
            caption.remove(QChar(u'&')) == QLatin1String(button)) {
          return each->click();
        }
      }
      ADD_FAILURE() << "there is no button " << button;
      dialog.reject();
    });
  }

  // What the user sees.

  QStringList shown(int role = Qt::DisplayRole) {
    QStringList texts;
    for (int i = 0; i < list().records().rowCount(); ++i) {
      texts.append(list().records().index(i).data(role).toString());
    }
    return texts;
  }
  std::string titles() { return shown().join(QStringLiteral("|")).toStdString(); }
  std::string label(const char* name) {
    return window->statusBar()->findChild<QLabel*>(QLatin1String(name))->text().toStdString();
  }
  std::string state() { return label("state"); }
  std::string message() { return window->statusBar()->currentMessage().toStdString(); }
  std::string body() { return window->body_box().get_Text().toStdString(); }
  std::string saved_body(std::int64_t id) { return to_qt(store->load(id).body).toStdString(); }
  static void wait_for(const std::function<bool()>& holds, const char* what) {
    for (int i = 0; i < 5000 && !holds(); ++i) QTest::qWait(1);
    EXPECT_TRUE(holds()) << "waited for " << what;
  }

  QTemporaryDir folder;
  std::unique_ptr<RecordStore> store;
  std::unique_ptr<MainWindow> window;
  std::function<void(QDialog&)> awaiting;
  QTimer hand;
};

}  // namespace qel::forms
