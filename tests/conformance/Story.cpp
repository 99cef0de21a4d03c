#include "conformance/Story.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <array>
#include <fstream>
#include <functional>
#include <optional>
#include <stdexcept>
#include <utility>

#include "conformance/Host.h"
#include "qel/base/Scan.h"
#include "qel/base/Scoped.h"
#include "qel/base/Utf8.h"
#include "qel/control/QELTextbox.h"
#include "qel/headless/PropertyBag.h"
#include "qel/platform/Keys.h"
#include "support/Form.h"

namespace qel::conformance {
namespace {

using Word = std::u16string_view;

std::u16string wide(std::string_view text) {
  return from_utf8(text, [](std::uint8_t) { return u'?'; });
}

std::u16string unescaped(Word text) {
  std::u16string plain = replace_all(std::u16string(text), u"\\n", u"\r\n");
  return replace_all(replace_all(std::move(plain), u"\\t", u"\t"), u"\\\\", u"\\");
}

/// Removes the first word from the text and returns it.
Word take_word(Word& text) {
  const Word word = text.substr(0, text.find(u' '));
  text.remove_prefix(std::min(word.size() + 1, text.size()));
  return word;
}

std::int32_t take_number(Word& text) { return std::stoi(to_utf8(take_word(text))); }

/// A key with its modifiers, such as "Ctrl+Shift+B".
struct Chord {
  std::int16_t key_code = 0;
  std::int16_t shift = 0;
};

Chord chord_named(Word name) {
  Chord chord;
  for (const auto& [modifier, mask] :
       {std::pair{Word(u"Ctrl+"), keys::ctrl_key}, std::pair{Word(u"Alt+"), keys::alt_key},
        std::pair{Word(u"Shift+"), keys::shift_key}}) {
    if (!name.starts_with(modifier)) continue;
    name.remove_prefix(modifier.size());
    chord.shift = static_cast<std::int16_t>(chord.shift | mask);
  }
  chord.key_code = key_named(name);
  return chord;
}

/// The mask of the modifier that a line ends with, if any.
std::int16_t modifier(Word name) {
  if (name == u"Ctrl") return keys::ctrl_key;
  if (name == u"Shift") return keys::shift_key;
  if (!name.empty()) throw std::invalid_argument("no modifier is called " + to_utf8(name));
  return keys::no_modifier;
}

/// A text box on the stage, and its host.
struct Seat {
  /// `box_top` is the top of the box on the stage's window.
  Seat(Stage& stage, std::int32_t box_top)
      : form(stage.window()), control(form, stage.platform()), top(box_top) {
    control.listen(&host);
    lay_out();
  }

  void lay_out() {
    control.Resize();
    for (const auto& box : control.boxes()) {
      platform::BoxAppearance appearance = box->appearance();
      appearance.top += top;
      box->put_appearance(appearance);
    }
  }

  test::Form form;
  QELTextbox control;
  Host host;
  std::int32_t top;
};

class Player {
 public:
  Player(const Story& story, Stage& stage) : story_(story), stage_(stage), first_(stage, 0) {}

  void play() { perform(story_.lines); }

 private:
  struct Command {
    Word name;
    void (Player::*run)(Word arguments);
  };
  struct Expectation {
    Word name;
    std::u16string (Player::*read)();
  };
  struct Switch {
    Word name;
    void (QELTextbox::*put)(bool);
  };

  void fail(const Story::Line& line, const std::string& message) const {
    ADD_FAILURE_AT(story_.file.c_str(), line.number)
        << story_.title << ": " << to_utf8(line.text) << "\n  " << message;
  }

  QELTextbox& control() const { return seat_->control; }
  Host& host() const { return seat_->host; }
  platform::RichEdit& box() const { return *control().CurrentRichTextBox(); }
  /// The text box below the first.
  Seat& other() {
    constexpr std::int32_t top = 60;
    if (!other_) other_.emplace(stage_, top);
    return *other_;
  }

  /// The row of that name in a table; a name that is missing there is a fault of the story.
  template <class Rows>
  static const auto& row_named(const Rows& rows, Word name) {
    const auto row = std::find_if(rows.begin(), rows.end(),
                                  [name](const auto& candidate) { return candidate.name == name; });
    if (row == rows.end()) throw std::invalid_argument("nothing is called " + to_utf8(name));
    return *row;
  }

