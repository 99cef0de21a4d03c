// The clipboard, drag and drop.

#include <gtest/gtest.h>

#include <QApplication>
#include <QClipboard>
#include <QDropEvent>
#include <QMimeData>
#include <memory>

#include "qel/qt/QtPlatform.h"
#include "qt/platform/BoxView.h"

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

TEST(QtDrag, GivesOtherProgramsItsTextAndRTF) {
  DragData dragged;
  const TransferMimeData data(dragged);
  dragged.put(text_format, u"a\r\nb");
  dragged.put(rtf_format, u"{\\rtf1 \u00E4}");
  EXPECT_EQ(data.text(), QStringLiteral("a\nb"));
  EXPECT_EQ(data.data(rtf_name), QByteArray("{\\rtf1 \\'e4}"));
}

}  // namespace
}  // namespace qel::qt
