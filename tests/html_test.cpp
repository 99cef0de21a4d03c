// HTML both ways: the writer of `qel/convert` and the reader of `html`.

#include <gtest/gtest.h>

#include <algorithm>
#include <array>
#include <cstdio>
#include <string>
#include <vector>

#include "qel/base/Utf16.h"
#include "qel/base/Utf8.h"
#include "qel/convert/HtmlFragment.h"
#include "qel/html/HtmlReader.h"
#include "qel/richtext/DocumentReader.h"
#include "qel/rtf/TableIndexes.h"
#include "support/HtmlParts.h"
#include "support/Random.h"

namespace qel {
namespace {

using convert::HtmlOptions;
using richtext::Alignment;
using richtext::CharFormat;
using style_codes::CodeState;
using test::append;
using test::Part;
using test::Parts;
using test::Tables;
using test::write_html;

/// Collects what is read, in the states that the tables have for it or in short notes.
class Collector : public richtext::DocumentSink {
 public:
  explicit Collector(const Tables& tables)
      : indexes_(tables.fonts, tables.colors, rtf::Origin::rtf, Way::lossless),
        base_(tables.base()) {}

  FormatId intern(const CharFormat& format) override {
    formats_.push_back(format);
    return static_cast<FormatId>(formats_.size() - 1);
  }
  void text(std::u16string_view text, FormatId format) override {
    EXPECT_EQ(text.find_first_of(u"\r\n"), text.npos);
    append(parts, text, indexes_.state(formats_.at(format)));
    append_note(format).append(to_utf8(text));
  }
  void paragraph_break(FormatId format, Alignment alignment) override {
    append(parts, u"\n", indexes_.state(formats_.at(format)));
    append_alignment(alignment);
    notes.append("|");
  }
  void finish(Alignment alignment) override { append_alignment(alignment); }

  Parts parts;
  /// "{b Arial}text|": formats that are not the base's, and "|" for a break.
  std::string notes;
  richtext::DroppedParts dropped;

 private:
  std::string& append_note(FormatId id) {
    const CharFormat& format = formats_.at(id);
    std::string note;
    const auto add = [&](bool is_on, const std::string& text) {
      if (is_on) note.append(note.empty() ? "" : " ").append(text);
    };
    add(format.bold, "b");
    add(format.italic, "i");
    add(format.underline, "u");
    add(format.strike_through, "k");
    add(format.small_caps, "c");
    add(format.offset > 0, "p");
    add(format.offset < 0, "s");
    if (format.color != base_.color) {
      std::array<char, 8> digits = {};
      const auto part = [](int value) { return static_cast<unsigned>(value); };
      std::snprintf(digits.data(), digits.size(), "#%02x%02x%02x", part(red_of(format.color)),
                    part(green_of(format.color)), part(blue_of(format.color)));
      add(true, digits.data());
    }
    add(format.font_name != base_.font_name, to_utf8(format.font_name));
    std::array<char, 16> size = {};
    std::snprintf(size.data(), size.size(), "x%g", static_cast<double>(format.size));
    add(format.size != base_.size, size.data());
    if (note != note_) notes.append("{").append(note).append("}");
    note_ = note;
    return notes;
  }
  void append_alignment(Alignment alignment) {
    if (alignment != Alignment::left) notes.append(alignment == Alignment::right ? ">" : "^");
  }

