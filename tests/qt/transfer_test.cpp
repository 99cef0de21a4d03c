// The clipboard, drag and drop.

#include <gtest/gtest.h>

#include <QApplication>
#include <QClipboard>
#include <QDropEvent>
#include <QMimeData>
#include <QTest>
#include <memory>

#include "qel/platform/Keys.h"
#include "qel/qt/QtPlatform.h"
#include "qt/platform/BoxView.h"
#include "support/Text.h"

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

TEST(QtClipboard, TakesWhatKeysCopy) {
  const auto shown = BoxView::create(nullptr);
  box::Box& box = *shown;
  BoxView& view = *BoxView::of(box);
  box.put_TextRTF(u"{\\rtf1 a\\b bc\\b0\\par d}");
  QTest::keyClick(&view, Qt::Key_A, Qt::ControlModifier);
  QTest::keyClick(&view, Qt::Key_C, Qt::ControlModifier);
  EXPECT_EQ(QApplication::clipboard()->text(), QStringLiteral("abc\nd"));
  const auto also_shown = BoxView::create(nullptr);
  box::Box& other = *also_shown;
  BoxView& other_view = *BoxView::of(other);
  BoxAppearance many = other.appearance();
  QTest::keyClick(&other_view, Qt::Key_Insert, Qt::ShiftModifier);
  EXPECT_EQ(other.get_TextRTF(), box.get_TextRTF());
  many.multiline = false;
  other.put_appearance(many);
  QTest::keyClick(&other_view, Qt::Key_V, Qt::ControlModifier);
  EXPECT_EQ(other.get_Text(), u"abc\r\ndabc d") << "one line stays one line";
  QTest::keyClick(&other_view, Qt::Key_Z, Qt::ControlModifier);
  EXPECT_EQ(other.get_Text(), u"abc\r\nd");
  QTest::keyClick(&view, Qt::Key_Delete, Qt::ShiftModifier);
  EXPECT_EQ(box.get_Text(), u"");
}

/// Records the events of drags and drops.
class DragListener : public BoxListener {
 public:
  void on_start_drag(DragData& data, std::int32_t& allowed_effects) override {
    note("start");
    if (only_promises) data.promise(text_format);
    allowed_effects &= allowed;
  }
  void on_set_data(DragData& data, std::int16_t format) override {
    note("set");
    data.put(format, u"supplied");
  }
  void on_drag_over(DragData& data, std::int32_t& effect, std::int16_t, std::int16_t, float, float,
                    std::int16_t state) override {
    note(("over" + std::to_string(state) + ":" + std::to_string(effect)).c_str());
    has_rtf = data.has(rtf_format);
    if (wanted >= 0) effect = wanted;
  }
  void on_drag_drop(DragData& data, std::int32_t& effect, std::int16_t, std::int16_t, float,
                    float) override {
    note(("drop:" + std::to_string(effect)).c_str());
    dropped = data.get(text_format).value_or(u"");
  }
  void on_complete_drag(std::int32_t& effect) override {
    note(("complete:" + std::to_string(effect)).c_str());
  }
  void on_change() override { ++changes; }

  std::string told;
  std::u16string dropped;
  std::int32_t allowed = copy_drop | move_drop;
  std::int32_t wanted = -1;
  bool only_promises = false;
  bool has_rtf = false;
  int changes = 0;

 private:
  void note(const char* what) { told.append(told.empty() ? "" : " ").append(what); }
};

class QtDrag : public testing::Test {
 protected:
  QtDrag() {
    window.resize(200, 100);
    BoxAppearance appearance = box.appearance();
    appearance.width = 200;
    appearance.height = 100;
    appearance.drag_mode = 1;
    box.put_appearance(appearance);
    box.put_Text(u"one two");
    box.listen(&listener);
    window.show();
    QApplication::setActiveWindow(&window);
  }
  void TearDown() override { box.listen(nullptr); }

  void put_drop_mode(std::int32_t mode) {
    BoxAppearance appearance = box.appearance();
    appearance.drop_mode = mode;
    box.put_appearance(appearance);
  }

