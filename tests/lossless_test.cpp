#include <gtest/gtest.h>

#include <algorithm>
#include <cstdlib>
#include <string>
#include <vector>

#include "qel/base/Records.h"
#include "qel/control/QELTextbox.h"
#include "qel/headless/HeadlessPlatform.h"
#include "qel/model/StyleDecoder.h"
#include "qel/platform/Common.h"
#include "qel/richtext/RtfBytes.h"
#include "qel/rtf/RTFParser.h"
#include "qel/text/MarkupStrings.h"
#include "support/Form.h"
#include "support/Random.h"
#include "support/Text.h"

namespace qel {
namespace {

using style_codes::CodeState;

/// One character in its style, or a line break, which has none.
struct Item {
  char16_t character = 0;
  CodeState state;

  friend bool operator==(const Item&, const Item&) = default;
};
using Items = std::vector<Item>;

constexpr char16_t line_break = u'\n';

void PrintTo(const Item& item, std::ostream* out) {
  *out << test::shown({&item.character, 1});
  if (item.state != CodeState()) {
    *out << '(' << int{item.state.attributes} << ' ' << item.state.font << ' ' << item.state.color
         << ')';
  }
}

Items items_of(std::u16string_view markup) {
  StyleDecoder decoder;
  decoder.put_Lossless(true);
  decoder.put_QELText(markup);
  Items items;
  const auto add_breaks = [&](std::int32_t count) {
    items.insert(items.end(), static_cast<std::size_t>(count), Item{line_break, {}});
  };
  for (const auto& segment : *decoder.get_Segments()) {
    add_breaks(segment->line_codes_before());
    for (const char16_t c : segment->text()) items.push_back({c, segment->code_state()});
  }
  add_breaks(decoder.get_Segments()->line_codes_at_end());
  return items;
}

std::u16string plain_of(const Items& items) {
  std::u16string text;
  for (const Item& item : items) {
    if (item.character != line_break) text.push_back(item.character);
  }
  return text;
}

/// What looks like codes, what RTF has words for, and text of several kinds.
const std::vector<std::u16string_view>& pieces() {
  static const auto all = records::split(
      u"/|~|\\|\\\\|/b1|/c1|/c0|/nl|/r1|/l0|/t1|/f3|/y12|~/b1|~/"
      u"c0|\\\\b1|<b1]|<|]|b|1|b1|c1|nl|n|l|0| |  |"
      u"\t|{|}|word |\\par "
      u"|/B1|/b2|http://x/|\u00A0|\u00AD|\u2011|\u2013|\u201C|\u20AC|\u05E9\u05DC|"
      u"\u4E2D|\U0001F600|e\u0301|\u2028|\u0001|\u007F|\u0085|\uFEFF|\uFFFF",
      u"|");
  return all;
}

CodeState random_state(test::Random& random) {
  CodeState state;
  if (!random.one_in(3)) state.attributes = static_cast<std::uint8_t>(1U << random.below(7));
  if (random.one_in(4)) state.attributes = static_cast<std::uint8_t>(random.below(32));
  if (random.one_in(6)) state.attributes = style_codes::superscript_bit | style_codes::bold_bit;
  if (random.one_in(3)) state.font = static_cast<std::int16_t>(random.below(10));
  if (random.one_in(3)) state.color = static_cast<std::int16_t>(random.below(10));
  return state;
}

/// A document in every style of the model.
Items random_items(test::Random& random) {
  Items items;
  CodeState state;
  for (std::size_t left = random.below(12); left > 0; --left) {
    if (random.one_in(6)) {
      items.push_back({line_break, {}});
      continue;
    }
    if (random.one_in(2)) state = random_state(random);
    for (const char16_t c : random.pick(pieces())) items.push_back({c, state});
  }
  return items;
}

/// Written run by run, as a host does that puts a text together.
std::u16string markup_of(const Items& items) {
  StyleDecoder decoder;
  decoder.put_Lossless(true);
  SegmentCollection& segments = *decoder.get_Segments();
  std::int32_t breaks = 0;
  for (std::size_t at = 0; at < items.size();) {
    if (items[at].character == line_break) {
      ++breaks;
      ++at;
      continue;
    }
    std::u16string text;
    const CodeState state = items[at].state;
    for (; at < items.size() && items[at].character != line_break && items[at].state == state;
         ++at) {
      text.push_back(items[at].character);
    }
    segments.Add(text, style_codes::style_of(state))->put_line_codes_before(breaks);
    breaks = 0;
  }
  segments.put_line_codes_at_end(breaks);
  return decoder.get_QELText();
}

/// A position of the plain text that is not within a pair of surrogates or a line break.
std::size_t random_cut(test::Random& random, std::u16string_view text) {
  const std::size_t at = random.below(text.size() + 1);
  if (at == 0 || at == text.size()) return at;
  const bool is_within = (text[at] & 0xFC00) == 0xDC00 || text.substr(at - 1, 2) == u"\r\n";
  return is_within ? at - 1 : at;
}

std::u16string without_breaks(std::u16string text) {
  std::erase_if(text, [](char16_t c) { return c == u'\r' || c == u'\n'; });
  return text;
}

class Lossless : public testing::Test {
 protected:
  Lossless() {
    parser_.put_Lossless(true);
    for (std::int16_t i = 4; i <= 9; ++i)
      fonts_.put_Font(i, std::u16string(u"Font ") + u"123456789"[i - 1]);
  }

