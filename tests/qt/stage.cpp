// The desktop platform, as a stage.

#include "conformance/Stage.h"

#include <QApplication>
#include <QClipboard>
#include <QDialog>
#include <QDrag>
#include <QMenu>
#include <QMenuBar>
#include <QPushButton>
#include <QTest>
#include <QTimer>
#include <QWidget>
#include <utility>

#include "qel/platform/Keys.h"
#include "qel/qt/QtPlatform.h"
#include "qt/platform/BoxView.h"
#include "qt/platform/KeyMapping.h"
#include "qt/platform/MimeData.h"
#include "qt/platform/Positions.h"
#include "qt/platform/Text.h"

namespace qel::conformance {
namespace {

using qt::BoxView;

/// Qt's usual platform without a screen ends drags at once; this one supports them.
[[maybe_unused]] const bool has_drags = []() noexcept {
  const QByteArray asked = qgetenv("QT_QPA_PLATFORM");
  return (asked.isEmpty() || asked == "offscreen") && qputenv("QT_QPA_PLATFORM", "minimal");
}();

class Hand : public EditorHand {
 public:
  explicit Hand(QDialog& dialog) : dialog_(dialog) {}

  void choose(std::u16string_view name) override {
    for (QAction* const action : dialog_.findChildren<QAction*>()) {
      if (action->objectName() == qt::to_qt(name)) action->trigger();
    }
  }
  void press_ok() override { press(true); }
  void press_cancel() override { press(false); }
  void close_by_frame() override { dialog_.close(); }
  bool is_open() const override { return dialog_.isVisible(); }

 private:
  void press(bool is_default) {
    for (QPushButton* const button : dialog_.findChildren<QPushButton*>()) {
      if (button->isDefault() == is_default) button->click();
    }
  }

  QDialog& dialog_;
};

class QtStage : public Stage {
 public:
  QtStage() {
    window_.resize(400, 300);
    window_.show();
    // An unexpected drag would wait for the mouse for ever.
    constexpr int patience = 5000;
    patience_.callOnTimeout([] { QDrag::cancel(); });
    patience_.start(patience);
  }

  std::shared_ptr<const platform::Platform> platform() const override {
    return qt::QtPlatform::shared();
  }
  platform::WindowHandle window() override {
    return reinterpret_cast<platform::WindowHandle>(&window_);
  }

  void press(platform::RichEdit& box, std::int16_t key_code, std::int16_t shift) override {
    const int key = qt::qt_key_of(key_code);
    QTest::keyClick(&view_of(box), key != 0 ? Qt::Key(key) : Qt::Key(key_code),
                    qt::modifiers_of(shift));
  }
  void type(platform::RichEdit& box, std::u16string_view text) override {
    for (const char16_t c : text) {
      if (c == u'\n') {
        press(box, keys::enter_key, keys::no_modifier);
      } else {
        const bool is_capital = c >= u'A' && c <= u'Z';
        const int key = c < 0x80 ? QChar(c).toUpper().unicode() : 0;
        QTest::sendKeyEvent(QTest::Click, &view_of(box), Qt::Key(key), QString(QChar(c)),
                            is_capital ? Qt::ShiftModifier : Qt::NoModifier);
      }
    }
  }
  void click(platform::RichEdit& box, std::int32_t position, std::int16_t shift) override {
    QTest::mouseClick(view_of(box).viewport(), Qt::LeftButton, qt::modifiers_of(shift),
                      point_of(box, position));
  }
  void double_click(platform::RichEdit& box, std::int32_t position) override {
    const QPoint point = point_of(box, position) + QPoint(1, 0);
    QTest::mouseClick(view_of(box).viewport(), Qt::LeftButton, {}, point);
    QTest::mouseDClick(view_of(box).viewport(), Qt::LeftButton, {}, point);
  }
  void sweep(platform::RichEdit& box, std::int32_t from, std::int32_t to,
             std::int16_t shift) override {
    const Qt::KeyboardModifiers held = qt::modifiers_of(shift);
    QWidget* const port = view_of(box).viewport();
    QTest::mousePress(port, Qt::LeftButton, held, point_of(box, from));
    QTest::mouseEvent(QTest::MouseMove, port, Qt::NoButton, held, point_of(box, to));
    QTest::mouseRelease(port, Qt::LeftButton, held, point_of(box, to));
  }
  /// Qt runs a loop of its own until the button comes up.
  void drag(platform::RichEdit& source, const DragPath& path,
            const std::function<void()>& start) override {
    const QPoint from = window_point_of(source, source.selection().start) + QPoint(1, 0);
    const QPoint to = window_point_of(path.target, path.position);
    const QPoint off = window_.rect().bottomRight();
    QTimer hand;
    hand.setSingleShot(true);
    QObject::connect(&hand, &QTimer::timeout, &window_, [&] {
      mouse(QTest::MouseMove, to, path.shift);
      mouse(QTest::MouseMove, to, path.shift);
      if (!path.drops) mouse(QTest::MouseMove, off, path.shift);
      mouse(QTest::MouseRelease, path.drops ? to : off, path.shift);
    });
    if (start) {
      hand.start(0);
      start();
      return;
    }
    mouse(QTest::MousePress, from, keys::no_modifier);
    hand.start(0);
    mouse(QTest::MouseMove, from + QPoint(0, QApplication::startDragDistance()), keys::no_modifier);
  }

  void copy_text(std::u16string_view text) override {
    QApplication::clipboard()->setText(qt::to_qt(text));
  }
  void copy_rtf(std::u16string_view text, std::u16string_view rtf) override {
    platform()->clipboard().put(text, rtf);
  }

  void at_editor(std::function<void(EditorHand&)> user) override {
    QTimer::singleShot(0, &window_, [this, user = std::move(user)] { act(user, 50); });
  }

 private:
  /// The editor may not be open yet.
  void act(const std::function<void(EditorHand&)>& user, int tries) {
    auto* const dialog = qobject_cast<QDialog*>(QApplication::activeModalWidget());
    if (dialog == nullptr) {
      if (tries > 0) QTimer::singleShot(1, &window_, [=, this] { act(user, tries - 1); });
      return;
    }
    Hand hand(*dialog);
    user(hand);
    if (hand.is_open()) hand.close_by_frame();
  }

  BoxView& view_of(platform::RichEdit& box) {
    BoxView& view = *BoxView::of(box);
    view.setFocus();
    return view;
  }
  static QPoint point_of(platform::RichEdit& box, std::int32_t position) {
    BoxView& view = *BoxView::of(box);
    QTextCursor cursor(view.document());
    cursor.setPosition(qt::document_position(*view.document(), position));
    return view.cursorRect(cursor).center();
  }

  QPoint window_point_of(platform::RichEdit& box, std::int32_t position) const {
    return BoxView::of(box)->viewport()->mapTo(&window_, point_of(box, position));
  }
  /// Sends a mouse event as from the window system, at a point of the stage's window.
  void mouse(QTest::MouseAction action, QPoint at, std::int16_t shift) {
    const Qt::MouseButton button = action == QTest::MouseMove ? Qt::NoButton : Qt::LeftButton;
    QTest::mouseEvent(action, window_.windowHandle(), button, qt::modifiers_of(shift), at);
  }

  QWidget window_;
  QTimer patience_;
};

}  // namespace

std::unique_ptr<Stage> make_stage() { return std::make_unique<QtStage>(); }

}  // namespace qel::conformance
