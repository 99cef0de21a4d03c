// The text box as a widget: its properties and signals, keys, mouse, menu, palette, accessibility.

#include <gtest/gtest.h>

#include <QAccessible>
#include <QAction>
#include <QApplication>
#include <QContextMenuEvent>
#include <QInputMethodEvent>
#include <QLineEdit>
#include <QMenu>
#include <QMetaProperty>
#include <QPointer>
#include <QSettings>
#include <QSignalSpy>
#include <QTemporaryDir>
#include <QTest>
#include <QVBoxLayout>

#include "qel/headless/PropertyBag.h"
#include "qel/platform/Keys.h"
#include "qel/qt/PropertyBags.h"
#include "qel/qt/QtPlatform.h"
#include "qel/qt/TextBox.h"
#include "qt/Printing.h"
#include "qt/platform/BoxView.h"

namespace qel::qt {
namespace {

class Widget : public testing::Test {
 protected:
  Widget() {
    auto* layout = new QVBoxLayout(&form);
    layout->addWidget(&before);
    layout->addWidget(&box);
    layout->addWidget(&behind);
    form.resize(300, 200);
    form.show();
    form.activateWindow();
    QApplication::setActiveWindow(&form);
    box.setFocus();
  }

  BoxView& view() { return *static_cast<BoxView*>(box.focusProxy()); }
  void press(Qt::Key key, Qt::KeyboardModifiers modifiers = Qt::NoModifier) {
    QTest::keyClick(&view(), key, modifiers);
  }
  void type(const char* text) { QTest::keyClicks(&view(), QLatin1String(text)); }
  void select(int start, int length) {
    box.control().CurrentRichTextBox()->select({start, length});
  }

