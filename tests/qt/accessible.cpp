// Text boxes and a tool bar in a window, for a script that uses them as an assistive program does.

#include <QAction>
#include <QApplication>
#include <QLabel>
#include <QMainWindow>
#include <QToolBar>
#include <QVBoxLayout>

#include "qel/qt/TextBox.h"

int main(int argc, char** argv) {
  const QApplication application(argc, argv);
  QMainWindow window;
  auto* const form = new QWidget;
  auto* const layout = new QVBoxLayout(form);
  const auto add = [&](const char* name, bool has_lines) {
    auto* const box = new qel::qt::TextBox;
    box->put_Multiline(has_lines);
    auto* const label = new QLabel(QLatin1String(name));
    label->setBuddy(box);
    layout->addWidget(label);
    layout->addWidget(box);
    return box;
  };
  qel::qt::TextBox& letter = *add("&Letter", true);
  letter.put_FontName(QStringLiteral("Liberation Serif"));
  letter.put_FontSize(12);
  letter.put_TextQEL(QStringLiteral("plain /b1bold/b0 /y5red/y0/nlmore"));
  add("&Subject", false)->put_PlaceholderText(QStringLiteral("What it is about"));
  qel::qt::TextBox& notes = *add("&Notes", true);
  notes.put_AllowEdits(false);
  notes.put_TextQEL(QStringLiteral("fixed"));
  QAction* const italic = window.addToolBar(QString())->addAction(QStringLiteral("Italic"));
  QObject::connect(italic, &QAction::triggered,
                   [&] { letter.control().CurrentRichTextBox()->put_SelItalic(true); });
  window.setCentralWidget(form);
  window.setWindowTitle(QStringLiteral("accessible"));
  window.show();
  letter.setFocus();
  return QApplication::exec();
}
