#include <gtest/gtest.h>

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <iterator>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "qel/base/Addresses.h"
#include "qel/base/Bidi.h"
#include "qel/base/Contrast.h"
#include "qel/base/Graphemes.h"
#include "qel/base/Words.h"
#include "support/Random.h"
#include "support/Text.h"

namespace qel {
namespace {

/// The positions at which a walk forward over the text stops.
std::vector<std::size_t> stops(std::u16string_view text) {
  std::vector<std::size_t> found;
  for (std::size_t at = 0; at < text.size();) {
    at = cluster_after(text, at);
    found.push_back(at);
  }
  return found;
}

/// Whether clusters that end at these positions are found from every position in them.
void expect_clusters(std::u16string_view text, const std::vector<std::size_t>& ends) {
  std::size_t start = 0;
  for (const std::size_t end : ends) {
    ASSERT_GT(end, start) << test::shown(text);
    for (std::size_t at = start; at < end; ++at) {
      ASSERT_EQ(cluster_after(text, at), end) << test::shown(text) << " after " << at;
      ASSERT_EQ(cluster_before(text, at + 1), start) << test::shown(text) << " before " << at + 1;
    }
    start = end;
  }
  ASSERT_EQ(start, text.size()) << test::shown(text);
  EXPECT_EQ(cluster_after(text, text.size() + 1), text.size());
  EXPECT_EQ(cluster_before(text, text.size() + 1), cluster_before(text, text.size()));
  EXPECT_EQ(cluster_before(text, 0), 0U);
}

/// The text with each address in brackets, and what is to be opened where that is not as written.
std::u16string with_addresses(std::u16string_view text) {
  std::u16string marked;
  for (std::size_t at = 0; at < text.size();) {
    const auto address = address_at(text, at);
    if (!address) {
      marked += text[at++];
      continue;
    }
    const std::u16string_view written = text.substr(at, address->end - at);
    marked.append(u"[").append(written);
    if (address->target != written) {
      marked.append(u"=").append(address->target, 0, address->target.size() - written.size());
    }
    marked += u']';
    for (; at < address->end; ++at) EXPECT_EQ(address_at(text, at), address) << at;
  }
  return marked;
}

TEST(Addresses, EndWhereReadersTakeThemToEnd) {
  const std::pair<std::u16string_view, std::u16string_view> rows[] = {
      {u"see http://example.org.", u"see [http://example.org]."},
      {u"HTTPS://Example.org/A?b=c&d=(e)#f, or", u"[HTTPS://Example.org/A?b=c&d=(e)#f], or"},
      {u"(http://a.org/x_(y)) (http://a.org/x)", u"([http://a.org/x_(y)]) ([http://a.org/x])"},
      {u"http://a.org/[1]] http://[::1]/x", u"[http://a.org/[1]]] [http://[::1]/x]"},
      {u"<http://a.org/x> \"http://b.org\"", u"<[http://a.org/x]> \"[http://b.org]\""},
      {u"'http://a.org/it's'...", u"'[http://a.org/it's]'..."},
      {u"\u201Cftp://a.org/x\u201D\u2026 http://a.org/x\u3002",
       u"\u201C[ftp://a.org/x]\u201D\u2026 [http://a.org/x]\u3002"},
      {u"http://a.org/x,http://b.org;www.c.org",
       u"[http://a.org/x],[http://b.org];[www.c.org=http://]"},
      {u"http://web.org/http://a.org/", u"[http://web.org/http://a.org/]"},
      {u"\u898Bhttp://a.org/\u00E9\U0001F600! http://localhost:80/",
       u"\u898B[http://a.org/\u00E9\U0001F600]! [http://localhost:80/]"},
      {u"www.example.org/x, wwww.a.org www.a www. a.www.b.org",
       u"[www.example.org/x=http://], wwww.a.org www.a www. a.www.b.org"},
      {u"http:// https://. http:x xhttp://a.org ftp://",
       u"http:// https://. http:x xhttp://a.org ftp://"},
      {u"ann.o'b+x@mail.example.org. (b@a.co.uk)",
       u"[ann.o'b+x@mail.example.org=mailto:]. ([b@a.co.uk=mailto:])"},
      {u"'a@b.org', -a@b.org- a@b.c a@b a@1.22 .@b.org",
       u"'[a@b.org=mailto:]', -[a@b.org=mailto:]- a@b.c a@b a@1.22 .@b.org"},
      {u"a@b@c.org a@b.org@c @b.org a..b@c.org a.@c.org",
       u"a@b@c.org a@b.org@c @b.org a..b@c.org a.@c.org"},
      {u"mailto:a@b.org?subject=x%20y, mailto: mailto:a",
       u"[mailto:a@b.org?subject=x%20y], mailto: mailto:a"},
      {u"http://ann:p@a.org/x a@b.org,c@d.org",
       u"[http://ann:p@a.org/x] [a@b.org=mailto:],[c@d.org=mailto:]"},
      {u"a\u2028http://a.org\r\nhttp://b.org\tc\u00A0d",
       u"a\u2028[http://a.org]\r\n[http://b.org]\tc\u00A0d"}};
  for (const auto& [text, expected] : rows) {
    EXPECT_EQ(test::shown(with_addresses(text)), test::shown(expected));
  }
  EXPECT_FALSE(address_at(u"http://a.org", 12));
  const std::u16string endless(100'000, u'x');
  EXPECT_FALSE(address_at(u"a@" + endless + u".org", 50'000));
}

TEST(Contrast, IsEnoughInTheNearestLightness) {
  constexpr Color white = rgb(255, 255, 255);
  EXPECT_NEAR(contrast(0, white), 21, 0.001);
  EXPECT_NEAR(contrast(rgb(118, 118, 118), white), 4.54, 0.01);
  EXPECT_EQ(readable_color(rgb(255, 255, 0), white), rgb(122, 122, 0)) << "yellow on white";
  EXPECT_EQ(readable_color(rgb(0, 0, 255), 0), rgb(94, 94, 255));
  EXPECT_EQ(readable_color(rgb(9, 9, 9), rgb(9, 9, 9), 21), white) << "as far as there is any";
  for (std::uint32_t i = 0; i < 20'000; ++i) {
    test::Random random(test::base_seed() + i);
    const auto any = [&random] { return static_cast<Color>(random.below(0x1000000)); };
    const Color color = any();
    const Color background = any();
    const Color readable = readable_color(color, background);
    ASSERT_GE(contrast(readable, background), readable_contrast) << color << " on " << background;
    if (contrast(color, background) >= readable_contrast) {
      ASSERT_EQ(readable, color) << background;
      continue;
    }
    // The channels keep their order, and the middle one its place between the others.
    const int channels[] = {red_of(color), green_of(color), blue_of(color)};
    const int shown[] = {red_of(readable), green_of(readable), blue_of(readable)};
    const auto width = [](const int(&of)[3]) {
      return *std::max_element(of, of + 3) - *std::min_element(of, of + 3);
    };
    for (std::size_t a = 0; a < 3; ++a) {
      const std::size_t b = (a + 1) % 3;
      const double before = static_cast<double>(channels[a] - channels[b]) * width(shown);
      const double after = static_cast<double>(shown[a] - shown[b]) * width(channels);
      ASSERT_NEAR(before, after, 1.5 * width(channels) + 1.5 * width(shown))
          << color << " on " << background;
    }
  }
}

TEST(Graphemes, AreWhatReadersTakeForCharacters) {
  const std::vector<std::u16string_view> rows[] = {
      {},
      {u"a", u"b", u" "},
      {u"\r\n", u"\r", u"\r\n", u"\n", u"\n", u"\r"},
      {u"e\u0301", u"e\u0301\u0327", u"x"},
      {u"\r\n", u"\u0301", u"\n", u"\u200D\u0301", u"\t", u"\u0903"},
      {u"a\u0301", u"\x7F", u"\u0301", u"\u200B", u"\u0301\u0308", u"\u2028", u"a"},
      {u"\u1100\u1161\u11A8\u11A8", u"\u1100\u1100\u1161\u1161\u11A8", u"\u1161\u11A8"},
      {u"\uAC00\u11A8", u"\uAC00\u1161\u11A8", u"\uAC01\u11A8\u0308", u"\uAC00", u"\u1100\uAC01"},
      {u"\uD7A3", u"\u1161", u"\u1100\uD788\u1161\u11A8", u"\u1161", u"a", u"\u11A8", u"\u1161"},
      {u"\U0001F1E9\U0001F1EA", u"\U0001F1EB\U0001F1F7", u"\U0001F1E9", u"a", u"\U0001F1E9"},
      {u"\U0001F1E9\U0001F1EA\u0301", u"\U0001F1EB\u200D", u"\U0001F1F7\U0001F1E9", u"\U0001F1FF"},
      {u"\U0001F468\u200D\U0001F469\u200D\U0001F467\u200D\U0001F466", u"\U0001F466"},
      {u"\U0001F469\U0001F3FF\u200D\u2764\uFE0F\u200D\U0001F468\U0001F3FB", u"!"},
      {u"\U0001F44D\U0001F3FD", u"\U0001F44D", u"a\U0001F3FD", u"1\uFE0F\u20E3", u"\u2764\uFE0F"},
      {u"\U0001F469\u200D\u200D", u"\U0001F469\u200D", u"a\u200D", u"\U0001F469"},
      {u"\u200D", u"\U0001F469\u200D\u0308", u"\U0001F469", u"\u00A9\u0308\u200D\u00AE"},
      {u"\U0001F3F4\U000E0067\U000E0062\U000E007F", u"\U0001F3F3\uFE0F\u200D\U0001F308"},
      {u"\u0600\u0661", u"\u0600\u0600a", u"\u0600\U0001F1E9\U0001F1EA", u"\u0600\u0301", u"a"},
      {u"\u0600", u"\n", u"\U000110BD\u0903", u"\u0600", u"\r\n"},
      {u"\u0928\u093F", u"\u0915\u094D", u"\u0937\u093F", u"\u0BA8\u0BBF", u"\u0E01\u0E33"},
      {u"\U0001D15E\U0001D165", u"\U0002F800\U000E0100", u"\U00010000", u"\U0010FFFF"},
      {u"\xD83D", u"\u0301", u"\xDE00", u"\xDE00", u"\u200D", u"\xD83D", u"\U0001F600\u0301"},
      {u"\u0600", u"\xD83C", u"\U0001F1E9", u"\xDDEA", u"\xD83C"},
  };
  for (const auto& clusters : rows) {
    std::u16string text;
    std::vector<std::size_t> ends;
    ends.reserve(clusters.size());
    for (const std::u16string_view cluster : clusters) ends.push_back(text.append(cluster).size());
    expect_clusters(text, ends);
  }
}

TEST(Bidi, HasTheLevelsOfTheStandard) {
  struct Row {
    std::u16string_view text;
    std::string_view levels;  // the first is that of the paragraph
  };
  const Row rows[] = {
      {u"", "0"},
      {u"- 12", "00000"},
      {u"a\u05D0\u05B8 \u05D1 b", "00111100"},
      {u"12 \u05D0 -3.5%, a\t b", "12211112222112122"},
      {u"a \u0627 12, \u0661,\u0662+", "0001122112220"},
      {u"a \u05D0 \u06611:", "00011220"},
      {u"\U00010A00\U0001F600\U0001D7CF b", "111112212"},
  };
  for (const Row& row : rows) {
    const BidiLevels levels = bidi_levels(row.text);
    std::string found(1, static_cast<char>('0' + levels.paragraph));
    for (const std::uint8_t level : levels.units) found.push_back(static_cast<char>('0' + level));
    EXPECT_EQ(found, row.levels) << test::shown(row.text);
    EXPECT_EQ(has_right_to_left(row.text), found.find('1') != std::string::npos);
  }
}

TEST(Graphemes, AreTheSameFromEveryPositionInHostileTexts) {
  const std::vector<std::u16string_view> vocabulary = {
      u"a",      u"\r",     u"\n",         u"\u0301", u"\u0903",     u"\u200D", u"\u0600",
      u"\u1100", u"\u1161", u"\u11A8",     u"\uAC00", u"\uAC01",     u"\u00A9", u"\U0001F469",
      u"\xD83D", u"\xDE00", u"\U0001F3FD", u"\xD83C", u"\U0001F1E9", u"\xDDEA", u"\U0001F1EA"};
  test::Random random(test::base_seed());
  SCOPED_TRACE(random.describe());
  for (int i = 0; i < 3000; ++i) {
    const std::u16string text = random.text(vocabulary, 1 + random.below(24));
    expect_clusters(text, stops(text));
  }
}

TEST(Graphemes, AreFoundInHugeTextsWithoutReadingThemAnewAtEachStep) {
  constexpr std::size_t many = 20'000;
  struct Row {
    std::u16string_view piece;
    std::size_t clusters;
  };
  const Row rows[] = {{u"\u0301", 1},
                      {u"\u200D", 1},
                      {u"\u1100", 1},
                      {u"\u0600", 1},
                      {u"\U0001F469\u0301\u200D", 1},
                      {u"\U0001F469\u0301\u200D\u200D", many},
                      {u"\U0001F1E9", many - 300}};
  for (const Row& row : rows) {
    const std::u16string text = test::repeated(row.piece, many);
    const std::vector<std::size_t> forward = stops(text);
    EXPECT_EQ(forward.size(), row.clusters) << test::shown(row.piece);
    std::vector<std::size_t> backward;
    for (std::size_t at = text.size(); at > 0; at = cluster_before(text, at))
      backward.push_back(at);
    EXPECT_TRUE(std::equal(forward.rbegin(), forward.rend(), backward.begin(), backward.end()))
        << test::shown(row.piece);
  }
}

TEST(Words, AreWhatReadersTakeForWords) {
  const struct {
    std::u16string_view text;
    std::vector<std::u16string_view> words;
  } cases[] = {
      {u"one, (two)\r\n3rd", {u"one", u"two", u"3rd"}},
      {u"don't 'quoted' dogs' rock'n'roll", {u"don't", u"quoted", u"dogs", u"rock'n'roll"}},
      {u"l\u2019eau col\u00B7legi soft\u00ADhyphen",
       {u"l\u2019eau", u"col\u00B7legi", u"soft\u00ADhyphen"}},
      {u"e\u0301te\u0301\u00A0\u0416\u05D0\u3000\U00010400\U0001F600",
       {u"e\u0301te\u0301", u"\u0416\u05D0", u"\U00010400"}},
      {u"snake_case a-b x'", {u"snake", u"case", u"a", u"b", u"x"}},
      {u" .,'", {}},
  };
  for (const auto& row : cases) {
    std::vector<std::u16string_view> words;
    for (std::size_t at = word_start(row.text, 0); at < row.text.size();) {
      const std::size_t end = word_end(row.text, at);
      for (std::size_t i = at; i < end; ++i) {
        if (whole_position(row.text, i) != i) continue;
        EXPECT_EQ(cuts_word(row.text, i), i > at);
        EXPECT_EQ(word_end(row.text, i), end);
      }
      words.push_back(row.text.substr(at, end - at));
      at = word_start(row.text, end);
    }
    EXPECT_EQ(words, row.words) << test::shown(row.text);
  }
}

TEST(WholePosition, NeverStandsWithinAPairOrABreak) {
  const std::u16string_view text = u"\r\n\r\r\n\n\U0001F600\xD83D\xD83D\xDE00\xDE00";
  const std::size_t whole[] = {0, 0, 2, 3, 3, 5, 6, 6, 8, 9, 9, 11, 12, 12};
  for (std::size_t at = 0; at < std::size(whole); ++at) {
    EXPECT_EQ(whole_position(text, at), whole[at]) << at;
  }
}

}  // namespace
}  // namespace qel
