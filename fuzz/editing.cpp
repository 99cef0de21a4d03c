// A user at a text box: the box stays whole whatever happens, and undo brings back what was there.

#include <algorithm>
#include <array>
#include <cstddef>
#include <cstdint>
#include <memory>
#include <string>

#include "Input.h"
#include "qel/control/QELTextbox.h"
#include "qel/headless/BoxUser.h"
#include "qel/headless/ControlSite.h"
#include "qel/headless/HeadlessPlatform.h"
#include "qel/headless/PropertyBag.h"
#include "qel/platform/Keys.h"

namespace {

using namespace qel::keys;
using qel::fuzz::Input;
using qel::fuzz::require;
using qel::headless::BoxUser;
using qel::headless::BoxView;

struct Chord {
  std::int16_t key_code;
  std::int16_t shift;
};

/// What the bytes below a blank press.
constexpr std::array chords = {Chord{left_key, 0},
                               Chord{right_key, 0},
                               Chord{left_key, shift_key},
                               Chord{right_key, ctrl_shift},
                               Chord{up_key, shift_key},
                               Chord{down_key, 0},
                               Chord{home_key, 0},
                               Chord{end_key, shift_key},
                               Chord{backspace_key, 0},
                               Chord{delete_key, 0},
                               Chord{enter_key, 0},
                               Chord{backspace_key, ctrl_key},
                               Chord{delete_key, ctrl_key},
                               Chord{letter_key('A'), ctrl_key},
                               Chord{letter_key('B'), ctrl_key},
                               Chord{letter_key('I'), ctrl_key},
                               Chord{letter_key('P'), ctrl_shift},
                               Chord{letter_key('B'), ctrl_shift},
                               Chord{letter_key('X'), ctrl_key},
                               Chord{letter_key('C'), ctrl_key},
                               Chord{letter_key('V'), ctrl_key},
                               Chord{insert_key, shift_key},
                               Chord{letter_key('Z'), ctrl_key},
                               Chord{letter_key('Y'), ctrl_key},
                               Chord{function_key(1), alt_key},
                               Chord{function_key(3), ctrl_key},
                               Chord{function_key(10), alt_key},
                               Chord{home_key, ctrl_shift}};

/// Whether runs, text and selection fit together, and breaks are whole.
void check_box(const qel::box::Box& box) {
  const std::u16string& text = box.text();
  std::u16string runs;
  box.visit_runs(0, [&](const qel::platform::FormatRun& run) {
    require(run.start == static_cast<std::int32_t>(runs.size()), "runs follow one another");
    runs.append(run.text);
    return true;
  });
  require(runs == text, "the runs are the text");
  for (std::size_t i = 0; i < text.size(); ++i) {
    const bool is_whole = text[i] == u'\r' ? text.substr(i + 1, 1) == u"\n"
                                           : text[i] != u'\n' || (i > 0 && text[i - 1] == u'\r');
    require(is_whole, "a break is whole");
  }
  const auto [start, length] = box.selection();
  require(start >= 0 && length >= 0 && static_cast<std::size_t>(start + length) <= text.size(),
          "the selection is in the text");
}

void edit(qel::QELTextbox& control, BoxUser& user, std::string_view bytes) {
  for (std::size_t i = 0; i < bytes.size(); ++i) {
    const auto byte = static_cast<std::uint8_t>(bytes[i]);
    if (byte < chords.size()) {
      user.press(chords[byte].key_code, chords[byte].shift);
    } else if (byte < 0x80) {
      const auto character = static_cast<char16_t>(byte);
      user.type({&character, 1});
    } else if (byte < 0xC0) {
      user.click(static_cast<float>(byte & 0x0FU) * BoxView::character_width,
                 static_cast<float>(byte & 0x30U), i % 2 == 0 ? shift_key : no_modifier);
    } else {
      // A piece of the input itself, in markup.
      const std::string_view piece = bytes.substr(i + 1, byte & 0x1FU);
      control.put_SelRTF(control.QELToRTF(std::u16string(piece.begin(), piece.end())));
    }
  }
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  constexpr std::size_t enough = 400;
  const Input input(data, std::min(size, enough));
  qel::headless::ControlSite form;
  const auto platform = std::make_shared<qel::headless::HeadlessPlatform>();
  qel::QELTextbox control(form, platform);
  control.ReadProperties(qel::headless::PropertyBag(
      input.number(0, 0, 1) == 0 ? u"Multiline=1\nSmartQuotes=True\nRecognizeCRLF=True" : u""));
  control.put_TextQEL(input.text().substr(0, 30));
  platform->clipboard().put(u"a\r\nb", std::u16string(u"{\\rtf1 ") + input.text() + u"}");

  qel::box::Box& box = BoxView::of(*control.CurrentRichTextBox()).box();
  const std::u16string original = box.get_TextRTF();
  BoxUser user(box);
  edit(control, user, input.bytes());
  check_box(box);
  const std::u16string edited = box.get_TextRTF();
  std::size_t steps = 0;
  for (; box.can_undo(); ++steps) box.undo();
  check_box(box);
  if (box.text().size() > 0) require(box.get_TextRTF() == original, "all is taken back");
  for (; steps > 0; --steps) {
    require(box.can_redo(), "what was taken back can be made again");
    box.redo();
  }
  if (box.text().size() > 0) require(box.get_TextRTF() == edited, "all is made again");
  const std::u16string markup = control.get_TextQEL();
  control.put_TextQEL(markup);
  check_box(box);
  return 0;
}
