// Draws the pictures of the Qt text box in docs/: a form and the colours of text in a light and in
// a dark palette, the bar of formats, and the large editor; with QT_SCALE_FACTOR=2 those in double
// size. Needs no screen. Usage: qt_gallery FOLDER
// Or makes files of pictures smaller: qt_gallery --shrink PICTURE...

#include <QApplication>
#include <QDialog>
#include <QFormLayout>
#include <QGridLayout>
#include <QHash>
#include <QImage>
#include <QLabel>
#include <QMainWindow>
#include <QMenuBar>
#include <QPixmap>
#include <QStringList>
#include <QStyleFactory>
#include <QTimer>
#include <algorithm>
#include <cstdint>
#include <cstdio>
#include <utility>

#include "apps/qelforms/desktop/DarkPalette.h"
#include "qel/qt/FormatBar.h"
#include "qel/qt/TextBox.h"
#include "qel/tables/QELIndexColors.h"

namespace {

using qel::qt::TextBox;

const QString letter = QStringLiteral(
    u"Dear /b1Anna/b0,/nl/nlthe tea from /i1Darjeeling/i0 came in today: 2 kg at "
    u"/b1\u20AC 48/b0, all of it /u1first flush/u0. /k1The box/k0 The tin is /y5not/y0 to be "
    u"opened before the tasting on the 12/p1th/p0, when we also try H/s12/s0O from three "
    u"springs./nl/nl/f2order 4711/f0 /y1(our number)/y0");

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

/// Writes a picture anew in the 256 colours that it has most of: the others are shades at the edges
/// of letters, which nobody misses.
bool shrink(const QString& file) {
  const QImage picture = QImage(file).convertToFormat(QImage::Format_RGB32);
  QHash<QRgb, int> uses;
  for (int y = 0; y < picture.height(); ++y) {
    for (int x = 0; x < picture.width(); ++x) ++uses[picture.pixel(x, y)];
  }
  constexpr qsizetype most_colors = 256;
  QList<QRgb> colors = uses.keys();
  std::sort(colors.begin(), colors.end(), [&uses](QRgb a, QRgb b) {
    return std::make_pair(-uses[a], a) < std::make_pair(-uses[b], b);
  });
  colors = colors.mid(0, most_colors);
  const QImage small = picture.convertToFormat(QImage::Format_Indexed8, colors,
                                               Qt::ThresholdDither | Qt::AvoidDither);
  return !picture.isNull() && small.save(file, "PNG", 0);
}

bool save(QWidget& widget, const QString& base) {
  const bool is_double = widget.devicePixelRatio() > 1;
  const QString file = base + (is_double ? QStringLiteral("@2x.png") : QStringLiteral(".png"));
  const bool is_saved = widget.grab().save(file) && shrink(file);
  if (!is_saved) std::fprintf(stderr, "qt_gallery: %s cannot be written\n", qPrintable(file));
  return is_saved;
}

bool save_form(const QString& base) {
  Form form;
  form.show();
  QApplication::processEvents();
  return save(form, base);
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
  const bool is_saved = save(window, base);
  form.text().setParent(nullptr);
  return is_saved;
}

/// A line in each colour of the table, as it is and as it is shown.
bool save_colors(const QString& base) {
  QWidget window;
  auto* const grid = new QGridLayout(&window);
  const qel::QELIndexColors colors;
  QString lines;
  for (std::int16_t i = 1; i < 10; ++i) {
    lines += QStringLiteral("/y%1%2/y0")
                 .arg(i)
                 .arg(qel::qt::FormatBar::color_name(static_cast<int>(colors.get_Color(i))));
    if (i < 9) lines += QStringLiteral("/nl");
  }
  for (const bool adapts : {false, true}) {
    auto* const box = new TextBox;
    box->put_FontName(QStringLiteral("Liberation Sans"));
    box->put_FontSize(10);
    box->put_Multiline(true);
    box->put_AdaptsColors(adapts);
    box->put_TextQEL(lines);
    const int column = adapts ? 1 : 0;
    grid->addWidget(new QLabel(adapts ? QStringLiteral("As shown") : QStringLiteral("As stored")),
                    0, column);
    grid->addWidget(box, 1, column);
  }
  window.resize(360, 220);
  window.show();
  window.setFocus();
  QApplication::processEvents();
  return save(window, base);
}

bool save_editor(const QString& base) {
  Form form;
  form.show();
  bool is_saved = false;
  QTimer::singleShot(300, &form, [&] {
    auto* const editor = qobject_cast<QDialog*>(QApplication::activeModalWidget());
    if (editor == nullptr) return;
    editor->resize(560, 460);  // whatever the screen has room for
    QApplication::processEvents();
    is_saved = save(*editor, base);
    editor->close();
  });
  form.text().InvokeLargeEditor();
  return is_saved;
}

}  // namespace

int main(int argc, char** argv) {
  qputenv("QT_QPA_PLATFORM", "offscreen");
  const QApplication application(argc, argv);
  const QStringList arguments = QApplication::arguments().mid(1);
  if (arguments.value(0) == QStringLiteral("--shrink")) {
    const QStringList files = arguments.mid(1);
    return std::all_of(files.begin(), files.end(), shrink) ? 0 : 1;
  }
  if (arguments.size() != 1) {
    std::fputs("Usage: qt_gallery FOLDER\n       qt_gallery --shrink PICTURE...\n", stderr);
    return 2;
  }
  const QString& folder = arguments.front();
  QApplication::setStyle(QStyleFactory::create(QStringLiteral("Fusion")));
  QApplication::setFont(QFont(QStringLiteral("Liberation Sans"), 10));
  bool is_done = save_form(folder + QStringLiteral("/desktop-light"));
  is_done = save_bar(folder + QStringLiteral("/desktop-bar")) && is_done;
  is_done = save_colors(folder + QStringLiteral("/desktop-colors-light")) && is_done;
  is_done = save_editor(folder + QStringLiteral("/desktop-editor")) && is_done;
  QApplication::setPalette(qel::forms::dark_palette());
  is_done = save_form(folder + QStringLiteral("/desktop-dark")) && is_done;
  is_done = save_colors(folder + QStringLiteral("/desktop-colors-dark")) && is_done;
  return is_done ? 0 : 1;
}
