#include "Demo.h"

#include <QAction>
#include <QApplication>
#include <QKeyEvent>
#include <QLineEdit>
#include <QPixmap>
#include <QSaveFile>
#include <QWidget>
#include <array>
#include <stdexcept>

#include "MainWindow.h"
#include "TagLine.h"

namespace qel::forms {
namespace {

Record record_of(std::u16string_view title, std::u16string_view body) {
  Record record;
  record.title = title;
  record.body = body;
  return record;
}

/// The keyboard of a user while `widget` has the focus.
class Keyboard {
 public:
  explicit Keyboard(QWidget& widget) : widget_(widget) {}

  void type(const QString& text) {
    for (const QChar c : text) press(c.toUpper().unicode(), {}, c);
  }
  void press(int key, Qt::KeyboardModifiers modifiers, const QString& text = {}) {
    for (const QEvent::Type type : {QEvent::KeyPress, QEvent::KeyRelease}) {
      QKeyEvent event(type, key, modifiers, text);
      QApplication::sendEvent(&widget_, &event);
    }
  }
  /// Types text with a format that its key switches on and off.
  void type_in(Qt::Key format, const QString& text) {
    press(format, Qt::ControlModifier);
    type(text);
    press(format, Qt::ControlModifier);
  }

 private:
  QWidget& widget_;
};

}  // namespace

void add_samples(RecordStore& store) {
  if (!store.list().empty()) return;
  std::array<Record, 3> records = {
      record_of(u"Area of a circle", u"A = /f1p/f0r/p12/p0"),
      record_of(u"Green /i1tea/i0",
                u"Warm the pot. /i1Steep/i0 for /b1two minutes/b0 at 80 °C./nl/y3A second pot "
                u"takes one minute more./y0"),
      record_of(u"Welcome to /b1QEL/b0",
                u"Text with /b1bold/b0, /i1italic/i0 and /u1underlined/u0 words, x/p12/p0 and "
                u"H/s12/s0O, in /f3another font/f0 or /y5another colour/y0./nl/nlSelect words and "
                u"press Ctrl+B, Ctrl+I or Ctrl+U. F9 shows the codes behind the text, Shift+F2 "
                u"opens the large editor.")};
  store.save(records);
  const auto tag = [&store](const Record& record, const char16_t* name) {
    store.put_tags(record.id, std::array<std::u16string, 1>{name});
  };
  tag(records[0], u"school");
  tag(records[1], u"drinks");
}

void play(MainWindow& window, const QString& picture) {
  const auto trigger = [&window](const char* name) {
    window.findChild<QAction*>(QLatin1String(name))->trigger();
    QApplication::processEvents();
  };
  trigger("new");
  Keyboard(*window.title_box().focusProxy()).type(QStringLiteral("Shopping"));
  window.body_box().setFocus();
  Keyboard body(*window.body_box().focusProxy());
  body.type(QStringLiteral("Buy "));
  body.type_in(Qt::Key_B, QStringLiteral("green tea"));
  body.type(QStringLiteral(", lemons ("));
  body.type_in(Qt::Key_I, QStringLiteral("ripe"));
  body.type(QStringLiteral(") and a "));
  body.type_in(Qt::Key_U, QStringLiteral("new pot"));
  body.type(QStringLiteral("."));
  trigger("save");
  Keyboard tags(window.findChild<TagLine*>()->field());
  tags.type(QStringLiteral("home"));
  tags.press(Qt::Key_Return, {});
  window.body_box().setFocus();
  if (window.form().is_changed()) throw std::runtime_error("the demo could not save its record");
  QSaveFile file(picture);
  if (!file.open(QIODevice::WriteOnly) || !window.grab().save(&file, "PNG") || !file.commit()) {
    throw std::runtime_error("cannot write " + picture.toStdString() + ": " +
                             file.errorString().toStdString());
  }
}

}  // namespace qel::forms