  void perform(const std::vector<Story::Line>& lines) {
    for (const Story::Line& line : lines) {
      try {
        perform(line);
      } catch (const std::exception& error) {
        fail(line, error.what());
      }
    }
  }

  void perform(const Story::Line& line) {
    Word rest = line.text;
    const Word name = take_word(rest);
    if (name == u"=") return expect(line, rest);
    if (name == u"other") {
      const Scoped at_other(seat_, &other());
      return perform({line.number, std::u16string(rest)});
    }
    if (name == u"editor") {
      editor_lines_.push_back({line.number, std::u16string(rest)});
      if (editor_lines_.size() == 1) stage_.at_editor([this](EditorHand& hand) { edit(hand); });
      return;
    }
    static constexpr std::array commands = {
        Command{u"bag", &Player::read_bag},     Command{u"put", &Player::put_switch},
        Command{u"qel", &Player::put_qel},      Command{u"text", &Player::put_text},
        Command{u"select", &Player::select},    Command{u"keys", &Player::press_keys},
        Command{u"click", &Player::click},      Command{u"doubleclick", &Player::double_click},
        Command{u"sweep", &Player::sweep},      Command{u"drag", &Player::drag},
        Command{u"oledrag", &Player::ole_drag}, Command{u"allow", &Player::allow},
        Command{u"want", &Player::want},        Command{u"promise", &Player::promise},
        Command{u"copied", &Player::copy_text}, Command{u"copiedrtf", &Player::copy_rtf},
        Command{u"paste", &Player::paste},      Command{u"swallow", &Player::swallow},
        Command{u"turn", &Player::turn},        Command{u"choose", &Player::choose},
        Command{u"ok", &Player::press_ok},      Command{u"cancel", &Player::press_cancel},
        Command{u"close", &Player::close}};
    (this->*row_named(commands, name).run)(rest);
  }

  void expect(const Story::Line& line, Word rest) {
    static constexpr std::array expectations = {Expectation{u"qel", &Player::qel},
                                                Expectation{u"text", &Player::text},
                                                Expectation{u"selection", &Player::selection},
                                                Expectation{u"events", &Player::events},
                                                Expectation{u"selected", &Player::selected},
                                                Expectation{u"clipboard", &Player::clipboard},
                                                Expectation{u"editor", &Player::editor}};
    const Word name = take_word(rest);
    const std::u16string found = (this->*row_named(expectations, name).read)();
    if (found != unescaped(rest)) fail(line, "it is " + to_utf8(found));
  }

  // What a story can check.

  std::u16string qel() { return control().get_TextQEL(); }
  std::u16string text() { return control().get_Text(); }
  std::u16string selected() { return control().get_SelTextQEL(); }
  std::u16string events() { return wide(host().take_log()); }
  std::u16string selection() {
    const platform::Range range = box().selection();
    return wide(std::to_string(range.start) + " " + std::to_string(range.length));
  }
  std::u16string clipboard() { return stage_.platform()->clipboard().text().value_or(u""); }
  std::u16string editor() { return hand_ != nullptr && hand_->is_open() ? u"open" : u"closed"; }

  // What the host does.

  void read_bag(Word arguments) {
    control().ReadProperties(
        headless::PropertyBag(replace_all(std::u16string(arguments), u" ", u"\n")));
    seat_->lay_out();
    host().take_log();
  }
  void put_switch(Word arguments) {
    static constexpr std::array switches = {
        Switch{u"AllowEdits", &QELTextbox::put_AllowEdits},
        Switch{u"Enabled", &QELTextbox::put_Enabled},
        Switch{u"Multiline", &QELTextbox::put_Multiline},
        Switch{u"PasteTextOnly", &QELTextbox::put_PasteTextOnly},
        Switch{u"RevealCodes", &QELTextbox::put_RevealCodes},
        Switch{u"SelBold", &QELTextbox::put_SelBold},
        Switch{u"SelHide", &QELTextbox::put_SelHide}};
    const Word name = take_word(arguments);
    (control().*row_named(switches, name).put)(arguments == u"True");
  }
  void put_qel(Word arguments) { control().put_TextQEL(unescaped(arguments)); }
  void put_text(Word arguments) { control().put_Text(unescaped(arguments)); }
  void select(Word arguments) {
    const std::int32_t start = take_number(arguments);
    box().select({start, take_number(arguments)});
  }
  void paste(Word /*arguments*/) { control().PasteClipboardContents(); }
  void swallow(Word arguments) { host().swallowed_key = key_named(arguments); }
  void turn(Word arguments) {
    host().turned_from = static_cast<std::int16_t>(take_word(arguments)[0]);
    host().turned_to = static_cast<std::int16_t>(arguments.empty() ? u'\0' : arguments[0]);
  }
  void allow(Word arguments) { host().allowed_effects = take_number(arguments); }
  void want(Word arguments) {
    host().wanted_over = take_number(arguments);
    host().wanted_drop = arguments.empty() ? host().wanted_over : take_number(arguments);
  }
  void promise(Word arguments) { host().promised_rtf = arguments; }

