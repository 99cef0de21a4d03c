// What the window of a box shows, and what happens to it.

#include <gtest/gtest.h>
#include <windows.h>
// Needs the types of the other.
#include <richedit.h>

#include <functional>
#include <memory>
#include <string>
#include <vector>

#include "BoxInWindow.h"
#include "qel/base/Scan.h"
#include "qel/headless/Shared.h"
#include "qel/platform/Keys.h"
#include "support/Random.h"
#include "support/Text.h"
#include "windows/BoxWindow.h"
#include "windows/Text.h"

namespace qel::windows {
namespace {

using platform::Range;
using platform::RichEdit;
using richtext::Alignment;
using test::window_of;

HWND form() {
  static const HWND window =
      CreateWindowExW(0, L"STATIC", L"Form", WS_OVERLAPPEDWINDOW | WS_VISIBLE | WS_CLIPCHILDREN, 0,
                      0, 600, 400, nullptr, nullptr, GetModuleHandleW(nullptr), nullptr);
  return window;
}

class BoxWindows : public testing::Test {
 protected:
  std::shared_ptr<box::Box> new_box(HWND owner = form()) {
    auto box = BoxWindow::create(owner, clipboard_);
    platform::BoxAppearance appearance = box->appearance();
    appearance.width = 300;
    appearance.height = 200;
    box->put_appearance(appearance);
    return box;
  }

  headless::OwnClipboard clipboard_;
};

/// Asks the window directly, as another program would.
class Window {
 public:
  explicit Window(const RichEdit& box) : window_(window_of(box)) {}

  LRESULT send(UINT message, WPARAM parameter = 0, LPARAM data = 0) const {
    return SendMessageW(window_, message, parameter, data);
  }
  std::u16string text() const {
    std::u16string text(100000, u'\0');
    GETTEXTEX asked = {static_cast<DWORD>(text.size() * 2), GT_DEFAULT, 1200, nullptr, nullptr};
    const LRESULT size =
        send(EM_GETTEXTEX, reinterpret_cast<WPARAM>(&asked), reinterpret_cast<LPARAM>(text.data()));
    return text.substr(0, static_cast<std::size_t>(size));
  }
  void replace(const std::u16string& text) const {
    send(EM_REPLACESEL, FALSE, reinterpret_cast<LPARAM>(wide(text)));
  }
  void select(long start, long end) const {
    CHARRANGE range = {start, end};
    send(EM_EXSETSEL, 0, reinterpret_cast<LPARAM>(&range));
  }
  /// Describes the format of a stretch as the window itself reports it; "mixed" for several
  /// formats.
  std::string format(long start, long end) const {
    select(start, end);
    CHARFORMAT2W format = {};
    format.cbSize = sizeof format;
    send(EM_GETCHARFORMAT, SCF_SELECTION, reinterpret_cast<LPARAM>(&format));
    constexpr DWORD all = CFM_BOLD | CFM_ITALIC | CFM_UNDERLINE | CFM_STRIKEOUT | CFM_SMALLCAPS |
                          CFM_COLOR | CFM_OFFSET | CFM_SIZE | CFM_FACE;
    if ((format.dwMask & all) != all) return "mixed";
    const bool is_automatic = (format.dwEffects & CFE_AUTOCOLOR) != 0;
    const DWORD color = is_automatic ? 0 : format.crTextColor;
    return line((format.dwEffects & CFE_BOLD) != 0, (format.dwEffects & CFE_ITALIC) != 0,
                (format.dwEffects & CFE_UNDERLINE) != 0, (format.dwEffects & CFE_STRIKEOUT) != 0,
                (format.dwEffects & CFE_SMALLCAPS) != 0, static_cast<long>(color), format.yOffset,
                format.yHeight, std::u16string(utf16(format.szFaceName)));
  }
  static std::string line(bool bold, bool italic, bool underline, bool strike, bool capitals,
                          long color, long offset, long twips, const std::u16string& font) {
    return std::string(bold ? "b" : "-") + (italic ? "i" : "-") + (underline ? "u" : "-") +
           (strike ? "s" : "-") + (capitals ? "c" : "-") + " color " + std::to_string(color) +
           " offset " + std::to_string(offset) + " size " + std::to_string(twips) + " " +
           test::shown(font);
  }
  WORD alignment(long at) const {
    select(at, at);
    PARAFORMAT2 format = {};
    format.cbSize = sizeof format;
    send(EM_GETPARAFORMAT, 0, reinterpret_cast<LPARAM>(&format));
    return format.wAlignment;
  }

