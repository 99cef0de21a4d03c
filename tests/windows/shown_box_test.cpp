// That the window of a box shows what the box holds, whatever happens to it.

#include <gtest/gtest.h>
#include <windows.h>
// Needs the types of the other.
#include <richedit.h>

#include <string>
#include <vector>

#include "BoxInWindow.h"
#include "ShownBox.h"
#include "support/Random.h"

namespace qel::windows {
namespace {

using platform::RichEdit;
using richtext::Alignment;
using test::expect_shown;
using test::Window;
using test::window_of;

using ShownBoxes = test::BoxesInWindows;

/// More runs than the window gets one by one, some in formats that it does not read from RTF, with
/// characters that have a meaning there.
std::u16string many_runs(test::Random& random) {
  std::u16string rtf =
      u"{\\rtf1\\ansi\\deff0{\\fonttbl{\\f0 Arial;}{\\f1 Courier New;}{\\f2 K\\'f6ln;}}"
      u"{\\colortbl;\\red9\\green8\\blue7;}\\f0\\fs16 ";
  const std::vector<std::u16string_view> formats = {
      u"\\b",    u"\\i",    u"\\ul", u"\\strike", u"\\scaps", u"\\up6", u"\\dn4",
      u"\\fs17", u"\\fs40", u"\\f1", u"\\f2",     u"\\cf1",   u"\\qc",  u"\\qr"};
  const std::vector<std::u16string_view> pieces = {
      u"a",        u"one two ", u"\\par ",    u"\\tab ",   u"\\line ",    u"\\\\",
      u"\\{x\\}",  u"\\'e4",    u"\\bullet ", u"\\u1488?", u"\\~",        u"\\-",
      u"\\u8232?", u"\\u-5?",   u"\\u173?",   u"\\u8203?", u"\\u-10179?", u"\\u-10179?\\u-8704?"};
  for (std::size_t left = 12 + random.below(30); left > 0; --left) {
    rtf += u"{" + random.text(formats, random.below(3)) + u" " + random.text(pieces, 3) + u"}";
  }
  return rtf + u"}";
}

void edit(RichEdit& box, test::Random& random) {
  const auto size = static_cast<std::uint32_t>(box.get_Text().size());
  box.select({static_cast<std::int32_t>(random.below(size + 1)),
              static_cast<std::int32_t>(random.below(random.one_in(3) ? size + 1 : 12))});
  switch (random.below(14)) {
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
    case 10:
      return box.put_SelRTF(many_runs(random));
    case 11:
      return random.one_in(3) ? box.put_TextRTF(many_runs(random)) : box.put_SelItalic(true);
    default: {
      const std::u16string text = random.text({u"a", u"\n", u"bcd", u"😀", u"\t"}, random.below(6));
      return random.one_in(2) ? box.put_SelText(text) : Window(box).replace(text);
    }
  }
}

TEST_F(ShownBoxes, ShowWhatTheBoxHolds) {
  for (std::uint32_t i = 0; i < 12; ++i) {
    test::Random random(test::base_seed() + i);
    SCOPED_TRACE(random.describe());
    const auto box = new_box();
    platform::BoxAppearance appearance = box->appearance();
    appearance.font_size = random.one_in(2) ? 8.25F : 10;
    box->put_appearance(appearance);
    for (int n = 0; n < 25; ++n) {
      edit(*box, random);
      SCOPED_TRACE("edit " + std::to_string(n));
      expect_shown(*box);
      if (HasFailure()) return;
    }
  }
}

TEST_F(ShownBoxes, FormatLongTextsAtOnce) {
  const auto box = new_box();
  std::u16string rtf = u"{\\rtf1 ";
  for (int i = 0; i < 400; ++i) rtf += u"plain {\\b bold }{\\i slanted}\\par ";
  box->put_TextRTF(rtf + u"}");
  const HWND window = window_of(*box);
  const auto of_class = reinterpret_cast<WNDPROC>(GetClassLongPtrW(window, GCLP_WNDPROC));
  CHARFORMAT2W last = {};
  last.cbSize = sizeof last;
  CallWindowProcW(of_class, window, EM_SETSEL, 400 * 19 - 3, 400 * 19 - 2);
  CallWindowProcW(of_class, window, EM_GETCHARFORMAT, SCF_SELECTION,
                  reinterpret_cast<LPARAM>(&last));
  EXPECT_NE(last.dwEffects & CFE_ITALIC, 0U) << "the formats are there before anyone asks";
  box->select({4000, 0});
  SendMessageW(window, WM_CHAR, u'x', 0);
  box->select({2000, 30});
  box->put_SelColor(255);
  EXPECT_EQ(Window(*box).text().size(), 400U * 19 + 1) << "the text is there at once";
  expect_shown(*box);
}

/// The window reads all of the text again where many of its formats change.
TEST_F(ShownBoxes, KeepTheirPlaceInLongTexts) {
  const auto box = new_box();
  std::u16string rtf = u"{\\rtf1 ";
  for (int i = 0; i < 100; ++i) rtf += u"plain {\\b bold }{\\up6 raised}\\par ";
  box->put_TextRTF(rtf + u"}");
  box->select({4, 2});
  box->put_SelText(u"y");
  box->select({1000, 30});
  const Window window(*box);
  platform::BoxAppearance appearance = box->appearance();
  appearance.font_name = u"Courier New";
  for (const bool read_only : {false, true}) {
    appearance.read_only = read_only;
    appearance.font_size += 1;
    POINT middle = {0, 300};
    window.send(EM_SETSCROLLPOS, 0, reinterpret_cast<LPARAM>(&middle));
    box->put_appearance(appearance);
    POINT scrolled = {0, 0};
    window.send(EM_GETSCROLLPOS, 0, reinterpret_cast<LPARAM>(&scrolled));
    EXPECT_EQ(scrolled.y, middle.y);
    EXPECT_EQ(box->selection(), (platform::Range{1000, 30}));
    expect_shown(*box);
  }
  EXPECT_NE(window.send(EM_GETOPTIONS) & ECO_READONLY, 0);
}

TEST_F(ShownBoxes, PaintNoMoreThanTheText) {
  const auto box = new_box();
  box->put_TextRTF(u"{\\rtf1 one\\par two\\par three\\par\\b four}");
  box->select({6, 0});
  const HWND window = window_of(*box);
  for (const WPARAM key : {WPARAM{'x'}, WPARAM{VK_BACK}, WPARAM{VK_RETURN}}) {
    ValidateRect(window, nullptr);
    SendMessageW(window, WM_CHAR, key, 0);
    RECT painted = {};
    GetUpdateRect(window, &painted, FALSE);
    EXPECT_GT(painted.bottom, painted.top) << key;
    EXPECT_LT(painted.bottom, 150) << key << ": not all of the window, which is 200 high";
  }
  expect_shown(*box);
}

TEST_F(ShownBoxes, KeepPositionsWhateverTheText) {
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

}  // namespace
}  // namespace qel::windows