  // What the user does.

  void press_keys(Word arguments) {
    while (!arguments.empty()) {
      if (arguments[0] == u'"') {
        const std::size_t end = arguments.find(u'"', 1);
        const std::u16string typed(arguments.substr(1, end - 1));
        stage_.type(box(), replace_all(replace_all(typed, u"\\n", u"\n"), u"\\q", u"\""));
        arguments.remove_prefix(std::min(end + 2, arguments.size()));
        continue;
      }
      Word name = take_word(arguments);
      const std::size_t star = name.find(u'*');
      const int times = star == Word::npos ? 1 : std::stoi(to_utf8(name.substr(star + 1)));
      const Chord chord = chord_named(name.substr(0, star));
      for (int i = 0; i < times; ++i) stage_.press(box(), chord.key_code, chord.shift);
    }
  }
  void click(Word arguments) {
    const std::int32_t at = take_number(arguments);
    stage_.click(box(), at, modifier(arguments));
  }
  void double_click(Word arguments) { stage_.double_click(box(), take_number(arguments)); }
  void sweep(Word arguments) {
    const std::int32_t from = take_number(arguments);
    const std::int32_t to = take_number(arguments);
    stage_.sweep(box(), from, to, modifier(arguments));
  }
  void drag(Word arguments) { drag(arguments, nullptr); }
  void ole_drag(Word arguments) {
    drag(arguments, [this] { control().OLEDrag(); });
  }
  void drag(Word arguments, const std::function<void()>& start) {
    const bool is_far = arguments.starts_with(u"other");
    if (is_far) take_word(arguments);
    QELTextbox& target = is_far ? other().control : control();
    const std::int32_t to = take_number(arguments);
    const bool drops = arguments != u"away";
    const std::int16_t shift = modifier(drops ? arguments : Word());
    stage_.drag(box(), {*target.CurrentRichTextBox(), to, shift, drops}, start);
  }
  void copy_text(Word arguments) { stage_.copy_text(unescaped(arguments)); }
  void copy_rtf(Word arguments) { stage_.copy_rtf(u"(plain)", arguments); }

  // In the large editor.

  void edit(EditorHand& hand) {
    hand_ = &hand;
    perform(std::exchange(editor_lines_, {}));
    hand_ = nullptr;
  }
  EditorHand& hand() const {
    if (hand_ == nullptr) throw std::logic_error("no editor is open");
    return *hand_;
  }
  void choose(Word arguments) { hand().choose(arguments); }
  void press_ok(Word /*arguments*/) { hand().press_ok(); }
  void press_cancel(Word /*arguments*/) { hand().press_cancel(); }
  void close(Word /*arguments*/) { hand().close_by_frame(); }

  const Story& story_;
  Stage& stage_;
  Seat first_;
  std::optional<Seat> other_;
  Seat* seat_ = &first_;
  EditorHand* hand_ = nullptr;
  std::vector<Story::Line> editor_lines_;
};

}  // namespace

std::vector<Story> read_stories(const std::string& file) {
  std::ifstream stream(file);
  std::vector<Story> stories;
  int number = 0;
  for (std::string line; std::getline(stream, line);) {
    ++number;
    if (line.starts_with("## ")) {
      stories.push_back({file, line.substr(3), {}});
    } else if (line.starts_with("    ") && !stories.empty()) {
      stories.back().lines.push_back({number, wide(line.substr(4))});
    }
  }
  return stories;
}

void play(const Story& story, Stage& stage) { Player(story, stage).play(); }

}  // namespace qel::conformance
