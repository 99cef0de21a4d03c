// Draws the pictures of the Qt text box in docs/: a form in a light and in a dark palette, in
// single and in double size, and the large editor. Needs no screen. Usage: qt_gallery FOLDER

#include <QApplication>
#include <QDialog>
#include <QFormLayout>
#include <QLabel>
#include <QMainWindow>
#include <QMenuBar>
#include <QPixmap>
#include <QStyleFactory>
#include <QTimer>
#include <cstdio>

#include "qel/qt/FormatBar.h"
#include "qel/qt/TextBox.h"

namespace {

using qel::qt::TextBox;

const QString letter = QStringLiteral(
    u"Dear /b1Anna/b0,/nl/nlthe tea from /i1Darjeeling/i0 came in today: 2 kg at "
    u"/b1\u20AC 48/b0, all of it /u1first flush/u0. /k1The box/k0 The tin is /y5not/y0 to be "
    u"opened before the tasting on the 12/p1th/p0, when we also try H/s12/s0O from three "
    u"springs./nl/nl/f2order 4711/f0 /y1(our number)/y0");

QPalette dark_palette() {
  QPalette palette(QColor(53, 53, 53));
  palette.setColor(QPalette::Base, QColor(30, 30, 30));
  palette.setColor(QPalette::Text, QColor(230, 230, 230));
  palette.setColor(QPalette::Highlight, QColor(42, 130, 218));
  palette.setColor(QPalette::HighlightedText, Qt::white);
  return palette;
}

class Form : public QWidget {
 public:
  Form() {
    setWindowTitle(QStringLiteral("Letter"));
    auto* const rows = new QFormLayout(this);
    rows->addRow(QStringLiteral("To"), &to_);
    rows->addRow(QStringLiteral("Subject"), &subject_);
    rows->addRow(QStringLiteral("Text"), &text_);
    for (TextBox* const box : {&to_, &subject_, &text_}) {
      box->put_FontName(QStringLiteral("Liberation Sans"));
      box->put_FontSize(10);
    }
    to_.put_PlaceholderText(QStringLiteral("Name of the reader"));
    subject_.put_TextQEL(QStringLiteral("Your /i1tea/i0 has arrived"));
    text_.put_Multiline(true);
    text_.put_ScrollBars(2);
    text_.put_TextQEL(letter);
    text_.control().put_SelStart(5);
    text_.control().put_SelLength(4);
    resize(440, 270);
  }

  TextBox& text() { return text_; }

 private:
  TextBox to_;
  TextBox subject_;
  TextBox text_;
};

bool save(QWidget& widget, const QString& file, int scale) {
  QPixmap picture(widget.size() * scale);
  picture.setDevicePixelRatio(scale);
  widget.render(&picture);
  const bool is_saved = picture.save(file);
  if (!is_saved) std::fprintf(stderr, "qt_gallery: %s cannot be written\n", qPrintable(file));
  return is_saved;
}

bool save_in_both_sizes(QWidget& widget, const QString& base) {
  return save(widget, base + QStringLiteral(".png"), 1) &&
         save(widget, base + QStringLiteral("@2x.png"), 2);
}

bool save_form(const QString& base) {
  Form form;
  form.show();
  QApplication::processEvents();
  return save_in_both_sizes(form, base);
}

/// The bar of formats above a text, as on the window of a program.
bool save_bar(const QString& base) {
  QMainWindow window;
  qel::qt::FormatBar bar;
  Form form;
  window.addToolBar(&bar);
  window.setCentralWidget(&form.text());
  bar.follow(&form.text());
  window.resize(560, 190);
  window.show();
  QApplication::processEvents();
  const bool is_saved = save_in_both_sizes(window, base);
  form.text().setParent(nullptr);
  return is_saved;
}

bool save_editor(const QString& base) {
  Form form;
  form.show();
  bool is_saved = false;
  QTimer::singleShot(300, &form, [&] {
    auto* const editor = qobject_cast<QDialog*>(QApplication::activeModalWidget());
    if (editor == nullptr) return;
    is_saved = save_in_both_sizes(*editor, base);
    editor->close();
  });
  form.text().InvokeLargeEditor();
  return is_saved;
}

}  // namespace

int main(int argc, char** argv) {
  qputenv("QT_QPA_PLATFORM", "offscreen");
  const QApplication application(argc, argv);
  if (argc != 2) {
    std::fputs("Usage: qt_gallery FOLDER\n", stderr);
    return 2;
  }
  const QString folder = QString::fromLocal8Bit(argv[1]);
  QApplication::setStyle(QStyleFactory::create(QStringLiteral("Fusion")));
  QApplication::setFont(QFont(QStringLiteral("Liberation Sans"), 10));
  bool is_done = save_form(folder + QStringLiteral("/desktop-light"));
  is_done = save_bar(folder + QStringLiteral("/desktop-bar")) && is_done;
  is_done = save_editor(folder + QStringLiteral("/desktop-editor")) && is_done;
  QApplication::setPalette(dark_palette());
  is_done = save_form(folder + QStringLiteral("/desktop-dark")) && is_done;
  return is_done ? 0 : 1;
}