  void check_conversions(const std::u16string& markup, const Items& items) {
    const std::u16string rtf = parser_.QELToRTF(markup, fonts_, colors_);
    ASSERT_EQ(from_rtf(rtf), markup);
    ASSERT_EQ(from_rtf(richtext::rtf_from_bytes(richtext::rtf_to_bytes(rtf))), markup) << "a file";
    ASSERT_EQ(from_rtf(parser_.SimpleRTF(rtf, fonts_, colors_)), markup) << "reduced";
    ASSERT_EQ(items_of(markup), items);
  }

  static void check_strings(test::Random& random, const std::u16string& markup,
                            const Items& items) {
    constexpr Way way = Way::lossless;
    const std::u16string plain = plain_of(items);
    ASSERT_EQ(markup::plain_text(markup, way), plain);
    ASSERT_EQ(markup::left(markup, markup::npos, way), markup) << "written again";
    const std::size_t at = random_cut(random, plain);
    const std::u16string left = markup::left(markup, at, way);
    const std::u16string right = markup::right(markup, plain.size() - at, way);
    ASSERT_EQ(items_of(left + right), items) << at;
    ASSERT_EQ(markup::mid(markup, at, markup::npos, way), at == 0 ? markup : right) << at;
    const std::size_t end = std::max(at, random_cut(random, plain));
    ASSERT_EQ(items_of(left + markup::mid(markup, at, end - at, way) +
                       markup::right(markup, plain.size() - end, way)),
              items)
        << at << " " << end;
    const std::u16string stuffed = markup::replace(markup, at, 0, u"new", way);
    ASSERT_EQ(items_of(markup::replace(stuffed, at, 3, u"", way)), items) << at;
  }

  void check_split(test::Random& random, const std::u16string& markup, const Items& items) const {
    static const std::vector<std::u16string_view> delimiters = {u"/", u"b1", u"~", u" ", u"/b1"};
    const std::u16string_view delimiter = random.pick(delimiters);
    const auto parts = markup::split(markup, delimiter, Way::lossless);
    Items joined;
    for (const std::u16string& part : parts) {
      if (&part != &parts.front()) {
        for (const char16_t c : delimiter) joined.push_back({c, {}});
      }
      const Items more = items_of(part);
      joined.insert(joined.end(), more.begin(), more.end());
    }
    std::u16string plain = plain_of(items);
    // A delimiter at the very end adds no part.
    if (plain_of(joined) != plain && plain.ends_with(delimiter)) {
      plain.resize(plain.size() - delimiter.size());
    }
    ASSERT_EQ(plain_of(joined), plain) << test::shown(delimiter);
    ASSERT_EQ(std::count(joined.begin(), joined.end(), Item{line_break, {}}),
              std::count(items.begin(), items.end(), Item{line_break, {}}));
  }

