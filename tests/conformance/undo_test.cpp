#include <gtest/gtest.h>

#include <algorithm>
#include <memory>
#include <string>
#include <vector>

#include "conformance/Stage.h"
#include "qel/platform/Keys.h"
#include "support/Random.h"
#include "support/Text.h"

namespace qel::conformance {
namespace {

using platform::Range;
using platform::RichEdit;

/// The simplest possible box: characters with three attributes. A break is one entry.
class Model {
 public:
  struct Character {
    std::u16string text;
    bool bold = false;
    bool small_caps = false;
    Color color = 0;
  };

  explicit Model(std::u16string_view text) { characters_ = plain(text, {}); }

  void append_bold(std::u16string_view text) {
    for (const Character& c : plain(text, {{}, true})) characters_.push_back(c);
  }

  /// The entries that a selection in the box covers.
  std::pair<std::size_t, std::size_t> entries(Range range) const {
    const auto start = static_cast<std::size_t>(range.start);
    const std::size_t end = start + static_cast<std::size_t>(range.length);
    std::size_t first = 0;
    std::size_t position = 0;
    while (first < characters_.size() && position + characters_[first].text.size() <= start) {
      position += characters_[first++].text.size();
    }
    std::size_t last = first;
    while (range.length != 0 && last < characters_.size() && position < end) {
      position += characters_[last++].text.size();
    }
    return {first, last};
  }

  void put(Range range, std::u16string_view text) {
    const auto [first, last] = entries(range);
    if (!characters_.empty()) {
      format_ = characters_[first != last ? first : std::max<std::size_t>(first, 1) - 1];
    }
    std::vector<Character> added = plain(text, format_);
    const auto begin = characters_.begin();
    const auto at = characters_.erase(begin + static_cast<std::ptrdiff_t>(first),
                                      begin + static_cast<std::ptrdiff_t>(last));
    characters_.insert(at, added.begin(), added.end());
  }

  template <class Change>
  void format(Range range, Change change) {
    const auto [first, last] = entries(range);
    for (std::size_t i = first; i < last; ++i) change(characters_[i]);
  }

  std::string shown() const {
    std::string shown;
    for (const Character& c : characters_) shown += describe(c.text, c);
    return shown;
  }

  static std::string shown(const RichEdit& box) {
    std::string shown;
    box.visit_runs(0, [&](const platform::FormatRun& run) {
      for (std::size_t at = 0; at < run.text.size(); ++at) {
        const std::size_t length = run.text.substr(at, 2) == u"\r\n" ? 2 : 1;
        shown += describe(run.text.substr(at, length), run.format);
        at += length - 1;
      }
      return true;
    });
    return shown;
  }

 private:
  static std::vector<Character> plain(std::u16string_view text, const Character& format) {
    std::vector<Character> characters;
    for (const char16_t c : text) {
      characters.push_back({c == u'\n' ? u"\r\n" : std::u16string(1, c), format.bold,
                            format.small_caps, format.color});
    }
    return characters;
  }
  template <class Format>
  static std::string describe(std::u16string_view text, const Format& format) {
    return test::shown(text) + (format.bold ? "+" : "") + (format.small_caps ? "s" : "") +
           (format.color != 0 ? "c" : "") + " ";
  }

  std::vector<Character> characters_;
  Character format_;  // of what was last typed or erased: an empty text keeps it
};

/// Makes one edit of the box and of the model. Whether it is a step that can be undone.
bool edit(RichEdit& box, Model& model, Stage& stage, test::Random& random) {
  const auto size = static_cast<std::size_t>(box.get_Text().size());
  const auto start = static_cast<std::int32_t>(random.below(size + 1));
  const auto length = static_cast<std::int32_t>(random.below(6));
  // A caret that comes from elsewhere takes the format before it.
  box.select({start == 0 ? static_cast<std::int32_t>(size) : 0, 0});
  box.select({start, length});
  const Range range = box.selection();
  const std::size_t kind = random.below(6);
  // The model does not have a format for text to be typed.
  if (range.length == 0 && kind < 3) return false;
  switch (kind) {
    case 0: {
      const bool bold = random.one_in(2);
      const bool is_new = box.get_SelBold() != bold;
      box.put_SelBold(bold);
      model.format(range, [bold](auto& c) { c.bold = bold; });
      return is_new;
    }
    case 1: {
      const bool is_new = box.get_SelColor() != 255;
      box.put_SelColor(255);
      model.format(range, [](auto& c) { c.color = 255; });
      return is_new;
    }
    case 2: {
      const bool small_caps = random.one_in(2);
      const bool is_new = box.get_SelSmallCaps() != small_caps;
      box.put_SelSmallCaps(small_caps);
      model.format(range, [small_caps](auto& c) { c.small_caps = small_caps; });
      return is_new;
    }
    case 3: {
      const std::u16string text = random.text({u"a", u"\n", u"bc"}, random.below(4));
      box.put_SelText(text);
      model.put(range, text);
      return range.length != 0 || !text.empty();
    }
    case 4:
      stage.type(box, u"xy");
      model.put(range, u"xy");
      return true;
    default:
      if (range.length == 0) return false;
      stage.press(box, keys::delete_key, keys::no_modifier);
      model.put(range, u"");
      return true;
  }
}

bool align(RichEdit& box) {
  const bool is_new = box.alignment() != richtext::Alignment::right;
  box.put_alignment(richtext::Alignment::right);
  return is_new;
}

TEST(Undo, TakesBackStepByStepWhatWasEdited) {
  for (std::uint32_t i = 0; i < 60; ++i) {
    test::Random random(test::base_seed() + i);
    SCOPED_TRACE(random.describe());
    const std::unique_ptr<Stage> stage = make_stage();
    const std::shared_ptr<RichEdit> box = stage->platform()->create_rich_edit(stage->window());
    box->put_TextRTF(u"{\\rtf1 one\\par\\pard\\qc two\\par\\pard\\b three}");
    Model model(u"one\ntwo\n");
    model.append_bold(u"three");
    std::vector<std::u16string> states = {box->get_TextRTF()};
    for (int n = 0; n < 30; ++n) {
      if (edit(*box, model, *stage, random)) states.push_back(box->get_TextRTF());
      ASSERT_EQ(Model::shown(*box), model.shown()) << "edit " << n;
      if (random.one_in(5) && align(*box)) states.push_back(box->get_TextRTF());
    }
    for (std::size_t step = states.size() - 1; step > 0; --step) {
      stage->press(*box, 'Z', keys::ctrl_key);
      ASSERT_EQ(box->get_TextRTF(), states[step - 1]) << "before step " << step;
    }
    stage->press(*box, 'Z', keys::ctrl_key);
    EXPECT_EQ(box->get_TextRTF(), states.front()) << "there is no more";
    for (std::size_t step = 1; step < states.size(); ++step) {
      stage->press(*box, 'Y', keys::ctrl_key);
      ASSERT_EQ(box->get_TextRTF(), states[step]) << "step " << step;
    }
  }
}

}  // namespace
}  // namespace qel::conformance