  QWidget form;
  QLineEdit before;
  TextBox box;
  QLineEdit behind;
};

TEST_F(Widget, HasEachPersistedPropertyOnce) {
  /// A bag that records the names it is asked for.
  class Names : public platform::PropertyBag {
   public:
    Variant read(std::u16string_view name, const Variant& preset) const override {
      names.push_back(QString::fromUtf16(name.data(), static_cast<qsizetype>(name.size())));
      return preset;
    }
    void write(std::u16string_view, const Variant&, const Variant&) override {}
    mutable QStringList names;
  };
  const Names bag;
  box.control().ReadProperties(bag);
  ASSERT_EQ(bag.names.size(), 32);
  const QMetaObject& meta = *box.metaObject();
  for (const QString& name : bag.names) {
    const int index = meta.indexOfProperty(name.toLatin1());
    ASSERT_GE(index, 0) << qPrintable(name);
    const QMetaProperty property = meta.property(index);
    EXPECT_EQ(property.isUser(), name == QLatin1String("TextQEL"));
    const QVariant value = property.read(&box);
    QVariant other = value.typeId() == QMetaType::Bool      ? QVariant(!value.toBool())
                     : value.typeId() == QMetaType::QString ? QVariant(QStringLiteral("Verdana"))
                                                            : QVariant(2);
    QSignalSpy changed(&box, &TextBox::PropertyChanged);
    EXPECT_TRUE(property.write(&box, other)) << qPrintable(name);
    EXPECT_EQ(property.read(&box),
              other.metaType().id() == QMetaType::Int && property.typeId() == QMetaType::Double
                  ? QVariant(2.0)
                  : other)
        << qPrintable(name);
    EXPECT_EQ(changed.value(0).value(0).toString(), name);
    property.write(&box, value);
  }
  EXPECT_EQ(qstrcmp(meta.userProperty().notifySignal().name(), "TextQELChanged"), 0);
}

TEST_F(Widget, KeepsItsPropertiesInSettingsAndDynamicProperties) {
  box.put_TextQEL(QStringLiteral("a/b1b/b0 \u00E9\U0001F600"));
  box.put_BackColor(0x123456);
  box.put_FontSize(12);
  box.put_SmartQuotes(true);
  const QTemporaryDir folder;
  const QString file = folder.filePath(QStringLiteral("form.ini"));
  QObject object;
  {
    QSettings settings(file, QSettings::IniFormat);
    SettingsBag bag(settings);
    box.control().WriteProperties(bag);
    EXPECT_EQ(settings.allKeys().size(), 5) << "presets are not kept";
    DynamicPropertyBag dynamic(object);
    box.control().WriteProperties(dynamic);
    EXPECT_EQ(object.dynamicPropertyNames().size(), 5);
  }
  const auto expect_same = [&](const TextBox& other) {
    EXPECT_EQ(other.get_TextQEL(), box.get_TextQEL());
    EXPECT_EQ(other.get_BackColor(), 0x123456);
    EXPECT_EQ(other.get_FontSize(), 12);
    EXPECT_TRUE(other.get_SmartQuotes());
  };
  QSettings settings(file, QSettings::IniFormat);
  TextBox from_settings;
  from_settings.control().ReadProperties(SettingsBag(settings));
  expect_same(from_settings);
  TextBox from_object;
  from_object.control().ReadProperties(DynamicPropertyBag(object));
  expect_same(from_object);
  box.put_FontSize(8);
  SettingsBag bag(settings);
  box.control().WriteProperties(bag);
  EXPECT_FALSE(settings.contains(QStringLiteral("FontSize"))) << "what was kept is forgotten";
  object.setProperty("BackColor", QColor(1, 2, 3));
  from_object.control().ReadProperties(DynamicPropertyBag(object));
  EXPECT_EQ(from_object.get_BackColor(), 0x030201);
}

TEST(WidgetInTheMaking, KeepsMarkupThroughItsPropertiesButNoEditBack) {
  TextBox box;
  ControlEvents nobody;
  box.control().listen(&nobody);  // so no signal reports the edits that follow
  box.put_TextQEL(QStringLiteral("/f1a/f0b"));
  box.put_FontName(QStringLiteral("Verdana"));
  EXPECT_EQ(box.get_TextQEL(), QStringLiteral("/f1a/f0b"));
  box.control().put_SelText(u"x");
  box.put_FontName(QStringLiteral("Tahoma"));
  EXPECT_EQ(box.get_Text(), QStringLiteral("xab"));
}

TEST_F(Widget, TellsOfEachChangeOnce) {
  QSignalSpy changes(&box, &TextBox::Change);
  QSignalSpy notices(&box, &TextBox::TextQELChanged);
  int expected = 0;
  const auto expect_one_more = [&](const char* what) {
    EXPECT_EQ(changes.size(), ++expected) << what;
    EXPECT_EQ(notices.size(), expected) << what;
  };
  type("y");
  expect_one_more("a key");
  QInputMethodEvent composing(QStringLiteral("k"), {});
  QApplication::sendEvent(&view(), &composing);
  EXPECT_EQ(changes.size(), expected) << "what is composed is no text yet";
  QInputMethodEvent committing;
  committing.setCommitString(QStringLiteral("\u304B"));
  QApplication::sendEvent(&view(), &committing);
  expect_one_more("input method");
  EXPECT_EQ(box.get_Text(), QStringLiteral("y\u304B"));
  box.put_TextQEL(QStringLiteral("a/b1b/b0"));
  expect_one_more("markup");
  select(1, 1);
  QApplication::sendEvent(&view(), &composing);
  expect_one_more("composing over a selection");
  QInputMethodEvent given_up;
  QApplication::sendEvent(&view(), &given_up);
  EXPECT_EQ(box.get_Text(), QStringLiteral("a")) << "and the host knows";
}

TEST_F(Widget, TellsWhatABarOfFormatsShows) {
  box.put_Multiline(true);
  box.put_TextQEL(QStringLiteral("a/b1b/b0"));
  QSignalSpy told(&box, &TextBox::SelectionChanged);
  const auto is_told = [&](const char* what) {
    EXPECT_GT(told.size(), 0) << what;
    told.clear();
  };
  press(Qt::Key_End);
  is_told("a caret moved by a key");
  select(0, 1);
  is_told("a selection of the host");
  box.control().put_SelItalic(true);
  is_told("a format, and what can be undone");
  press(Qt::Key_End);
  told.clear();
  press(Qt::Key_U, Qt::ControlModifier);
  is_told("the format of what is typed next");
  box.put_FontSize(20);
  is_told("nothing can be undone");
  box.put_AllowEdits(false);
  is_told("nothing may be edited");
  box.put_Multiline(false);
  is_told("another box");
  box.control().boxes()[1]->select({0, 1});
  EXPECT_EQ(told.size(), 0) << "a box that nobody sees";
}

TEST_F(Widget, HandsKeysToWhoeverListens) {
  QObject::connect(&box, &TextBox::KeyDown, [](std::int16_t* code, const std::int16_t* shift) {
    if (*code == keys::page_up_key && *shift == keys::shift_key) *code = keys::home_key;
  });
  QObject::connect(&box, &TextBox::KeyPress, [](std::int16_t* character) {
    if (*character == 'z') *character = 'Z';
  });
  QSignalSpy ups(&box, &TextBox::KeyUp);
  type("azb");
  EXPECT_EQ(box.get_Text(), QStringLiteral("aZb"));
  EXPECT_EQ(ups.size(), 3);
  press(Qt::Key_PageUp, Qt::ShiftModifier);
  EXPECT_EQ(box.control().get_SelLength(), 3) << "one key in place of another";
}

TEST_F(Widget, KeepsItsShortcutsFromTheForm) {
  QAction thief(&form);
  thief.setShortcut(QKeySequence(Qt::CTRL | Qt::Key_B));
  form.addAction(&thief);
  QSignalSpy stolen(&thief, &QAction::triggered);
  press(Qt::Key_B, Qt::ControlModifier);
  type("a");
  EXPECT_EQ(stolen.size(), 0);
  EXPECT_EQ(box.get_TextQEL(), QStringLiteral("/b1a/b0"));
}

TEST_F(Widget, WrapsLinesOnlyWhereThereAreMany) {
  EXPECT_EQ(view().lineWrapMode(), QTextEdit::NoWrap);
  const int one_line = box.sizeHint().height();
  box.put_Multiline(true);
  EXPECT_TRUE(view().hasFocus());
  EXPECT_GT(box.sizeHint().height(), 2 * one_line);
  EXPECT_TRUE(view().isVisible());
  box.put_Text(QString(100'000, u'x'));
  EXPECT_EQ(view().wordWrapMode(), QTextOption::WrapAnywhere) << "Qt is slow with endless words";
  box.put_Text(QStringLiteral("word ").repeated(20'000));
  EXPECT_EQ(view().wordWrapMode(), QTextOption::WrapAtWordBoundaryOrAnywhere);
  press(Qt::Key_Tab);
  EXPECT_TRUE(behind.hasFocus());
  box.setFocus();
  press(Qt::Key_Backtab, Qt::ShiftModifier);
  EXPECT_TRUE(before.hasFocus());
}

TEST_F(Widget, TellsOfTheMouse) {
  box.put_Text(QStringLiteral("word"));
  QStringList told;
  const auto note = [&told](const char* what) {
    return [&told, what](std::int16_t button, std::int16_t shift, float, float) {
      told.append(QStringLiteral("%1 %2 %3").arg(QLatin1String(what)).arg(button).arg(shift));
    };
  };
  QObject::connect(&box, &TextBox::MouseDown, note("down"));
  QObject::connect(&box, &TextBox::MouseUp, note("up"));
  QObject::connect(&box, &TextBox::Click, [&] { told.append(QStringLiteral("click")); });
  QTest::mouseClick(view().viewport(), Qt::LeftButton, Qt::ShiftModifier, QPoint(8, 8));
  EXPECT_EQ(told.join(u','), QStringLiteral("down 1 1,up 1 1,click"));
  float x = 0;
  QObject::connect(&box, &TextBox::MouseMove,
                   [&](std::int16_t, std::int16_t, float to_x, float) { x = to_x; });
  QTest::mouseMove(view().viewport(), QPoint(23, 5));
  EXPECT_EQ(x, 23);
}

TEST_F(Widget, OffersFormatsInItsMenu) {
  box.put_TextQEL(QStringLiteral("/b1ab/b0c"));
  select(0, 2);
  const auto user = [] {
    auto* const menu = qobject_cast<QMenu*>(QApplication::activePopupWidget());
    ASSERT_NE(menu, nullptr);
    const auto item = [&](const char* text) {
      for (QAction* action : menu->actions()) {
        if (action->text().startsWith(QLatin1String(text))) return action;
      }
      return static_cast<QAction*>(nullptr);
    };
    EXPECT_TRUE(item("&Bold")->isChecked());
    EXPECT_FALSE(item("&Italic")->isChecked());
    EXPECT_TRUE(item("Cu&t")->isEnabled());
    item("&Italic")->trigger();
    item("&Bold")->trigger();
    menu->close();
  };
  QMetaObject::invokeMethod(&box, user, Qt::QueuedConnection);
  QContextMenuEvent by_key(QContextMenuEvent::Keyboard, QPoint(5, 5), QPoint(5, 5));
  QApplication::sendEvent(&view(), &by_key);
  QApplication::processEvents();
  EXPECT_EQ(box.get_TextQEL(), QStringLiteral("/i1ab/i0c"));
}

TEST_F(Widget, FollowsThePaletteAndItsState) {
  const auto color_at = [&](int x, int y) { return box.grab().toImage().pixelColor(x, y); };
  box.put_Text(QStringLiteral("text"));
  EXPECT_EQ(color_at(0, 0), QColor(127, 157, 185)) << "the border";
  const QPalette before_dark = QApplication::palette();
  QPalette dark(QColor(40, 40, 40));
  dark.setColor(QPalette::Base, QColor(20, 21, 22));
  dark.setColor(QPalette::Text, QColor(240, 241, 242));
  QApplication::setPalette(dark);
  QApplication::processEvents();
  EXPECT_EQ(QtPlatform().system_colors().color(5), rgb(20, 21, 22));
  EXPECT_EQ(color_at(box.width() - 8, box.height() - 4), QColor(20, 21, 22));
  select(0, 4);
  EXPECT_EQ(box.control().get_SelColor(), 0);
  box.control().SelPlain();
  EXPECT_EQ(box.get_TextQEL(), QStringLiteral("text")) << "no colour of a theme gets into the text";
  box.put_BackColor(0x00C0FFFF);
  EXPECT_EQ(color_at(box.width() - 8, box.height() - 4), QColor(255, 255, 192));
  EXPECT_EQ(view().palette().color(QPalette::Text), QColor(Qt::black));
  QApplication::setPalette(before_dark);
  QApplication::processEvents();
  box.put_BackColor(system_color(5));
  EXPECT_EQ(color_at(box.width() - 8, box.height() - 4), QColor(Qt::white));
  box.setEnabled(false);
  EXPECT_FALSE(box.get_Enabled());
  EXPECT_EQ(color_at(0, 0), QColor(201, 199, 186));
  form.setEnabled(false);
  form.setEnabled(true);
  box.put_Enabled(true);
  EXPECT_TRUE(view().isEnabled());
}

TEST_F(Widget, IsReadAloud) {
  box.put_Text(QStringLiteral("some text"));
  select(5, 4);
  box.setAccessibleName(QStringLiteral("Letter"));
  QAccessibleInterface* const group = QAccessible::queryAccessibleInterface(&box);
  ASSERT_EQ(group->childCount(), 1);
  QAccessibleInterface* const seen = group->child(0);
  EXPECT_EQ(seen, QAccessible::queryAccessibleInterface(&view()));
  EXPECT_EQ(group->indexOfChild(seen), 0);
  EXPECT_EQ(seen->role(), QAccessible::EditableText);
  EXPECT_EQ(seen->text(QAccessible::Name), QStringLiteral("Letter"));
  EXPECT_FALSE(seen->state().multiLine);
  box.put_Multiline(true);
  EXPECT_TRUE(group->child(0)->state().multiLine);
  box.put_Multiline(false);
  QAccessibleTextInterface* const text = seen->textInterface();
  int start = 0;
  int end = 0;
  text->selection(0, &start, &end);
  EXPECT_EQ(text->text(start, end), QStringLiteral("text"));
  // Where text goes in or out before the selection, that moves along.
  seen->editableTextInterface()->replaceText(0, 4, QStringLiteral("other"));
  EXPECT_EQ(box.get_Text(), QStringLiteral("other text"));
  EXPECT_EQ(box.control().get_SelText(), u"text");
  press(Qt::Key_Z, Qt::ControlModifier);
  EXPECT_EQ(box.get_Text(), QStringLiteral("some text"));
}

TEST_F(Widget, OutlivesWhatItsSlotsDo) {
  auto* const other = new TextBox;
  const auto kept = other->control().CurrentRichTextBox();
  QObject::connect(other, &TextBox::KeyDown, [&] { other->control().put_Text(u"from the slot"); });
  QTest::keyClick(other->focusProxy(), Qt::Key_X);
  delete other;
  EXPECT_EQ(kept->get_Text(), u"xfrom the slot");
}

TEST_F(Widget, MayEndInItsSlots) {
  const auto choose_bold = [](TextBox& ends) {
    QContextMenuEvent asks(QContextMenuEvent::Keyboard, {5, 5}, {5, 5});
    QApplication::sendEvent(static_cast<BoxView*>(ends.focusProxy())->viewport(), &asks);
    QWidget* const menu = QApplication::activePopupWidget();
    if (menu != nullptr) QTest::keyClick(menu, Qt::Key_B);
  };
  QPointer<TextBox> ends;
  const auto end = [&ends] { delete ends.data(); };
  const auto in_slot_of = [&](auto signal, auto act) {
    ends = new TextBox;
    ends->put_Text(QStringLiteral("ab"));
    ends->show();
    ends->control().CurrentRichTextBox()->select({0, 2});
    QObject::connect(ends, signal, end);
    act(*ends);
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    EXPECT_TRUE(ends.isNull());
    EXPECT_EQ(QApplication::activePopupWidget(), nullptr);
  };
  in_slot_of(&TextBox::AboutToShowMenu, choose_bold);
  in_slot_of(&TextBox::Change, choose_bold);
  in_slot_of(&TextBox::SelectionChanged, [](TextBox& each) { each.control().put_SelBold(true); });
  in_slot_of(&TextBox::ZoomChanged, [](TextBox& each) { each.put_Zoom(150); });
}

}  // namespace
}  // namespace qel::qt
