#include "conformance/Story.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <array>
#include <fstream>
#include <map>
#include <optional>
#include <stdexcept>
#include <utility>

#include "qel/base/Scan.h"
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

/// Takes the first word off the text.
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

const std::map<Word, std::int16_t>& named_keys() {
  static const std::map<Word, std::int16_t> keys = {{u"Backspace", keys::backspace_key},
                                                    {u"Delete", keys::delete_key},
                                                    {u"Down", keys::down_key},
                                                    {u"End", keys::end_key},
                                                    {u"Enter", keys::enter_key},
                                                    {u"Escape", keys::escape_key},
                                                    {u"Home", keys::home_key},
                                                    {u"Insert", keys::insert_key},
                                                    {u"Left", keys::left_key},
                                                    {u"Right", keys::right_key},
                                                    {u"Tab", keys::tab_key},
                                                    {u"Up", keys::up_key},
                                                    {u"Grave", keys::grave_accent_key},
                                                    {u"Apostrophe", keys::apostrophe_key}};
  return keys;
}

std::int16_t key_named(Word name) {
  if (const auto key = named_keys().find(name); key != named_keys().end()) return key->second;
  if (name.size() == 1) return static_cast<std::int16_t>(name[0]);
  if (name.starts_with(u"F")) return keys::function_key(std::stoi(to_utf8(name.substr(1))));
  throw std::invalid_argument("no key is called " + to_utf8(name));
}

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

std::string name_of(std::int16_t key_code, std::int16_t shift) {
  std::string name = (shift & keys::ctrl_key) != 0 ? "Ctrl+" : "";
  if ((shift & keys::alt_key) != 0) name += "Alt+";
  if ((shift & keys::shift_key) != 0) name += "Shift+";
  for (const auto& [key, code] : named_keys()) {
    if (code == key_code) return name + to_utf8(key);
  }
  if (key_code >= keys::first_function_key && key_code < keys::first_function_key + 12) {
    return name + "F" + std::to_string(key_code - keys::first_function_key + 1);
  }
  return name + static_cast<char>(key_code);
}

std::string name_of(std::int16_t character) {
  if (character < u' ') return std::to_string(character);
  return to_utf8(std::u16string(1, static_cast<char16_t>(character)));
}

/// Whether it is Shift, Ctrl or Alt alone, which only a real keyboard presses.
bool is_modifier(std::int16_t key_code) { return key_code >= 16 && key_code <= 18; }

/// The host: it writes down what it is told, and may change keys.
class Host : public ControlEvents {
 public:
  void Change() override { log("Change"); }
  void Click() override { log("Click"); }
  void DblClick() override { log("DblClick"); }
  void KeyDown(std::int16_t& KeyCode, std::int16_t& Shift) override {
    if (!is_modifier(KeyCode)) log("Down:" + name_of(KeyCode, Shift));
    if (KeyCode == swallowed_key) KeyCode = 0;
  }
  void KeyPress(std::int16_t& KeyAscii) override {
    log("Press:" + name_of(KeyAscii));
    if (KeyAscii == turned_from) KeyAscii = turned_to;
  }
  void KeyUp(std::int16_t& KeyCode, std::int16_t& Shift) override {
    if (!is_modifier(KeyCode)) log("Up:" + name_of(KeyCode, Shift));
  }
  void MouseDown(std::int16_t Button, std::int16_t, float, float) override {
    log("MouseDown:" + std::to_string(Button));
  }
  void MouseUp(std::int16_t Button, std::int16_t, float, float) override {
    log("MouseUp:" + std::to_string(Button));
  }

  std::string take_log() { return std::exchange(log_, {}); }

  std::int16_t swallowed_key = -1;
  std::int16_t turned_from = -1;
  std::int16_t turned_to = 0;

 private:
  void log(const std::string& event) { log_ += (log_.empty() ? "" : " ") + event; }

  std::string log_;
};

class Player {
 public:
  Player(const Story& story, Stage& stage)
      : story_(story), stage_(stage), form_(stage.window()), control_(form_, stage.platform()) {
    control_.listen(&host_);
    control_.Resize();
  }

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

  platform::RichEdit& box() const { return *control_.CurrentRichTextBox(); }

  /// The row of a table; a name that it does not have is a fault of the story.
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
    if (name == u"editor") {
      editor_lines_.push_back({line.number, std::u16string(rest)});
      if (editor_lines_.size() == 1) stage_.at_editor([this](EditorHand& hand) { edit(hand); });
      return;
    }
    static constexpr std::array commands = {
        Command{u"bag", &Player::read_bag},        Command{u"put", &Player::put_switch},
        Command{u"qel", &Player::put_qel},         Command{u"text", &Player::put_text},
        Command{u"select", &Player::select},       Command{u"keys", &Player::press_keys},
        Command{u"click", &Player::click},         Command{u"doubleclick", &Player::double_click},
        Command{u"sweep", &Player::sweep},         Command{u"copied", &Player::copy_text},
        Command{u"copiedrtf", &Player::copy_rtf},  Command{u"paste", &Player::paste},
        Command{u"swallow", &Player::swallow},     Command{u"turn", &Player::turn},
        Command{u"choose", &Player::choose},       Command{u"ok", &Player::press_ok},
        Command{u"cancel", &Player::press_cancel}, Command{u"close", &Player::close}};
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

  // What a story can look at.

  std::u16string qel() { return control_.get_TextQEL(); }
  std::u16string text() { return control_.get_Text(); }
  std::u16string selected() { return control_.get_SelTextQEL(); }
  std::u16string events() { return wide(host_.take_log()); }
  std::u16string selection() {
    const platform::Range range = box().selection();
    return wide(std::to_string(range.start) + " " + std::to_string(range.length));
  }
  std::u16string clipboard() { return stage_.platform()->clipboard().text().value_or(u""); }
  std::u16string editor() { return hand_ != nullptr && hand_->is_open() ? u"open" : u"closed"; }

  // What the host does.

  void read_bag(Word arguments) {
    control_.ReadProperties(
        headless::PropertyBag(replace_all(std::u16string(arguments), u" ", u"\n")));
    host_.take_log();
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
    (control_.*row_named(switches, name).put)(arguments == u"True");
  }
  void put_qel(Word arguments) { control_.put_TextQEL(unescaped(arguments)); }
  void put_text(Word arguments) { control_.put_Text(unescaped(arguments)); }
  void select(Word arguments) {
    const std::int32_t start = take_number(arguments);
    box().select({start, take_number(arguments)});
  }
  void paste(Word /*arguments*/) { control_.PasteClipboardContents(); }
  void swallow(Word arguments) { host_.swallowed_key = key_named(arguments); }
  void turn(Word arguments) {
    host_.turned_from = static_cast<std::int16_t>(take_word(arguments)[0]);
    host_.turned_to = static_cast<std::int16_t>(arguments.empty() ? u'\0' : arguments[0]);
  }

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
    const bool extends = arguments == u"Shift";
    stage_.click(box(), at, extends ? keys::shift_key : keys::no_modifier);
  }
  void double_click(Word arguments) { stage_.double_click(box(), take_number(arguments)); }
  void sweep(Word arguments) {
    const std::int32_t from = take_number(arguments);
    stage_.sweep(box(), from, take_number(arguments));
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
  test::Form form_;
  QELTextbox control_;
  Host host_;
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