  std::u16string from_rtf(std::u16string_view rtf) {
    return parser_.RTFToQEL(rtf, fonts_, colors_);
  }

  Common::ConversionSlots slots_;
  RTFParser parser_;
  QELIndexFonts fonts_;
  QELIndexColors colors_;
};

/// How often a property is tried; more by hand: QEL_TEST_ROUNDS.
std::uint32_t rounds(std::uint32_t usual) {
  const char* const given = std::getenv("QEL_TEST_ROUNDS");
  return given == nullptr ? usual : static_cast<std::uint32_t>(std::strtoul(given, nullptr, 10));
}

TEST_F(Lossless, EveryTextSurvivesConversionsAndCuts) {
  for (std::uint32_t i = 0; i < rounds(100000); ++i) {
    test::Random random(test::base_seed() + i);
    const Items items = random_items(random);
    const std::u16string markup = markup_of(items);
    SCOPED_TRACE(random.describe() + " " + test::shown(markup));
    ASSERT_NO_FATAL_FAILURE(check_conversions(markup, items));
    ASSERT_NO_FATAL_FAILURE(check_strings(random, markup, items));
    ASSERT_NO_FATAL_FAILURE(check_split(random, markup, items));
  }
}

TEST_F(Lossless, EveryTextSurvivesTheControl) {
  for (std::uint32_t i = 0; i < rounds(2000); ++i) {
    test::Random random(test::base_seed() + i);
    const Items items = random_items(random);
    const std::u16string markup = markup_of(items);
    SCOPED_TRACE(random.describe() + " " + test::shown(markup));
    test::Form form;
    QELTextbox control(form);
    control.put_Lossless(true);
    control.put_Multiline(!random.one_in(4));
    control.get_Fonts()->CopyFrom(fonts_);
    control.put_TextQEL(u"before/nl");
    control.put_TextQEL(markup);
    ASSERT_EQ(control.get_TextQEL(), markup);
    const std::u16string text = control.get_Text();
    const std::size_t start = random_cut(random, text);
    const std::size_t end = std::max(start, random_cut(random, text));
    control.put_SelStart(static_cast<std::int32_t>(start));
    control.put_SelLength(static_cast<std::int32_t>(end - start));
    const std::size_t from = static_cast<std::size_t>(control.get_SelStartQEL());
    const bool is_in_code =
        text.substr(0, start).find(u'/', start < 2 ? 0 : start - 2) != text.npos ||
        text.substr(0, end).find(u'/', end < 2 ? 0 : end - 2) != text.npos;
    if (!is_in_code && control.get_SelLength() > 0) {
      EXPECT_EQ(plain_of(items_of(control.get_SelTextQEL())),
                without_breaks(control.get_SelText()));
      EXPECT_EQ(plain_of(items_of(markup.substr(0, from))), without_breaks(text.substr(0, start)));
    }
    for (const std::u16string_view name : {u"Courier New", u"Font 4", u"Another"}) {
      control.put_FontName(name);
      control.put_FontSize(20);
      ASSERT_EQ(control.get_TextQEL(), markup) << test::shown(name);
    }
    control.put_NoteColor(rgb(1, 2, 3));
    ASSERT_EQ(control.get_TextQEL(), markup) << "in another colour";
    control.put_NoteColor(colors_.get_NoteColor());
    const auto box = control.boxes()[control.get_Multiline() ? 1 : 0];
    QELTextbox second(form);
    second.put_Lossless(true);
    second.get_Fonts()->CopyFrom(fonts_);
    second.put_FontName(u"Another");
    second.put_Multiline(control.get_Multiline());
    second.put_TextRTF(box->get_TextRTF());
    ASSERT_EQ(second.get_TextQEL(), markup) << "from the RTF of its box";
  }
}

}  // namespace
}  // namespace qel