 private:
  HWND window_;
};

/// Compares everything in the window with the box.
void expect_shown(RichEdit& box) {
  const Window window(box);
  const Range selection = box.selection();
  const std::u16string text = box.get_Text();
  ASSERT_EQ(window.text(), replace_all(text, u"\r\n", u"\r"));
  const auto native = [&](std::int32_t position) {
    const auto before = std::u16string_view(text).substr(0, static_cast<std::size_t>(position));
    return static_cast<long>(position - std::count(before.begin(), before.end(), u'\n'));
  };
  std::vector<platform::FormatRun> runs;
  box.visit_runs(0, [&](const platform::FormatRun& run) {
    const richtext::CharFormat& format = run.format;
    const auto end = run.start + static_cast<std::int32_t>(run.text.size());
    EXPECT_EQ(window.format(native(run.start), native(end)),
              Window::line(format.bold, format.italic, format.underline, format.strike_through,
                           format.small_caps, format.color, format.offset,
                           std::lround(format.size * 20), format.font_name))
        << "from " << run.start << " to " << end;
    return true;
  });
  for (std::size_t start = 0; start != std::u16string::npos;) {
    const auto at = static_cast<std::int32_t>(start);
    constexpr WORD expected[] = {PFA_LEFT, PFA_RIGHT, PFA_CENTER};
    const WORD shown = window.alignment(native(at));
    box.select({at, 0});
    EXPECT_EQ(shown, expected[static_cast<int>(box.alignment().value_or(Alignment::left))])
        << "at " << at;
    start = text.find(u'\n', start);
    if (start != std::u16string::npos) ++start;
  }
  box.select(selection);
}

void edit(RichEdit& box, test::Random& random) {
  const auto size = static_cast<std::uint32_t>(box.get_Text().size());
  box.select({static_cast<std::int32_t>(random.below(size + 1)),
              static_cast<std::int32_t>(random.below(12))});
  switch (random.below(12)) {
    case 0:
      return box.put_SelBold(random.one_in(2));
    case 1:
      return box.put_SelColor(random.one_in(3) ? 0 : 0x2040FF);
    case 2:
      return box.put_SelFontName(random.one_in(2) ? u"Courier New" : u"Arial");
    case 3:
      return box.put_SelFontSize(static_cast<float>(6 + random.below(20)) / 2);
    case 4:
      return box.put_SelCharOffset(static_cast<std::int16_t>(random.below(100)));
    case 5:
      return box.put_alignment(static_cast<Alignment>(random.below(3)));
    case 6:
      return box.put_SelRTF(u"{\\rtf1 x\\par\\pard\\qr{\\i\\scaps y}\\ul z\\par\\pard w}");
    case 7:
    case 8:
      SendMessageW(window_of(box), random.one_in(2) ? UINT{EM_UNDO} : EM_REDO, 0, 0);
      return;
    case 9:
      if (random.one_in(4)) box.put_TextRTF(u"{\\rtf1\\qc\\strike a\\par\\b b\\par\\pard c}");
      return;
    default: {
      const std::u16string text = random.text({u"a", u"\n", u"bcd", u"😀", u"\t"}, random.below(6));
      return random.one_in(2) ? box.put_SelText(text) : Window(box).replace(text);
    }
  }
}

TEST_F(BoxWindows, ShowWhatTheBoxHolds) {
  for (std::uint32_t i = 0; i < 20; ++i) {
    test::Random random(test::base_seed() + i);
    SCOPED_TRACE(random.describe());
    const auto box = new_box();
    for (int n = 0; n < 25; ++n) {
      edit(*box, random);
      SCOPED_TRACE("edit " + std::to_string(n));
      expect_shown(*box);
      if (HasFailure()) return;
    }
  }
}

TEST_F(BoxWindows, FormatLongTextsInTheEnd) {
  const auto box = new_box();
  std::u16string rtf = u"{\\rtf1 ";
  for (int i = 0; i < 400; ++i) rtf += u"plain {\\b bold }{\\i slanted}\\par ";
  box->put_TextRTF(rtf + u"}");
  box->select({4000, 0});
  SendMessageW(window_of(*box), WM_CHAR, u'x', 0);
  box->select({2000, 30});
  box->put_SelColor(255);
  EXPECT_EQ(Window(*box).text().size(), 400U * 19 + 1) << "the text is there at once";
  expect_shown(*box);
}

TEST_F(BoxWindows, KeepPositionsWhateverTheText) {
  const auto box = new_box();
  std::u16string odd = u"a";
  for (const char16_t c : {u'\x01', u'\a', u'\v', u'\f', u'\x1C', char16_t{0x85}, u'\u00A0',
                           u'\u00AD', u'\u200B', u'\u202E', u'\u2028', u'\u2029', u'\uFFF9',
                           u'\uFFFB', u'\uFFFC', u'\uFFFF', char16_t{0xD83D}, u'b'}) {
    odd.push_back(c);
  }
  box->put_Text(odd.substr(0, 5) + u'\0' + odd.substr(5));
  EXPECT_EQ(box->get_Text(), odd) << "but for the NUL";
  EXPECT_EQ(Window(*box).text().size(), odd.size());
  box->select({static_cast<std::int32_t>(odd.size()) - 1, 1});
  Window(*box).replace(u"!");
  EXPECT_EQ(box->get_Text(), odd.substr(0, odd.size() - 1) + u"!");
}

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
