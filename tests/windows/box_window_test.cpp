// What the window of a box shows, and what happens to it.

#include <gtest/gtest.h>
#include <windows.h>
// Need the types of the other.
#include <oleacc.h>
#include <richedit.h>

#include <functional>
#include <memory>
#include <string>
#include <vector>

#include "BoxInWindow.h"
#include "ShownBox.h"
#include "qel/base/Contrast.h"
#include "qel/platform/Keys.h"
#include "windows/Dpi.h"

namespace qel::windows {
namespace {

using platform::Range;
using platform::RichEdit;
using test::expect_shown;
using test::form;
using test::Window;
using test::window_of;

using BoxWindows = test::BoxesInWindows;

/// What other programs put into the window.
TEST_F(BoxWindows, TakeTextOfOthers) {
  struct Listener : platform::BoxListener {
    void on_change() override { told += u"|"; }
    void on_key_press(std::int16_t& character) override {
      told.push_back(static_cast<char16_t>(character));
    }
    std::u16string told;
  } listener;
  const auto box = new_box();
  const Window window(*box);
  box->put_TextRTF(u"{\\rtf1 one\\par\\b two}");
  box->listen(&listener);
  window.select(2, 5);
  EXPECT_EQ(box->selection(), (Range{2, 4}));
  window.replace(u"X\rY");
  EXPECT_EQ(box->get_Text(), u"onX\r\nYwo");
  EXPECT_EQ(listener.told, u"|") << "it was not typed";
  EXPECT_EQ(box->selection(), (Range{6, 0}));
  expect_shown(*box);
  window.send(EM_UNDO);
  EXPECT_EQ(box->get_Text(), u"one\r\ntwo");
  window.send(WM_SETTEXT, 0, reinterpret_cast<LPARAM>(L"other"));
  EXPECT_EQ(box->get_Text(), u"other");
  expect_shown(*box);

  box->select({0, 2});
  window.send(WM_CUT);
  EXPECT_EQ(box->get_Text(), u"her");
  EXPECT_EQ(clipboard_.text(), u"ot");
  window.send(WM_CLEAR);
  EXPECT_EQ(box->get_Text(), u"her") << "nothing is selected";
  window.send(WM_PASTE);
  EXPECT_EQ(box->get_Text(), u"other");
  EXPECT_EQ(window.send(EM_CANUNDO), TRUE);

  platform::BoxAppearance appearance = box->appearance();
  appearance.multiline = false;
  box->put_appearance(appearance);
  Window(*box).replace(u"no\rsecond line");
  EXPECT_EQ(box->get_Text(), u"other");
  expect_shown(*box);
  appearance.read_only = true;
  box->put_appearance(appearance);
  Window(*box).replace(u"no");
  for (const UINT message : {UINT{WM_PASTE}, UINT{WM_UNDO}, UINT{WM_CLEAR}}) {
    Window(*box).send(message);
  }
  EXPECT_EQ(box->get_Text(), u"other");
  expect_shown(*box);
}

TEST_F(BoxWindows, LeaveWhatIsComposedToTheWindow) {
  const auto box = new_box();
  const Window window(*box);
  box->put_Text(u"ab");
  box->select({1, 0});
  box->put_SelBold(true);
  window.send(WM_IME_STARTCOMPOSITION);
  window.replace(u"n");
  EXPECT_EQ(window.format(1, 2).substr(0, 1), "b");
  window.replace(u"new");
  EXPECT_EQ(box->get_Text(), u"ab");
  window.send(WM_IME_ENDCOMPOSITION);
  EXPECT_EQ(box->get_Text(), u"anewb");
  EXPECT_EQ(box->selection(), (Range{4, 0}));
  window.send(WM_IME_STARTCOMPOSITION);
  window.replace(u"kept");
  box->put_SelText(u"!");
  EXPECT_EQ(box->get_Text(), u"anewkept!b") << "before the host's own";
  window.send(WM_IME_ENDCOMPOSITION);
  box->select({1, 0});
  window.send(WM_IME_STARTCOMPOSITION);
  window.replace(u"n");
  window.send(WM_CHAR, u'x');
  EXPECT_EQ(box->get_Text(), u"anxnewkept!b") << "at the caret, not behind the same letter";
  window.replace(u"");
  box->put_Text(u"anewkept!b");
  window.send(WM_IME_ENDCOMPOSITION);
  EXPECT_EQ(box->get_Text(), u"anewkept!b");
  expect_shown(*box);
}

TEST_F(BoxWindows, ScrollToTheCaret) {
  const auto box = new_box();
  std::u16string lines;
  for (int i = 0; i < 100; ++i) lines += u"line\n";
  box->put_Text(lines);
  const std::size_t end = box->text().size();
  for (const box::Selection selection :
       {box::Selection{0, end}, box::Selection{end, 6}, box::Selection{300, 12},
        box::Selection{12, 300}, box::Selection{end, 300}}) {
    box->put_selection(selection);
    const LONG y = test::point_of(*box, static_cast<std::int32_t>(selection.caret)).y;
    EXPECT_GE(y, 0) << selection.anchor << " to " << selection.caret;
    EXPECT_LT(y, 200) << selection.anchor << " to " << selection.caret;
  }
}

TEST_F(BoxWindows, FollowTheirOwners) {
  const auto box = new_box(nullptr);
  box->put_TextRTF(u"{\\rtf1\\b a\\par\\qc b}");
  box->select({1, 2});
  expect_shown(*box);
  EXPECT_FALSE(IsWindowVisible(window_of(*box)));
  const HWND panel = CreateWindowExW(0, L"STATIC", L"", WS_CHILD | WS_VISIBLE, 0, 0, 200, 200,
                                     form(), nullptr, GetModuleHandleW(nullptr), nullptr);
  box->put_owner(window_handle(panel));
  EXPECT_EQ(GetParent(window_of(*box)), panel);
  EXPECT_TRUE(IsWindowVisible(window_of(*box)));
  DestroyWindow(panel);
  EXPECT_EQ(box->get_Text(), u"a\r\nb");
  box->put_SelText(u"-");
  box->put_owner(window_handle(form()));
  EXPECT_TRUE(IsWindowVisible(window_of(*box)));
  expect_shown(*box);
  box->put_owner(0);
  EXPECT_FALSE(IsWindowVisible(window_of(*box)));
  EXPECT_EQ(Window(*box).text(), u"a-b");
}

TEST_F(BoxWindows, LookAsTheyAreToldTo) {
  const auto box = new_box();
  box->put_TextRTF(u"{\\rtf1\\b bold\\b0 plain}");
  box->select({2, 4});
  const auto style = [&] { return GetWindowLongPtrW(window_of(*box), GWL_STYLE); };
  platform::BoxAppearance appearance = box->appearance();
  EXPECT_EQ(style() & (WS_HSCROLL | WS_VSCROLL | WS_DISABLED), 0);
  appearance.scroll_bars = 3;
  appearance.tab_stop = false;
  appearance.enabled = false;
  appearance.left = 7;
  appearance.back_color = rgb(0, 0, 128);
  SetFocus(window_of(*box));
  box->put_appearance(appearance);
  EXPECT_NE(style() & WS_DISABLED, 0);
  EXPECT_NE(style() & WS_VISIBLE, 0);
  EXPECT_EQ(style() & WS_TABSTOP, 0);
  POINT corner = {0, 0};
  MapWindowPoints(window_of(*box), form(), &corner, 1);
  EXPECT_EQ(corner.x, 7);
  EXPECT_EQ(box->selection(), (Range{2, 4}));
  EXPECT_NE(Window(*box).format(0, 4).find("color 16777215"), std::string::npos)
      << "black text is readable on any background";
  appearance.back_color = system_color(5);
  appearance.visible = false;
  box->put_appearance(appearance);
  EXPECT_EQ(style() & WS_VISIBLE, 0);
  box->put_SelText(u"x");
  EXPECT_EQ(style() & WS_VISIBLE, 0) << "a change does not show the window";
  expect_shown(*box);
}

TEST_F(BoxWindows, FollowTheColorsOfTheSystem) {
  const auto box = new_box();
  const Window window(*box);
  const INT element = COLOR_WINDOW;
  const COLORREF usual = GetSysColor(element);
  const COLORREF black = 0;
  SetSysColors(1, &element, &black);
  window.send(WM_SYSCOLORCHANGE);
  SetSysColors(1, &element, &usual);
  EXPECT_EQ(static_cast<COLORREF>(window.send(EM_SETBKGNDCOLOR, 0, 0)), black);
}

TEST_F(BoxWindows, AreReadableInTheColorsOfTheirHosts) {
  constexpr Color of_windows = system_color(5);
  constexpr Color yellow = rgb(255, 255, 0);
  const COLORREF usual = GetSysColor(COLOR_WINDOW);
  Scheme dark;
  dark.background = RGB(32, 32, 32);
  dark.text = RGB(230, 230, 230);
  Scheme high;
  high.has_high_contrast = true;
  struct Row {
    Scheme scheme;
    Color back = 0;
    COLORREF shown = 0;
    COLORREF plain = 0;
    double contrast = 0;  // of red; 0 where it is shown as it is
  };
  const auto box = new_box();
  box->put_TextRTF(u"{\\rtf1{\\colortbl;\\red255;}plain\\cf1 red}");
  const Window window(*box);
  const auto color = [&](long start, long end) {
    const std::string format = window.format(start, end);
    return static_cast<COLORREF>(std::stol(format.substr(format.find("color ") + 6)));
  };
  for (const Row& row :
       {Row{{}, of_windows, usual, 0, 0}, Row{dark, of_windows, *dark.background, *dark.text, 4.5},
        Row{dark, yellow, RGB(255, 255, 0), 0, 0}, Row{high, yellow, usual, 0, 7},
        Row{{}, of_windows, usual, 0, 0}}) {
    platform::BoxAppearance appearance = box->appearance();
    appearance.back_color = row.back;
    box->put_appearance(appearance);
    BoxWindow::of(window_of(*box))->put_scheme(row.scheme);
    SCOPED_TRACE(row.shown);
    EXPECT_EQ(color(0, 5), row.plain);
    const auto red = static_cast<Color>(color(5, 8));
    if (row.contrast == 0) {
      EXPECT_EQ(red, rgb(255, 0, 0));
    } else {
      EXPECT_GE(contrast(red, static_cast<Color>(row.shown)), row.contrast);
    }
    EXPECT_EQ(static_cast<COLORREF>(window.send(EM_SETBKGNDCOLOR, 0, LPARAM{0})), row.shown);
    EXPECT_EQ(box->get_SelColor(), rgb(255, 0, 0)) << "in the content it stays as it was";
  }
}

TEST_F(BoxWindows, GrowWithTheResolutionOfTheirScreen) {
  const auto box = new_box();
  box->put_Text(u"one\r\ntwo");
  const LONG before = test::point_of(*box, 5).y;
  for (const int times : {2, 1}) {
    const auto dpi = static_cast<WORD>(times * dpi_of_screen());
    SendMessageW(window_of(*box), WM_DPICHANGED, MAKEWPARAM(dpi, dpi), 0);
    EXPECT_NEAR(test::point_of(*box, 5).y, times * before, 2);
    expect_shown(*box);
  }
  SendMessageW(window_of(*box), WM_DPICHANGED, MAKEWPARAM(4 * usual_dpi, 4 * usual_dpi), 0);
  box->put_owner(0);
  box->put_owner(window_handle(form()));
  EXPECT_NEAR(test::point_of(*box, 5).y, before, 2) << "on an owner of the usual resolution";
}

TEST_F(BoxWindows, TellWhatTheyAreToThoseWhoCannotSeeThem) {
  auto box = new_box();
  const HWND window = window_of(*box);
  box->put_Text(u"one\r\ntwo");
  BoxWindow::of(window)->put_name(u"Letter");
  platform::BoxAppearance appearance = box->appearance();
  appearance.read_only = true;
  box->put_appearance(appearance);
  Pointer<IAccessible> object;
  ASSERT_EQ(
      AccessibleObjectFromWindow(window, static_cast<DWORD>(OBJID_CLIENT), __uuidof(IAccessible),
                                 reinterpret_cast<void**>(object.put())),
      S_OK);
  VARIANT self = {};
  self.vt = VT_I4;
  BSTR text = nullptr;
  const auto taken = [&] {
    std::u16string result(utf16(text, SysStringLen(text)));
    SysFreeString(std::exchange(text, nullptr));
    return result;
  };
  EXPECT_EQ(object->get_accName(self, &text), S_OK);
  EXPECT_EQ(taken(), u"Letter");
  EXPECT_EQ(object->get_accValue(self, &text), S_OK);
  EXPECT_EQ(taken(), u"one\r\ntwo");
  VARIANT answer = {};
  EXPECT_EQ(object->get_accRole(self, &answer), S_OK);
  EXPECT_EQ(answer.lVal, ROLE_SYSTEM_TEXT);
  EXPECT_EQ(object->get_accState(self, &answer), S_OK);
  EXPECT_EQ(answer.lVal & (STATE_SYSTEM_READONLY | STATE_SYSTEM_UNAVAILABLE),
            STATE_SYSTEM_READONLY);
  box.reset();
  EXPECT_NE(object->get_accValue(self, &text), S_OK) << "the box is gone";
}

/// A listener lets go of the box while it is called.
TEST_F(BoxWindows, GoWheneverTheyAreLetGo) {
  struct Listener : platform::BoxListener {
    explicit Listener(std::shared_ptr<RichEdit> its, int at) : box(std::move(its)), left(at) {
      box->listen(this);
    }
    void step() {
      if (left-- == 0) box.reset();
    }
    void on_change() override { step(); }
    void on_click() override { step(); }
    void on_double_click() override { step(); }
    void on_key_down(std::int16_t&, std::int16_t&) override { step(); }
    void on_key_press(std::int16_t&) override { step(); }
    void on_key_up(std::int16_t&, std::int16_t&) override { step(); }
    void on_mouse_down(std::int16_t, std::int16_t, float, float) override { step(); }
    void on_mouse_move(std::int16_t, std::int16_t, float, float) override { step(); }
    void on_mouse_up(std::int16_t, std::int16_t, float, float) override { step(); }
    std::shared_ptr<RichEdit> box;
    int left;
  };
  const std::vector<std::pair<UINT, WPARAM>> messages = {{WM_KEYDOWN, VK_RETURN},
                                                         {WM_KEYDOWN, VK_RIGHT},
                                                         {WM_KEYDOWN, VK_BACK},
                                                         {WM_KEYDOWN, VK_TAB},
                                                         {WM_KEYDOWN, VK_ESCAPE},
                                                         {WM_SYSKEYDOWN, VK_F10},
                                                         {WM_CHAR, u'x'},
                                                         {WM_KEYUP, u'X'},
                                                         {WM_LBUTTONDOWN, MK_LBUTTON},
                                                         {WM_MOUSEMOVE, MK_LBUTTON},
                                                         {WM_LBUTTONUP, 0},
                                                         {WM_LBUTTONDBLCLK, MK_LBUTTON},
                                                         {WM_LBUTTONUP, 0},
                                                         {EM_REPLACESEL, 0}};
  for (const auto& [message, parameter] : messages) {
    for (int at = 0; at < 4; ++at) {
      SCOPED_TRACE(std::to_string(message) + " " + std::to_string(at));
      auto made = new_box();
      made->put_Text(u"abc");
      made->select({1, 0});
      const HWND window = window_of(*made);
      Listener listener(std::move(made), at);
      const LPARAM data = message == EM_REPLACESEL ? reinterpret_cast<LPARAM>(L"x") : 0;
      SendMessageW(window, message, parameter, data);
      EXPECT_EQ(IsWindow(window) != 0, listener.box != nullptr);
    }
  }
}

}  // namespace
}  // namespace qel::windows
