// The clipboard, drag and drop.

#include <gtest/gtest.h>

#include <QAccessible>
#include <QApplication>
#include <QClipboard>
#include <QDropEvent>
#include <QMenu>
#include <QMimeData>
#include <QTest>
#include <functional>
#include <memory>
#include <vector>

#include "qel/qt/QtPlatform.h"
#include "qel/qt/TextBox.h"
#include "qt/platform/BoxView.h"
#include "qt/platform/HtmlReading.h"
#include "qt/platform/Text.h"

namespace qel::qt {
namespace {

using namespace platform;

const QString rtf_name = QStringLiteral("text/rtf");

TEST(QtClipboard, HasTextAndRTFUnderTheirNames) {
  Clipboard& clipboard = QtPlatform::shared()->clipboard();
  clipboard.put(u"a\r\n\u20AC\u4E2D", u"{\\rtf1 a\\par \u20AC\u4E2D}");
  const QMimeData& there = *QApplication::clipboard()->mimeData();
  EXPECT_EQ(there.text(), QStringLiteral("a\n\u20AC\u4E2D"));
  EXPECT_EQ(there.data(rtf_name), QByteArray("{\\rtf1 a\\par \\'80\\u20013?}"));
  EXPECT_EQ(there.data(QStringLiteral("application/rtf")), there.data(rtf_name));
  EXPECT_TRUE(
      there.html().endsWith(QStringLiteral("<p style=\"margin:0pt\"><span style=\"font-family:"
                                           "'Arial'\">\u20AC\u4E2D</span></p>")));
  EXPECT_EQ(clipboard.text(), u"a\r\n\u20AC\u4E2D");
  box::Box box;
  box.put_TextRTF(*clipboard.rtf());
  EXPECT_EQ(box.get_Text(), u"a\r\n\u20AC\u4E2D");

  auto* const foreign = new QMimeData;
  foreign->setData(QStringLiteral("application/rtf"), "{\\rtf1\\ansicpg1252 \xE4}");
  QApplication::clipboard()->setMimeData(foreign);
  EXPECT_EQ(clipboard.rtf(), u"{\\rtf1\\ansicpg1252 \\'e4}");
  EXPECT_EQ(clipboard.text(), std::nullopt);
  QApplication::clipboard()->setText(QStringLiteral("x\ny"));
  EXPECT_EQ(clipboard.rtf(), std::nullopt);
  EXPECT_EQ(clipboard.text(), u"x\r\ny");
}

TEST(QtDrag, PutsWhatAnotherProgramDropsIntoTheText) {
  QWidget window;
  const std::shared_ptr<box::Box> box = BoxView::create(&window);
  BoxView& view = *BoxView::of(*box);
  BoxAppearance appearance = box->appearance();
  appearance.drop_mode = 2;
  box->put_appearance(appearance);
  box->put_Text(u"one");
  window.show();
  const QPoint at(150, 8);
  QMimeData data;
  data.setText(QStringLiteral("+\n"));
  data.setData(rtf_name, "{\\rtf1 {\\b +}\\par}");
  const auto drop_with = [&](Qt::KeyboardModifiers modifiers) {
    const Qt::DropActions actions = Qt::CopyAction | Qt::MoveAction;
    QDragEnterEvent enter(at, actions, &data, Qt::LeftButton, modifiers);
    QApplication::sendEvent(view.viewport(), &enter);
    EXPECT_TRUE(enter.isAccepted());
    QDropEvent drop(at, actions, &data, Qt::LeftButton, modifiers);
    QApplication::sendEvent(view.viewport(), &drop);
    return drop.isAccepted() ? drop.dropAction() : Qt::IgnoreAction;
  };
  EXPECT_EQ(drop_with(Qt::NoModifier), Qt::MoveAction);
  EXPECT_EQ(box->get_Text(), u"one+\r\n");
  box->select({3, 1});
  EXPECT_EQ(box->get_SelBold(), true);
  EXPECT_EQ(drop_with(Qt::ControlModifier), Qt::CopyAction);
}

TEST(QtDrag, GivesOtherProgramsWhatItHasAndPromises) {
  DragData dragged;
  const TransferMimeData data(dragged);
  dragged.put(text_format, u"a\r\nb");
  dragged.put(rtf_format, u"{\\rtf1 \u00E4}");
  EXPECT_EQ(data.text(), QStringLiteral("a\nb"));
  EXPECT_EQ(data.data(rtf_name), QByteArray("{\\rtf1 \\'e4}"));
  EXPECT_TRUE(data.html().contains(QStringLiteral(">\u00E4<")));
  dragged.clear();
  EXPECT_FALSE(data.hasHtml());
  dragged.promise(rtf_format);
  dragged.put_supply([](DragData& promised, std::int16_t format) {
    if (format == rtf_format) promised.put(format, u"{\\rtf1 {\\b late}}");
  });
  EXPECT_TRUE(data.formats().contains(QStringLiteral("text/html")));
  EXPECT_TRUE(data.html().contains(QStringLiteral("<b><span style=\"font-family:'Arial'\">late")));
}

/// What other programs really offer, shortened; the text beside HTML is "text".
TEST(QtPaste, TakesFormatsFromOtherPrograms) {
  struct Row {
    const char* program;
    const char* html;
    const char* rtf;
    const char* markup;
  };
  const Row rows[] = {
      {"Chromium",
       "<h2 style=\"color: rgb(0, 0, 0); font-family: Arial, sans-serif; font-style: normal;\">A "
       "heading</h2><p style=\"color: rgb(0, 0, 0); font-family: Arial, sans-serif; font-size: "
       "14px; "
       "font-variant-caps: normal; font-weight: 400; white-space: normal; "
       "text-decoration-thickness: "
       "initial;\">Plain <b>bold</b>, <i>italic</i> and <u>underlined</u>, <s>struck</s>, "
       "H<sub>2</sub>O, x<sup>2</sup>, <span style=\"font-variant: small-caps;\">Small "
       "Caps</span>.</p><p style=\"text-align: center;\">centred <span style=\"color: rgb(255, 0, "
       "0);\">red</span></p><p><code style=\"font-family: &quot;Test Mono&quot;, "
       "monospace;\">mono</code>, <a href=\"https://example.org/\">a "
       "link</a></p><ul><li>one</li><li>two</li></ul><ol><li>first</li></ol>"
       "<table><tbody><tr><td>a</td><td>b</td></tr><tr><td>c</td><td>d</td></tr></tbody></table>"
       "<p>Ende \u2013 \u65E5<br>after a break</p>",
       nullptr,
       "/b1A heading/nl/b0Plain /b1bold/b0, /i1italic/i0 and /u1underlined/u0, /k1struck/k0, "
       "H/s12/s0O, x/p12/p0, /c1Small Caps/c0./nlcentred /y4red/nl/y0/f4mono/f0, a "
       "link/nl\u2022\tone/nl\u2022\ttwo/nl1.\tfirst/nla\tb/nlc\td/nlEnde \u2013 \u65E5/nlafter a "
       "break"},
      {"LibreOffice",
       "<!DOCTYPE html>\n<html>\n<head>\n\t<meta http-equiv=\"content-type\" content=\"text/html; "
       "charset=utf-8\"/>\n\t<title></title>\n\t<style type=\"text/css\">\n\t\t@page { size: "
       "8.27in "
       "11.69in }\n\t\th2 { margin-top: 0.14in }\n\t\tp { line-height: 115% "
       "}\n\t</style>\n</head>\n"
       "<body lang=\"en-US\" link=\"#000080\" dir=\"ltr\"><p>Plain\n<b>bold</b> "
       "H<sub>2</sub>O</p>\n"
       "<p align=\"center\"><font color=\"#ff0000\">red</font> <font face=\"Test Mono\">mono</font>"
       "</p>\n<ul>\n\t<li><p style=\"margin-bottom: 0in\">one</p>\n</ul>\n<p>Ende\n\u65E5</p>\n"
       "</body>\n</html>",
       nullptr, "Plain /b1bold/b0 H/s12/s0O/nl/y4red/y0 /f4mono/nl/f0\u2022\tone/nlEnde \u65E5"},
      {"RTF wins", "<b>html</b>", "{\\rtf1 {\\i rtf}}", "/i1rtf/i0"},
      {"no RTF in fact", "<b>html</b>", "", "/b1html/b0"},
      {"a clipboard of Windows",
       "Version:0.9\r\nStartHTML:0000000105\r\nEndHTML:0000000190\r\nStartFragment:0000000141\r\n"
       "EndFragment:0000000154\r\n<html>\r\n<body>\r\n<!--StartFragment--><b>part</b>"
       "<!--EndFragment-->\r\n</body>\r\n</html>",
       nullptr, "/b1part/b0"},
      {"a picture", "<meta charset='utf-8'><img src=\"https://example.org/a.png\">", nullptr,
       "text"},
  };
  for (const bool in_utf16 : {false, true}) {
    for (const Row& row : rows) {
      SCOPED_TRACE(row.program);
      TextBox box;
      box.put_Multiline(true);
      box.control().get_Fonts()->put_Font(4, u"Test Mono");
      box.control().get_Colors()->put_Color(4, rgb(255, 0, 0));
      QString html = QString::fromUtf8(row.html);
      auto* const data = new QMimeData;
      const auto* const units = reinterpret_cast<const char*>(html.utf16());
      data->setData(QStringLiteral("text/html"),
                    in_utf16 ? "\xFF\xFE" + QByteArray(units, html.size() * 2) : html.toUtf8());
      if (row.rtf != nullptr) data->setData(rtf_name, row.rtf);
      data->setText(QStringLiteral("text"));
      QApplication::clipboard()->setMimeData(data);
      box.PasteClipboardContents();
      EXPECT_EQ(box.get_TextQEL().toStdString(), row.markup);
      const QString text = box.get_Text();
      box.PasteText();
      EXPECT_EQ(box.get_Text(), text + QStringLiteral("text"));
      BoxView::of(*box.control().CurrentRichTextBox())->box()->undo();
      BoxView::of(*box.control().CurrentRichTextBox())->box()->undo();
      EXPECT_EQ(box.get_Text(), QString()) << "a paste is one step";
      box.put_Lossless(false);
      box.PasteClipboardContents();
      const bool is_rtf = row.rtf != nullptr && *row.rtf != '\0';
      EXPECT_EQ(box.get_Text(), QString::fromUtf8(is_rtf               ? "rtf"
                                                  : row.rtf != nullptr ? ""
                                                                       : "text"))
          << "in the stated way, HTML does not count";
    }
  }
}

/// The reader for where the library's own is not built.
TEST(QtPaste, ReadsHtmlByQtAsWell) {
  const std::u16string html =
      u"<p>a <b>b</b><i>i</i><u>u</u><s>s</s><sup>1</sup><sub>2</sub><br><span "
      u"style='color:#ff0000;"
      u"font-family:\"Test Mono\"'>c </span></p>\n<p align=right>r</p><ul><li>x</ul><ol><li>y</ol>"
      u"<table><tr><td>1<td>2<tr><td>3<td>4</table>";
  const richtext::CharFormat base = {.font_name = u"Base", .size = 11};
  const richtext::Document by_qt = read_html_by_qt(to_qt(html), base);
  const richtext::Document usual = read_html(html, base);
  EXPECT_EQ(to_qt(by_qt.text()).toStdString(), to_qt(usual.text()).toStdString());
  for (std::size_t at = 0; at < std::min(by_qt.size(), usual.size()); ++at) {
    EXPECT_EQ(by_qt.format_at(at), usual.format_at(at)) << at;
    EXPECT_EQ(by_qt.alignment_at(at), usual.alignment_at(at)) << at;
  }
}

TEST(QtPaste, KeepsLinesOnEveryWayIn) {
  const QString lines = QStringLiteral("1\n2\n3\n\n5\n6");
  QMimeData dropped;
  dropped.setText(lines);
  QApplication::clipboard()->setText(lines);
  struct Way {
    const char* name;
    std::function<void(TextBox& box, BoxView& view)> paste;
  };
  const auto press = [](Qt::Key key, Qt::KeyboardModifiers modifiers) {
    return [=](TextBox& /*box*/, BoxView& view) { QTest::keyClick(&view, key, modifiers); };
  };
  const Way ways[] = {
      {"Ctrl+V", press(Qt::Key_V, Qt::ControlModifier)},
      {"Ctrl+Shift+V", press(Qt::Key_V, Qt::ControlModifier | Qt::ShiftModifier)},
      {"Shift+Insert", press(Qt::Key_Insert, Qt::ShiftModifier)},
      {"menu", [](TextBox& /*box*/, BoxView& view) { view.run_command(keys::letter_key('V'), 2); }},
      {"host", [](TextBox& box, BoxView&) { box.PasteClipboardContents(); }},
      {"host, text", [](TextBox& box, BoxView&) { box.PasteText(); }},
      // As the middle button does.
      {"slot", [](TextBox&, BoxView& view) { view.paste(); }},
      {"drop",
       [&](TextBox&, BoxView& view) {
         const QPointF at(5, 5);
         QDragEnterEvent enter(at.toPoint(), Qt::CopyAction, &dropped, Qt::LeftButton, {});
         QApplication::sendEvent(view.viewport(), &enter);
         QDropEvent drop(at, Qt::CopyAction, &dropped, Qt::LeftButton, {});
         QApplication::sendEvent(view.viewport(), &drop);
       }},
      {"assistive program",
       [&](TextBox&, BoxView& view) {
         QAccessible::queryAccessibleInterface(&view)->editableTextInterface()->insertText(0,
                                                                                           lines);
         view.settle();
       }},
  };
  for (const Way& way : ways) {
    for (const bool multiline : {true, false}) {
      SCOPED_TRACE(std::string(way.name) + (multiline ? ", many lines" : ", one line"));
      TextBox box;
      box.put_Multiline(multiline);
      box.put_OLEDropMode(2);
      box.show();
      way.paste(box, *BoxView::of(*box.control().CurrentRichTextBox()));
      QString expected = lines;
      expected.replace(QLatin1String("\n"), QLatin1String(multiline ? "\r\n" : " "));
      // A program that sees one line has no reason to insert several.
      if (!multiline && std::string(way.name) == "assistive program") expected.clear();
      EXPECT_EQ(box.get_Text().toStdString(), expected.toStdString());
    }
  }
}

}  // namespace
}  // namespace qel::qt