  rtf::TableIndexes indexes_;
  CharFormat base_;
  std::vector<CharFormat> formats_;
  std::string note_;
};

Collector read(std::string_view bytes, const Tables& tables = {}) {
  Collector sink(tables);
  sink.dropped = html::read_html(bytes, tables.base(), sink);
  return sink;
}

// ---- Both ways ------------------------------------------------------------------------------

/// What HTML keeps of a text and a state.
std::u16string kept(std::u16string_view text) {
  std::u16string result;
  for (std::size_t at = 0; at < text.size();) {
    const char32_t c = next_character(text, at);
    if ((c < U' ' && c != U'\t') || (c >= 0x7F && c < 0xA0)) continue;
    result.append(units_of(c), u' ');
    put_character(result, result.size() - units_of(c), c);
  }
  return result;
}

CodeState kept(CodeState state) {
  unsigned bits = state.attributes & ~unsigned{style_codes::unicode_bit};
  if ((bits & style_codes::superscript_bit) != 0) bits &= ~unsigned{style_codes::subscript_bit};
  return {static_cast<std::uint8_t>(bits), state.font, state.color};
}

Parts random_runs(test::Random& random) {
  static const std::vector<std::u16string_view> pieces = {
      u"a",      u"word",       u" ",      u" ",      u"  ",   u"\t",         u"a b",
      u"\u00A0", u"&lt;",       u"<b>",    u"\"'",    u"\x01", u"\x85",       u"\xD800",
      u"\uFEFF", u"\U0001F600", u"\uFFFE", u"\u4E2D", u"-->",  u"long text ", u"\U0001FFFF"};
  Parts parts;
  CodeState state;
  for (std::size_t count = random.below(12); count > 0; --count) {
    if (random.one_in(2)) state.attributes ^= static_cast<std::uint8_t>(1U << random.below(8));
    if (random.one_in(3)) state.font = static_cast<std::int16_t>(random.below(10));
    if (random.one_in(3)) state.color = static_cast<std::int16_t>(random.below(10));
    if (random.one_in(4)) state = {};
    const bool is_break = random.one_in(4);
    parts.push_back({is_break ? u"\n" : random.text(pieces, 1 + random.below(4)), state});
  }
  return parts;
}

TEST(Html, ReadsBackWhatItWrites) {
  Tables tables;  // in which each font has a name
  for (std::int16_t i = 4; i <= 9; ++i) {
    tables.fonts.put_Font(i, std::u16string(u"Font ") + u"456789"[i - 4]);
  }
  for (std::uint32_t i = 0; i < 4000; ++i) {
    test::Random random(test::base_seed() + i);
    SCOPED_TRACE(random.describe());
    const Parts parts = random_runs(random);
    HtmlOptions options;
    options.whole_document = random.one_in(2);
    options.paragraphs = random.one_in(2);
    options.classes = options.whole_document && random.one_in(2);
    const std::string html = write_html(parts, tables, options);
    SCOPED_TRACE(html);
    Parts expected;
    for (const Part& part : parts) {
      append(expected, part.text == u"\n" ? part.text : kept(part.text), kept(part.state));
    }
    ASSERT_EQ(read(html, tables).parts, expected);
  }
}

// ---- Writing --------------------------------------------------------------------------------

TEST(HtmlWriter, WritesElements) {
  using namespace style_codes;
  const CodeState plain;
  const CodeState bold{bold_bit, 0, 0};
  const CodeState both{bold_bit | italic_bit, 0, 0};
  const CodeState italic{italic_bit, 0, 0};
  const CodeState note{0, 2, 3};
  HtmlOptions paragraphs;
  paragraphs.paragraphs = true;
  HtmlOptions classes;
  classes.classes = true;
  HtmlOptions bare;
  bare.without_note = true;
  struct Case {
    Parts parts;
    HtmlOptions options;
    std::string expected;
  };
  const std::vector<Case> cases = {
      {{{u"plain & <simple>", plain}}, {}, "plain &amp; &lt;simple&gt;"},
      {{{u"a", bold}, {u"b", both}, {u"c", italic}, {u"d", plain}},
       {},
       "<b>a<i>b</i></b><i>c</i>d"},
      {{{u"two ", bold}, {u" blanks", plain}},
       {},
       "<b>two<span class=\"Apple-converted-space\">&nbsp;</span></b> blanks"},
      {{{u"a", bold}, {u"\n", bold}, {u"b", bold}}, {}, "<b>a<br>b</b>"},
      {{{u"a", bold}, {u"\n", bold}, {u"\n", plain}, {u"b", bold}},
       paragraphs,
       "<p><b>a</b></p><p><br></p><p><b>b</b></p>"},
      {{{u"n", note}},
       {},
       "<span style=\"color:#c0c000\"><span style=\"font-family:'Courier New'\">n</span></span>"},
      {{{u"x", {0, 4, 0}}, {u"y", {bold_bit, 9, 0}}}, {}, "x<b>y</b>"},
      {{{u"n", note}}, classes, "<span class=\"qel-y3\"><span class=\"qel-f2\">n</span></span>"},
      {{{u"a ", bold}, {u"note", note}, {u"\n", note}, {u"b", bold}},
       bare,
       "<b>a<span class=\"Apple-converted-space\">&nbsp;</span><br>b</b>"},
  };
  for (const Case& test : cases) EXPECT_EQ(write_html(test.parts, {}, test.options), test.expected);
}

// ---- Reading --------------------------------------------------------------------------------

TEST(HtmlReader, ReadsAsBrowsersShow) {
  struct Case {
    std::string_view html;
    std::string_view expected;
  };
  constexpr std::array cases = {
      // White space
      Case{" a \n b <b> c </b> d ", "a b {b}c {}d"},
      Case{"<p> a </p> \n <p>b</p>", "a|b"},
      Case{"a <br> b&nbsp; c", "a|b\u00A0 c"},
      Case{"<pre>\n a\tb\n\n c</pre>d", "{Courier New} a\tb|| c|{}d"},
      Case{"<p style='white-space:pre-wrap'> a  b </p><p style='white-space:pre-line'> a \n b",
           " a  b |a|b"},
      // Blocks and breaks
      Case{"a<div>b<div>c</div></div>d", "a|b|c|d"},
      Case{"a<br></div><p>b<br></p><p>c", "a|b|c"},
      Case{"a<br><br>b<br>", "a||b|"},
      Case{"<p></p><div></div>a<p></p>", "a"},
      Case{"a<hr>b<img alt=picture><img>", "a|———|bpicture"},
      Case{"<div align=right>a</div><p style='text-align:center'>b</p><center>c", "a>|b^|c^"},
      Case{"<h1>a</h1><h3>b</h3>c", "{b x20}a|{b x11.5}b|{}c"},
      // Elements
      Case{"<b>b</b><strong>b</strong><i>i</i><em>i</em><u>u</u><ins>u</ins>", "{b}bb{i}ii{u}uu"},
      Case{"<s>k</s><strike>k</strike><del>k</del><sub>s</sub><sup>p</sup>", "{k}kkk{s}s{p}p"},
      Case{"<sup>a<sub>b</sub></sup><code>c</code><big>d</big><small>e</small>",
           "{p}a{s}b{Courier New}c{x12}d{x8.5}e"},
      Case{
          "<font face='Times New Roman, serif' color=00f size=+2>a</font><font size=1 color=Navy>b",
          "{#0000ff Times New Roman x15}a{#000080 x6.5}b"},
      Case{"<a href=x>link</a> <q>q</q> <o:p>unknown</o:p>", "link q unknown"},
      // Styles
      Case{"<span style='font: italic bold 12pt/1 \"My \\46ont\", serif; color: RGB(1,2,3)'>a",
           "{b i #010203 My Font x12}a"},
      Case{"<b style='font-weight:400'>a</b><span style=font-weight:700>b</span>", "a{b}b"},
      Case{"<span style='text-decoration:underline line-through'>a<span "
           "style='text-decoration:none'>b</span></span>",
           "{u k}ab"},
      Case{"<span style='font-variant:small-caps;vertical-align:super;color:#F00 !important'>a",
           "{c p #ff0000}a"},
      Case{"<p style='font-size:2em'>a<span style='font-size:50%'>b</span><span "
           "style='font-size:16px'>c",
           "{x20}a{}b{x12}c"},
      Case{"a<span style='display:none'>b</span><span hidden>c</span><span "
           "style='display:block'>d</span>e",
           "a|d|e"},
      Case{"<style>@media print{p{color:red}} p.n, .m{color:lime} B{font-weight:normal}</style>"
           "<p class=n>a</p><i class='x m'>b</i><b>c</b><p>d",
           "{#00ff00}a|{i #00ff00}b{}c|d"},
      // Lists and tables
      Case{"<ul><li>a<li><p>b</p>c<ol start=3 type=A><li>d</li><li value=27>e</ol><li></ul>f",
           "•\ta|•\tb|c|\tC.\td|\tAA.\te|f"},
      Case{"<ul style='list-style:none'><li>a</ul>", "a"},
      Case{"<table><tr><th>a<td> <p>b</p> <td>c</tr><tr><td><td>d<td></table>e",
           "{b}a{}\tb\tc|\td|e"},
      Case{"<table><tr><td>a<table><tr><td>b<td>c</table></td><td>d</table>", "a|b\tc\td"},
      // What is not text
      Case{"<head><title>t</title></head><script>if(a<b)'</p>'</script><!-- c -- > -->a"
           "<svg><text>b</text></svg><template>c</template><select><option>d</select>e",
           "ae"},
      Case{"Version:0.9\r\nStartHTML:00\r\n<html><body>x<ul><li>y<!--StartFragment--><li>a"
           "<!--EndFragment--><li>z</ul>",
           "•\ta"},
      Case{"<table><tr>x<!--StartFragment--><td>a<td>b<!--EndFragment--></table>y", "a\tb"},
      Case{"a<br class=Apple-interchange-newline>", "a"},
      Case{"<span style='mso-spacerun:yes'>&nbsp;&nbsp;</span>a", "  a"},
      // Broken
      Case{"a < b &amp;lt; &bogus; <3 &#x41;&#0;", "a < b &lt; &bogus; <3 A\uFFFD"},
      Case{"<b>a<i>b</b>c</i>d<p><b>e<p>f", "{b}a{b i}b{i}c{}d|{b}e|f"},
      Case{"</p></div></table><td>a</b><x y='>'>b", "ab"},
      Case{"a<b", "a"},
      Case{"a<bc", "a<bc"},
      Case{"", ""},
  };
  for (const Case& test : cases) EXPECT_EQ(read(test.html).notes, test.expected) << test.html;
}

TEST(HtmlReader, CountsWhatItDrops) {
  const Collector page = read(
      "<head><title>t</title></head><img><a href=x><img alt=p></a><a href=' https://a.b/ '> a.b "
      "</a>"
      "<a href='mailto:c'><b>c</b> d</a><a href='#e'>e</a><a href=f>f<a href=g>h</a>"
      "<svg><video></svg><audio></audio><object>o</object><iframe><embed></iframe>"
      "<p hidden>ab <b style='display:inline'>c<img></b> </p><table hidden><td>d</table>"
      "<table><tr><th>1<td>2<tr><td><table><td>3</table></table>"
      "<!-- <img> --><script>'<svg>'</script>");
  richtext::DroppedParts expected;
  expected.pictures = 3;
  expected.objects = 3;
  expected.links = 3;
  expected.hidden = 5;
  expected.cells = 4;
  expected.rows = 3;
  EXPECT_EQ(page.dropped, expected)
      << page.dropped.pictures << page.dropped.objects << page.dropped.links << page.dropped.hidden
      << page.dropped.cells << page.dropped.rows;
  EXPECT_EQ(read("<img><a href=x>y<!--StartFragment--><img>z<!--EndFragment--></a><svg>").dropped,
            (richtext::DroppedParts{.pictures = 1, .links = 1}));
}

TEST(HtmlReader, ReadsEncodings) {
  using namespace std::string_view_literals;
  struct Case {
    std::string_view bytes;
    std::string_view expected;
  };
  constexpr std::array cases = {
      Case{"caf\xC3\xA9 caf\xE9 \x80", "café café €"},
      Case{"\xEF\xBB\xBF<meta charset=koi8-r>\xC3\xA9", "é"},
      Case{"<meta charset='ISO-8859-5'>\xBF\xE0\xD8\xD2\xD5\xE2", "Привет"},
      Case{"<META content='text/html; charset=windows-1253'>\xC3", "Γ"},
      Case{"<meta charset=shift_jis>\x93\xFA\x96\x7B\xFA", "日本ú"},
      Case{"<meta charset=windows-1253>\xAA\xC3", "ªΓ"},
      Case{"<meta charset=unheard-of>\xC3\xA9", "é"},
      Case{"\xFF\xFE<\0b\0>\0\xE9\0"sv, "{b}é"},
      Case{"\xFE\xFF\0\xE9\xD8\x3D\xDE\0"sv, "é😀"},
  };
  for (const Case& test : cases) EXPECT_EQ(read(test.bytes).notes, test.expected);
  // Wine, other than Windows, has no table of it.
  if (read("<meta charset=gb18030>\xC4\xE3").notes == "Äã") return;
  EXPECT_EQ(read("<meta charset=gb18030>\x90\x30\x81\x30\xC4\xE3").notes, "\U00010000你");
}

TEST(HtmlReader, KnowsHtml) {
  for (const std::string_view html :
       {"<!DOCTYPE HTML>", "\xEF\xBB\xBF \n<HTML lang=en>", "<!-- c --><p>a", "<b>a</b>", "<br/>",
        "<img\nsrc='data:", "Version:1.0\r\nStartHTML:000\r\n",
        "<?xml version='1.0'?><!doctype html>"}) {
    EXPECT_TRUE(html::is_html(html)) << html;
  }
  for (const std::string_view other :
       {"", "<", "text <b>", "{\\rtf1 <b>}", "/b1a/b0", "<b1>", "<b", "<b/b1>", "<i one",
        "<svg xmlns='x'>", "<note>", "Version: 2"}) {
    EXPECT_FALSE(html::is_html(other)) << other;
  }
}

/// A parser's stack and time are those of the deepest nesting: as they are, most of these would
/// crash or take minutes.
TEST(HtmlReader, TakesAnyNesting) {
  constexpr std::size_t times = 100'000;
  for (const std::string_view piece :
       {"<div>", "<b>", "<span><div></span></div>", "<table><tr><td>", "<ul><li>", "<li><dd>",
        "<b><div></b>", "<table><div></tr>", "<b><table><td></b></table>", "<svg>",
        "<p><font color=%>", "<td>", "<a ", "<!--"}) {
    const std::size_t number = std::min(piece.find('%'), piece.size());
    std::string html = "<table>";
    for (std::size_t i = 0; i < times; ++i) {
      html.append(piece.substr(0, number));
      if (number < piece.size()) html.append(std::to_string(i)).append(piece.substr(number + 1));
    }
    const Parts parts = read(html + "<p>x").parts;
    EXPECT_EQ(parts.empty(), piece == "<!--") << piece;
    EXPECT_TRUE(parts.empty() || parts.back().text.ends_with(u'x')) << piece;
  }
}

/// What is copied: more fonts and colours than a table has, blanks of all kinds, alignments.
TEST(HtmlFragment, ReadsBackAsTheSameDocument) {
  const std::vector<std::u16string_view> words = {
      u"a", u"bc ", u" ", u"  ", u"\t", u"<&\"", u"\u00A0", u"\U0001F600", u"\u05D0"};
  constexpr std::array alignments = {Alignment::left, Alignment::center, Alignment::right};
  for (std::uint32_t seed = 0; seed < 200; ++seed) {
    test::Random random(test::base_seed() + seed);
    SCOPED_TRACE(random.describe());
    richtext::Document document;
    for (std::size_t runs = random.below(40); runs > 0; --runs) {
      CharFormat format;
      format.bold = random.one_in(3);
      format.italic = random.one_in(3);
      format.underline = random.one_in(3);
      format.strike_through = random.one_in(3);
      format.small_caps = random.one_in(3);
      format.offset = static_cast<std::int16_t>(45 * (static_cast<int>(random.below(3)) - 1));
      format.color = static_cast<Color>(random.below(25));
      format.font_name = u"Font ";
      format.font_name.push_back(static_cast<char16_t>(u'a' + random.below(25)));
      const auto id = document.intern(format);
      if (random.one_in(4)) document.append_break(id, alignments[random.below(3)]);
      document.append(random.text(words, 1 + random.below(3)), id);
    }
    document.align_last(alignments[random.below(3)]);
    const std::string html = to_utf8(convert::html_fragment(document));
    SCOPED_TRACE(html);
    richtext::Document read;
    richtext::DocumentBuilder builder(read);
    html::read_html(html, CharFormat(), builder);
    ASSERT_EQ(read.text(), document.text());
    for (std::size_t at = 0; at < read.size(); ++at) {
      ASSERT_EQ(read.alignment_at(at), document.alignment_at(at)) << at;
      const char16_t character = read.text()[at];
      if (character == u'\r' || character == u'\n') continue;
      ASSERT_EQ(read.format_at(at), document.format_at(at)) << at;
    }
  }
}

}  // namespace
}  // namespace qel
