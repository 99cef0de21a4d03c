#include "Demo.h"

#include <QAction>
#include <QApplication>
#include <QFileInfo>
#include <QKeyEvent>
#include <QLineEdit>
#include <QPixmap>
#include <QSaveFile>
#include <QWidget>
#include <array>
#include <stdexcept>

#include "DarkPalette.h"
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
  void end_line() { press(Qt::Key_Return, {}, QStringLiteral("\r")); }
  /// Types text with a format that its key switches on and off.
  void type_in(Qt::Key format, const QString& text) {
    press(format, Qt::ControlModifier);
    type(text);
    press(format, Qt::ControlModifier);
  }

 private:
  QWidget& widget_;
};

void save_picture(MainWindow& window, const QString& path) {
  QSaveFile file(path);
  if (!file.open(QIODevice::WriteOnly) || !window.grab().save(&file, "PNG") || !file.commit()) {
    throw std::runtime_error("cannot write " + path.toStdString() + ": " +
                             file.errorString().toStdString());
  }
}

}  // namespace

void add_samples(RecordStore& store) {
  if (!store.list().empty()) return;
  std::array<Record, 5> records = {
      record_of(u"Area of a circle",
                u"A circle with the radius /i1r/i0 has the area/nl/nlA = πr/p12/p0/nl/nlIt is the "
                u"radius that is squared, /b1not/b0 the diameter: that would be four times as "
                u"much."),
      record_of(u"Books for the winter",
                u"/i1Middlemarch/i0, again/nl/i1The Leopard/i0, Anna has it/nl/y7A history of "
                u"clocks, from the library until 12 January/y0"),
      record_of(u"Trip to the lake",
                u"The train leaves at /b19:42/b0 from platform 3 and is back at 18:15. Take the "
                u"blue rug, swimming things and sun cream./nl/nl/y4Book the rowing boat by "
                u"Thursday./y0"),
      record_of(u"Green /i1tea/i0",
                u"Warm the pot. /i1Steep/i0 for /b1two minutes/b0 at 80 °C./nl/y3A second pot "
                u"takes one minute more./y0"),
      record_of(u"Welcome to /b1Records/b0",
                u"Select words and make them /b1bold/b0, /i1italic/i0 or /u1underlined/u0, raise "
                u"(x/p12/p0) or lower them (H/s12/s0O), and take /f3another font/f0 or /y5another "
                u"colour/y0. All of it is in the bar above the text and in the menu Format./nl/nl"
                u"/b1Finding things again/b0/nlGive a record tags below its title; the box above "
                u"the list shows all that have one. The search looks through titles and texts "
                u"while you type./nl/nl/b1More room/b0/nlShift+F2 opens the large editor, and F1 "
                u"shows all keys.")};
  store.save(records);
  const auto tag = [&store](const Record& record, const char16_t* name) {
    store.put_tags(record.id, std::array<std::u16string, 1>{name});
  };
  tag(records[0], u"school");
  tag(records[1], u"books");
  tag(records[2], u"travel");
  tag(records[3], u"kitchen");
}

void play(MainWindow& window) {
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
  body.end_line();
  body.end_line();
  body.type_in(Qt::Key_B, QStringLiteral("For Saturday"));
  for (const char* const line : {"Scones, and cream from the market", "Strawberry jam, two jars"}) {
    body.end_line();
    body.type(QLatin1String(line));
  }
  body.end_line();
  body.type_in(Qt::Key_F4, QStringLiteral("Ask Anna about the cake"));
  trigger("save");
  Keyboard tags(window.findChild<TagLine*>()->field());
  tags.type(QStringLiteral("kitchen"));
  tags.press(Qt::Key_Return, {});
  window.body_box().setFocus();
  if (window.form().is_changed()) throw std::runtime_error("the demo could not save its record");
}

void take_pictures(MainWindow& window, const QString& file) {
  save_picture(window, file);
  QApplication::setPalette(dark_palette());
  QApplication::processEvents();
  const QFileInfo info(file);
  save_picture(window, info.path() + QLatin1Char('/') + info.completeBaseName() +
                           QStringLiteral("-dark.png"));
}

}  // namespace qel::forms