  /// Drags over the end of the text and drops there; returns the resulting action.
  Qt::DropAction drag_and_drop(const QMimeData& data,
                               Qt::KeyboardModifiers modifiers = Qt::NoModifier) {
    const QPoint at(150, 8);
    const Qt::DropActions actions = Qt::CopyAction | Qt::MoveAction;
    QDragEnterEvent enter(at, actions, &data, Qt::LeftButton, modifiers);
    QApplication::sendEvent(view.viewport(), &enter);
    if (!enter.isAccepted()) return Qt::IgnoreAction;
    QDragMoveEvent move(at, actions, &data, Qt::LeftButton, modifiers);
    QApplication::sendEvent(view.viewport(), &move);
    if (!move.isAccepted()) {
      QDragLeaveEvent leave;
      QApplication::sendEvent(view.viewport(), &leave);
      return Qt::IgnoreAction;
    }
    QDropEvent drop(at, actions, &data, Qt::LeftButton, modifiers);
    QApplication::sendEvent(view.viewport(), &drop);
    return drop.isAccepted() ? drop.dropAction() : Qt::IgnoreAction;
  }

  QWidget window;
  DragListener listener;
  std::shared_ptr<box::Box> shown = BoxView::create(&window);
  box::Box& box = *shown;
  BoxView& view = *BoxView::of(box);
};

TEST_F(QtDrag, PutsWhatIsDroppedIntoTheText) {
  QMimeData data;
  data.setText(QStringLiteral("+\n"));
  data.setData(rtf_name, "{\\rtf1 {\\b +}\\par}");
  put_drop_mode(2);
  EXPECT_EQ(drag_and_drop(data), Qt::MoveAction);
  EXPECT_EQ(listener.told, "over0:2 over2:2 drop:2");
  EXPECT_EQ(listener.dropped, u"+\r\n");
  EXPECT_TRUE(listener.has_rtf);
  EXPECT_EQ(box.get_Text(), u"one two+\r\n");
  EXPECT_EQ(box.get_SelText(), u"+\r\n");
  EXPECT_EQ(listener.changes, 1);
  box.select({7, 1});
  EXPECT_EQ(box.get_SelBold(), true);
  EXPECT_EQ(drag_and_drop(data, Qt::ControlModifier), Qt::CopyAction);
  view.run_command(keys::letter_key('Z'), keys::ctrl_key);
  view.run_command(keys::letter_key('Z'), keys::ctrl_key);
  EXPECT_EQ(box.get_Text(), u"one two");
}

TEST_F(QtDrag, AsksWhoeverListens) {
  QMimeData data;
  data.setText(QStringLiteral("+"));
  put_drop_mode(1);
  EXPECT_EQ(drag_and_drop(data), Qt::IgnoreAction);
  EXPECT_EQ(listener.told, "over0:0 over2:0 over1:0") << "it is the host's to want it";
  listener.told.clear();
  listener.wanted = copy_drop;
  EXPECT_EQ(drag_and_drop(data), Qt::CopyAction);
  EXPECT_EQ(listener.told, "over0:0 over2:0 drop:1");
  EXPECT_EQ(box.get_Text(), u"one two") << "and to do it";
  put_drop_mode(2);
  listener.wanted = no_drop;
  EXPECT_EQ(drag_and_drop(data), Qt::IgnoreAction);
  listener.wanted = -1;
  BoxAppearance to_read = box.appearance();
  to_read.read_only = true;
  box.put_appearance(to_read);
  EXPECT_EQ(drag_and_drop(data), Qt::IgnoreAction);
  listener.told.clear();
  put_drop_mode(0);
  EXPECT_EQ(drag_and_drop(data), Qt::IgnoreAction);
  EXPECT_EQ(listener.told, "");
}

TEST_F(QtDrag, BeginsOnlyWhereItMay) {
  box.select({0, 0});
  box.start_drag();
  EXPECT_EQ(listener.told, "start") << "nothing is selected";
  box.select({0, 3});
  listener.allowed = no_drop;
  box.start_drag();
  EXPECT_EQ(listener.told, "start start");
}

TEST_F(QtDrag, SuppliesWhatWasPromised) {
  DragData dragged;
  const DragMimeData data(dragged);
  dragged.promise(text_format);
  dragged.put(rtf_format, u"{\\rtf1 \u00E4}");
  int asked = 0;
  dragged.put_supply([&](DragData& promised, std::int16_t format) {
    ++asked;
    promised.put(format, u"a\r\nb");
  });
  EXPECT_TRUE(data.hasText());
  EXPECT_EQ(asked, 0);
  EXPECT_EQ(data.text(), QStringLiteral("a\nb"));
  EXPECT_EQ(data.text(), QStringLiteral("a\nb"));
  EXPECT_EQ(asked, 1);
  EXPECT_EQ(data.data(rtf_name), QByteArray("{\\rtf1 \\'e4}"));
}

}  // namespace
}  // namespace qel::qt
