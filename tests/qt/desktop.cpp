// Two text boxes in a window, for a script that uses them as a user does: prints their events.

#include <QApplication>
#include <QTimer>
#include <QVBoxLayout>
#include <cstdio>

#include "qel/qt/TextBox.h"

namespace {

void print(const char* name, const QString& told) {
  std::printf("%s: %s\n", name, qPrintable(told));
  std::fflush(stdout);
}

void listen(qel::qt::TextBox& box, const char* name) {
  using qel::qt::TextBox;
  QObject::connect(&box, &TextBox::Change,
                   [&box, name] { print(name, QStringLiteral("text ") + box.get_TextQEL()); });
  QObject::connect(&box, &TextBox::OLEStartDrag, [name] { print(name, QStringLiteral("drags")); });
  QObject::connect(&box, &TextBox::OLEDragDrop,
                   [name] { print(name, QStringLiteral("is dropped on")); });
  QObject::connect(&box, &TextBox::OLECompleteDrag, [name](const std::int32_t* effect) {
    print(name, QStringLiteral("has dragged, effect %1").arg(*effect));
  });
}

}  // namespace

int main(int argc, char** argv) {
  const QApplication application(argc, argv);
  QWidget window;
  auto* layout = new QVBoxLayout(&window);
  qel::qt::TextBox upper;
  qel::qt::TextBox lower;
  for (qel::qt::TextBox* box : {&upper, &lower}) {
    box->put_Multiline(true);
    box->put_FontSize(14);
    box->put_OLEDragMode(1);
    box->put_OLEDropMode(2);
    box->put_ShowEditorOnShiftF2(true);
    layout->addWidget(box);
  }
  upper.put_TextQEL(QStringLiteral("one two"));
  lower.put_TextQEL(QStringLiteral("below"));
  listen(upper, "upper");
  listen(lower, "lower");
  window.setGeometry(0, 0, 400, 300);
  window.show();
  upper.setFocus();
  QTimer::singleShot(0, [] { print("window", QStringLiteral("shown")); });
  return QApplication::exec();
}
