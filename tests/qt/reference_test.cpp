// The box in a window against the box in memory, which is the reference for what a box does.

#include <gtest/gtest.h>

#include <array>
#include <limits>
#include <string>

#include "qel/headless/RichEdit.h"
#include "qt/platform/RichEdit.h"
#include "support/Random.h"
#include "support/Text.h"

namespace qel::qt {
namespace {

using platform::Scope;
using richtext::Alignment;

class CountingListener : public platform::BoxListener {
 public:
  void on_change() override { ++changes; }
  int changes = 0;
};

std::u16string runs_from(const platform::RichEdit& box, std::int32_t from) {
  std::u16string runs;
  box.visit_runs(from, [&](const platform::FormatRun& run) {
    runs.append(1, static_cast<char16_t>(u'0' + run.start)).append(u"<").append(run.text);
    runs.append(u">").append(run.format.font_name).append(run.format.bold ? u"+" : u"-");
    runs.append(1, static_cast<char16_t>(u'A' + run.format.offset % 26));
    return true;
  });
  return runs;
}

std::string shown(const richtext::FormatFields& format) {
  const auto flag = [](const std::optional<bool>& value) {
    return value ? (*value ? "1" : "0") : "?";
  };
  return std::string(flag(format.bold)) + flag(format.italic) + flag(format.underline) +
         flag(format.strike_through) + " offset " + std::to_string(format.offset.value_or(-1)) +
         " color " + std::to_string(format.color.value_or(-1)) + " size " +
         std::to_string(format.size.value_or(-1)) + " " +
         test::shown(format.font_name.value_or(u"?"));
}

/// Two boxes to which the same is done.
class BothBoxes {
 public:
  BothBoxes() {
    reference.listen(&reference_listener);
    box.listen(&listener);
  }

  template <class Action>
  void act(Action action) {
    action(static_cast<platform::RichEdit&>(reference));
    action(static_cast<platform::RichEdit&>(box));
  }

  void compare(std::int32_t position) const {
    EXPECT_EQ(test::shown(box.get_Text()), test::shown(reference.get_Text()));
    EXPECT_EQ(test::shown(box.get_SelText()), test::shown(reference.get_SelText()));
    EXPECT_EQ(test::shown(box.get_TextRTF()), test::shown(reference.get_TextRTF()));
    EXPECT_EQ(test::shown(box.get_SelRTF()), test::shown(reference.get_SelRTF()));
    EXPECT_EQ(shown(box.format()), shown(reference.format()));
    EXPECT_EQ(box.get_SelLength(), static_cast<std::int32_t>(box.get_SelText().size()));
    EXPECT_EQ(box.alignment(), reference.alignment());
    EXPECT_EQ(test::shown(runs_from(box, position)), test::shown(runs_from(reference, position)));
    EXPECT_EQ(listener.changes, reference_listener.changes);
  }

  CountingListener reference_listener;
  CountingListener listener;
  headless::RichEdit reference;
  RichEdit box{nullptr};
};

/// A step that anybody who holds a box could take.
void act_at_random(BothBoxes& boxes, test::Random& random) {
  static const std::array<std::u16string, 8> texts = {
      u"",          u"word",           u"two\r\nlines", u"\n",
      u"a\rb\n\nc", u" \u00A0\u2028x", u"\t\U0001F600", u"\u05E9\u05DC"};
  static const std::array<std::u16string, 6> documents = {
      u"{\\rtf1 plain}",
      u"{\\rtf1\\qc one\\par\\pard\\qr two\\par\\pard three}",
      u"{\\rtf1{\\fonttbl{\\f0 Verdana;}{\\f1 Symbol;}}{\\colortbl;\\red1\\green2\\blue3;}"
      u"\\f1\\b\\cf1 x\\up4 y\\dn9 z\\par\\par}",
      u"{\\rtf1\\fs30\\i\\ul\\strike big\\par}",
      u"{\\rtf1}",
      u"not RTF"};
  const auto any = [&](const auto& items) { return items[random.below(items.size())]; };
  const auto number = [&](int below) {
    return static_cast<std::int32_t>(random.below(static_cast<std::size_t>(below))) - 2;
  };
  const Scope scope = random.below(4) == 0 ? Scope::document : Scope::selection;
  switch (random.below(7)) {
    case 0: {
      const std::u16string text = any(texts);
      boxes.act([&](platform::RichEdit& box) { box.put_text(scope, text); });
      break;
    }
    case 1: {
      const std::u16string rtf = any(documents);
      boxes.act([&](platform::RichEdit& box) { box.put_rtf(scope, rtf); });
      break;
    }
    case 2:
    case 3: {
      const platform::Range range = {number(24), number(12)};
      boxes.act([&](platform::RichEdit& box) { box.select(range); });
      break;
    }
    case 4: {
      richtext::FormatChange change;
      if (random.below(2) == 0) change.bold = random.below(2) == 0;
      if (random.below(3) == 0) change.underline = random.below(2) == 0;
      if (random.below(3) == 0) change.offset = static_cast<std::int16_t>(45 * number(5));
      if (random.below(3) == 0) change.color = number(4) * 0x1234 + 0x3000;
      if (random.below(3) == 0) change.font_name = random.below(2) == 0 ? u"Verdana" : u"Nowhere";
      if (random.below(3) == 0) change.size = static_cast<float>(number(20));
      boxes.act([&](platform::RichEdit& box) { box.change_format(change); });
      break;
    }
    case 5: {
      const auto alignment = static_cast<Alignment>(random.below(3));
      boxes.act([&](platform::RichEdit& box) { box.put_alignment(alignment); });
      break;
    }
    default: {
      platform::BoxAppearance appearance = boxes.box.appearance();
      appearance.font_name = random.below(2) == 0 ? u"Arial" : u"Courier";
      appearance.multiline = random.below(2) == 0;
      appearance.read_only = random.below(2) == 0;
      boxes.act([&](platform::RichEdit& box) { box.put_appearance(appearance); });
    }
  }
}

TEST(QtBox, DoesWhatTheBoxInMemoryDoes) {
  for (std::uint32_t round = 0; round < 400 && !testing::Test::HasFailure(); ++round) {
    test::Random random(test::base_seed() + round);
    SCOPED_TRACE(random.describe());
    BothBoxes boxes;
    for (int step = 0; step < 12 && !testing::Test::HasFailure(); ++step) {
      SCOPED_TRACE(step);
      act_at_random(boxes, random);
      boxes.compare(static_cast<std::int32_t>(random.below(12)));
    }
  }
}

}  // namespace
}  // namespace qel::qt
