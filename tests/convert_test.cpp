#include "qel/convert/Convert.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <array>
#include <functional>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "qel/base/Records.h"
#include "qel/base/Scan.h"
#include "qel/base/Utf8.h"
#include "qel/convert/Flow.h"
#include "qel/convert/MarkupOutput.h"
#include "qel/convert/RtfOutput.h"
#include "qel/model/Parser.h"
#include "qel/model/StyleDecoder.h"
#include "qel/platform/Common.h"
#include "qel/richtext/CodePage.h"
#include "qel/richtext/DocumentReader.h"
#include "qel/richtext/RtfBytes.h"
#include "qel/richtext/RtfWriter.h"
#include "qel/rtf/RTFParser.h"
#include "support/Conversions.h"
#include "support/Random.h"
#include "support/Text.h"

namespace qel::convert {
namespace {

/// More than tells the format of an input, so that what follows is read as it comes.
constexpr std::size_t beginning = 4100;

const std::vector<std::u16string_view>& text_pieces() {
  static const auto pieces = [] {
    auto all = test::markup_vocabulary();
    all.insert(all.end(),
               {u"\r", u"\n", u"\r\n", u"\n\n", u" ", u"~~", u"nl", u"1", u"b", u"/n", u"\\\\b1",
                u"//b0nl", u"/n/b0l", u"\u20AC", u"\u00A0", u"\u2028", u"\u0001", u"\u05E9\u05DC"});
    return all;
  }();
  return pieces;
}

constexpr std::u16string_view all_rtf_pieces =
    u"\\b |\\b0|\\b|\\i1 x|\\plain |\\f1 |\\f2|\\cf1 |\\fs40 |\\up6 |\\sub|\\scaps|\\v "
    u"|\\v0 |\\par |\\line|\\tab |\\cell |\\row|\\pard|\\qc |{|}|{\\*\\x|\\\\|\\{|\\}|\\~"
    u"|\\'e9|\\'82\\'a0|\\'|\\'8|\\u8364?|\\uc2 |\\u-10179?\\u-8704?|\\uc0|\\u233|\\bin3 "
    u"|\\bin1|\\|\r\n|\n|a|word|/b1|/|nl|~| |12|-1|\\endash |\\zzz9 |\\ansicpg932 "
    u"|{\\fonttbl{\\f1 Courier New;}{\\f2\\fcharset128 M\\'82;}}"
    u"|{\\colortbl;\\red0\\green128\\blue0;}|{\\shptxt a|{\\listtext 1.\\tab}"
    u"|{\\field{\\*\\fldinst SYMBOL 183 \\\\f Symbol}{\\fldrslt b}}|{\\upr{a}{\\*\\ud b}}";

const std::vector<std::u16string_view>& rtf_pieces() {
  static const auto pieces = records::split(all_rtf_pieces, u"|");
  return pieces;
}

/// An input, and the string that its bytes stand for.
struct Input {
  std::string bytes;
  std::u16string text;
  bool has_mark = false;  ///< so that it is a file
};

/// In UTF-16 with a mark.
Input in_utf16(test::Random& random, std::u16string text) {
  const bool big_endian = random.one_in(2);
  std::string bytes = big_endian ? "\xFE\xFF" : "\xFF\xFE";
  for (const char16_t unit : text) {
    const std::array<char, 2> ends = {static_cast<char>(unit & 0xFF), static_cast<char>(unit >> 8)};
    bytes.append({ends[big_endian ? 1 : 0], ends[big_endian ? 0 : 1]});
  }
  if (random.one_in(4)) {
    bytes.push_back('\x93');
    text.push_back(u'\u201C');
  }
  return {bytes, text, true};
}

Input random_text(test::Random& random, std::size_t pieces) {
  const std::vector<std::u16string_view> fillers = {u"x", u"/b1/b0", u"\n", u"\u00E9"};
  std::u16string text = test::repeated(random.pick(fillers), beginning);
  if (random.one_in(5)) {
    text.append(random.text(text_pieces(), pieces));
    return in_utf16(random, text);
  }
  static const std::vector<std::string_view> invalid = {
      "\xE9", "\x80", "\xC0\xAF", "\xED\xA0\x80", "\xE2\x82", "\xF0\x9F\x98", "\xF4\x90\x80\x80"};
  std::string bytes = to_utf8(text);
  for (; pieces > 0; --pieces) {
    if (random.one_in(12)) {
      bytes.append(random.pick(invalid));
    } else {
      bytes.append(to_utf8(random.pick(text_pieces())));
    }
  }
  text = from_utf8(bytes, richtext::decode_western);
  const bool has_mark = random.one_in(4);
  if (has_mark) bytes.insert(0, "\xEF\xBB\xBF");
  return {bytes, text, has_mark};
}

std::u16string rtf_of(test::Random& random, std::size_t pieces) {
  if (random.one_in(2)) return u"{\\rtf1 " + random.text(rtf_pieces(), pieces);
  std::u16string rtf = rtf_from_markup(random.text(text_pieces(), pieces));
  if (random.one_in(2)) rtf.erase(6 + random.below(rtf.size() - 6), random.below(20));
  if (random.one_in(2)) rtf.insert(6 + random.below(rtf.size() - 6), random.pick(rtf_pieces()));
  return rtf;
}

Input random_rtf(test::Random& random, std::size_t pieces) {
  std::u16string rtf = rtf_of(random, pieces);
  rtf.insert(6, test::repeated(u"\n", beginning));
  if (random.one_in(20)) rtf.insert(0, u"no RTF");
  if (random.one_in(5)) return in_utf16(random, rtf);
  const std::string bytes = random.one_in(2) ? richtext::rtf_to_bytes(rtf) : to_utf8(rtf);
  if (!is_rtf(bytes)) return {bytes, from_utf8(bytes, richtext::decode_western), false};
  return {bytes, richtext::rtf_from_bytes(bytes), false};
}

Options random_options(test::Random& random) {
  Options options;
  options.from =
      std::vector{InputFormat::qel, InputFormat::rtf, InputFormat::text}[random.below(3)];
  options.to = static_cast<OutputFormat>(random.below(8));
  options.html.paragraphs = random.one_in(2);
  options.way = random.one_in(4) ? Way::stated : Way::lossless;
  options.is_file = random.one_in(2);
  for (std::int16_t i = 4; i <= 9; ++i)
    options.fonts.put_Font(i, std::u16string(u"Font ") + u"456789"[i - 4]);
  if (random.one_in(3)) {
    options.switches = {random.one_in(2), random.one_in(2), random.one_in(2), random.one_in(2)};
  }
  return options;
}

/// What the members make of the whole string; none where they have no such conversion.
class Members {
 public:
  explicit Members(const Options& options) : options_(options), fonts_(options.fonts) {
    parser_.put_Lossless(is_lossless());
    parser_.put_ConvertNLToSpace(options.switches.convert_nl_to_space);
    parser_.put_ConvertTabsToSpace(options.switches.convert_tabs_to_space);
    parser_.put_RecognizeCRLF(options.switches.recognize_crlf);
    parser_.put_RecognizeTabs(options.switches.recognize_tabs);
  }

  std::optional<std::string> convert(std::u16string text) {
    switch (*options_.from) {
      case InputFormat::qel:
        return from_markup(options_.is_file && is_lossless() ? without_last_break(text) : text);
      case InputFormat::rtf:
        return richtext::is_rtf(text) ? from_rtf(text) : from_text(text);
      case InputFormat::text:
        return from_text(text);
      case InputFormat::html:
        break;
    }
    return {};
  }

 private:
  bool is_lossless() const { return options_.way == Way::lossless; }
  bool has_switches() const { return options_.switches != Switches(); }

  static std::u16string without_last_break(std::u16string text) {
    if (text.ends_with(u'\n')) text.pop_back();
    if (text.ends_with(u'\r')) text.pop_back();
    return text;
  }

  std::optional<std::string> from_markup(const std::u16string& markup) {
    switch (options_.to) {
      case OutputFormat::rtf:
        return in_bytes(parser_.QELToRTF(markup, fonts_, *options_.colors));
      case OutputFormat::rtf_body:
        return in_bytes(parser_.QELToRTFWithoutTables(markup));
      case OutputFormat::simple_rtf:
        if (is_lossless() && has_switches()) return {};
        return in_bytes(parser_.SimpleRTF(parser_.QELToRTF(markup, fonts_, *options_.colors),
                                          fonts_, *options_.colors));
      default:
        return decoded(markup);
    }
  }

  std::optional<std::string> from_rtf(const std::u16string& rtf) {
    if (options_.to == OutputFormat::rtf) {
      const richtext::CharFormat base = base_format(options_);
      const richtext::Document document = richtext::read_document(rtf, base);
      return in_bytes(richtext::write_rtf(document, {0, document.size()}, base));
    }
    if (options_.to == OutputFormat::text) return in_lines(parser_.RTFToText(rtf));
    if (is_lossless() && has_switches()) return {};
    if (options_.to == OutputFormat::simple_rtf)
      return in_bytes(parser_.SimpleRTF(rtf, fonts_, *options_.colors));
    const std::u16string markup = parser_.RTFToQEL(rtf, fonts_, *options_.colors);
    if (options_.to == OutputFormat::qel) return to_utf8(markup);
    if (options_.to == OutputFormat::rtf_body)
      return in_bytes(parser_.QELToRTFWithoutTables(markup));
    return is_lossless() || has_switches() ? std::nullopt : decoded(markup);
  }

  /// By way of markup that means the text.
  std::optional<std::string> from_text(std::u16string_view text) {
    if (!is_lossless()) return {};
    std::u16string plain = replace_all(std::u16string(text), u"\r\n", u"\n");
    plain = replace_all(std::move(plain), u"\r", u"\n");
    if (options_.to == OutputFormat::text) return in_lines(replace_all(plain, u"\n", u"\r\n"));
    const std::u16string markup = markup_from_text(text);
    EXPECT_EQ(text_from_markup(markup), replace_all(plain, u"\n", u"\r\n"));
    // Markup keeps breaks and tabs where it becomes a body.
    if (options_.to == OutputFormat::rtf_body && has_switches()) return {};
    return from_markup(markup);
  }

  std::optional<std::string> decoded(const std::u16string& markup) const {
    StyleDecoder decoder;
    decoder.put_Lossless(is_lossless());
    decoder.put_QELText(markup);
    if (options_.to == OutputFormat::text && (is_lossless() || !has_switches()))
      return in_lines(decoder.GetQELText(ofPlainText | ofLineCodes, false, false));
    if (has_switches()) return {};
    if (options_.to == OutputFormat::qel)
      return to_utf8(decoder.GetQELText(ofLineCodes, false, false));
    if (options_.to == OutputFormat::qelv6)
      return to_utf8(decoder.GetQELTextv6(ofLineCodes, false, false));
    return {};
  }

  /// Lossless, the switches act on the text, which the members do not do.
  std::string in_lines(std::u16string text) const {
    text = replace_all(std::move(text), u"\r\n", u"\n");
    const Switches& switches = options_.switches;
    if (!is_lossless()) return to_utf8(text);
    if (!switches.recognize_tabs) {
      text = replace_all(std::move(text), u"\t", switches.convert_tabs_to_space ? u" " : u"");
    }
    if (!switches.keep_breaks()) {
      text = replace_all(std::move(text), u"\n", switches.convert_nl_to_space ? u" " : u"");
    }
    if (switches.convert_nl_to_space && text.ends_with(u' ')) text.pop_back();
    return to_utf8(text);
  }

  static std::string in_bytes(std::u16string_view rtf) { return richtext::rtf_to_bytes(rtf); }

  const Options& options_;
  QELIndexFonts fonts_;
  RTFParser parser_;
};

/// How many of the bytes are read when they come all at once.
std::uint64_t read_at_once(std::string_view bytes, const Options& options) {
  Converter converter(options, [](std::string_view) {});
  converter.push(bytes);
  return converter.finish().bytes_in;
}

/// `bytes`, of which `read` count, pushed in parts, the first one up to `first_cut`.
template <class Size>
std::string pushed(std::string_view bytes, std::uint64_t read, const Options& options,
                   std::size_t first_cut, Size size) {
  std::string output;
  Converter converter(options, [&](std::string_view piece) { output.append(piece); });
  converter.push(bytes.substr(0, first_cut));
  for (std::size_t at = first_cut; at < bytes.size();) {
    const std::size_t count = size();
    converter.push(bytes.substr(at, count));
    at += count;
  }
  const Report report = converter.finish();
  EXPECT_EQ(report.bytes_in, read);
  EXPECT_EQ(report.bytes_out, output.size());
  EXPECT_FALSE(report.is_stopped);
  return output;
}

/// Shows where they begin to differ.
void expect_same(const std::string& is, const std::string& expected, const std::string& where) {
  if (is == expected) return;
  const auto at = std::mismatch(is.begin(), is.end(), expected.begin(), expected.end()).first;
  const auto from = static_cast<std::size_t>(std::max<std::ptrdiff_t>(at - is.begin() - 60, 0));
  EXPECT_EQ(is.substr(from, 120), expected.substr(from, 120)) << where;
  FAIL() << where;
}

void check_cuts(test::Random& random, const Input& input, const Options& options) {
  const std::string whole = convert(input.bytes, options);
  if (const auto expected = Members(options).convert(input.text)) {
    expect_same(whole, *expected, "all at once");
  }
  const std::size_t most = random.one_in(3) ? 1 : random.one_in(2) ? 8 : 5000;
  const auto size = [&] { return 1 + random.below(most); };
  const std::uint64_t read = read_at_once(input.bytes, options);
  expect_same(pushed(input.bytes, read, options, random.below(input.bytes.size()), size), whole,
              "in parts of up to " + std::to_string(most));
  // Whatever is cut in two, among a hundred bytes.
  if (options.way == Way::stated || input.bytes.size() <= beginning) return;
  const std::size_t from = beginning + random.below(input.bytes.size() - beginning);
  const std::size_t end = std::min(input.bytes.size(), from + 100);
  for (std::size_t at = input.bytes.size() > 5 * beginning ? end : from; at < end; ++at) {
    expect_same(pushed(input.bytes, read, options, at, [] { return std::string::npos / 2; }), whole,
                "cut at " + std::to_string(at));
  }
}

TEST(Convert, StreamsCutAnywhereGiveWhatTheMembersGive) {
  const Common::ConversionSlots slots;
  for (std::uint32_t i = 0; i < 2000; ++i) {
    test::Random random(test::base_seed() + i);
    Options options = random_options(random);
    // Now and then more than is written at once.
    const std::size_t pieces = random.one_in(25) ? 20000 : random.below(12);
    const Input input =
        options.from == InputFormat::rtf ? random_rtf(random, pieces) : random_text(random, pieces);
    options.is_file = options.is_file || input.has_mark;
    SCOPED_TRACE(random.describe() + " from " + std::to_string(static_cast<int>(*options.from)) +
                 " to " + std::to_string(static_cast<int>(options.to)) + " " +
                 (options.way == Way::lossless ? "lossless " : "stated ") +
                 test::shown(std::u16string_view(input.text).substr(beginning, 500)));
    check_cuts(random, input, options);
    if (HasFailure()) return;
  }
}

/// Takes what is written at every place where a stream may do so.
template <class Output>
class DrainedRuns : public RunSink {
 public:
  template <class... Arguments>
  explicit DrainedRuns(Arguments... arguments) : output_(arguments...) {}

  void text(std::u16string_view text, const style_codes::CodeState& state) override {
    output_.text(text, state);
    output_.drain(take_);
  }
  void line_break(const style_codes::CodeState& state) override {
    output_.line_break(state);
    output_.drain(take_);
  }
  void finish() override {
    output_.finish();
    output_.drain_all(take_);
  }
  const std::string& taken() const { return taken_; }

 private:
  Output output_;
  std::string taken_;
  std::function<void(std::u16string_view)> take_ = [this](auto piece) {
    append_utf8(taken_, piece);
  };
};

TEST(Convert, WhatIsWrittenDoesNotDependOnWhenItIsTaken) {
  for (std::uint32_t i = 0; i < 20000; ++i) {
    test::Random random(test::base_seed() + i);
    const std::u16string markup = random.text(text_pieces(), random.below(15));
    SCOPED_TRACE(random.describe() + " " + test::shown(markup));
    StyleDecoder decoder;
    decoder.put_Lossless(true);
    decoder.put_QELText(markup);
    RTFParser parser;
    parser.put_Lossless(true);
    DrainedRuns<MarkupOutput<char16_t>> written(style_codes::CodeSet::lossless, true);
    DrainedRuns<RtfOutput<char16_t>> body{RtfOutput<char16_t>::Body()};
    for (RunSink* const sink : {static_cast<RunSink*>(&written), static_cast<RunSink*>(&body)}) {
      MarkupScanner scanner(markup, Way::lossless);
      if (sink == &body) scanner.read_codes_of_rtf();
      read_runs(scanner, *sink);
      sink->finish();
    }
    ASSERT_EQ(written.taken(), to_utf8(decoder.get_QELText()));
    ASSERT_EQ(body.taken(), to_utf8(parser.QELToRTFWithoutTables(markup)));
  }
}

TEST(Convert, StringsInUtf16AndUtf8ConvertAlike) {
  const auto with_lines = [](std::u16string_view text) {
    return replace_all(std::u16string(text), u"\r\n", u"\n");
  };
  for (std::uint32_t i = 0; i < 2000; ++i) {
    test::Random random(test::base_seed() + i);
    const std::u16string text =
        std::u16string(random.below(2), u'\uFEFF') + random.text(text_pieces(), random.below(20));
    SCOPED_TRACE(random.describe() + " " + test::shown(text));
    const std::string bytes = to_utf8(text);
    EXPECT_EQ(rtf_from_markup(bytes), richtext::rtf_to_bytes(rtf_from_markup(text)));
    EXPECT_EQ(text_from_markup(bytes), to_utf8(with_lines(text_from_markup(text))));
    EXPECT_EQ(html_from_markup(bytes), to_utf8(html_from_markup(text)));
    EXPECT_EQ(markup_from_text(bytes), to_utf8(markup_from_text(text)));
    const std::string rtf = richtext::rtf_to_bytes(rtf_of(random, random.below(20)));
    const std::u16string units = richtext::rtf_from_bytes(rtf);
    EXPECT_EQ(markup_from_rtf(rtf), to_utf8(markup_from_rtf(units))) << rtf;
    EXPECT_EQ(text_from_rtf(rtf), to_utf8(with_lines(text_from_rtf(units)))) << rtf;
    EXPECT_EQ(html_from_rtf(rtf), to_utf8(html_from_rtf(units))) << rtf;
    if (HasFailure()) return;
  }
}

TEST(Convert, InputsWithoutMuchInThem) {
  struct Row {
    InputFormat from;
    std::string_view bytes;
    std::string text;
  };
  for (const Row& row : std::vector<Row>{
           {InputFormat::qel, "", ""},
           {InputFormat::rtf, "", ""},
           {InputFormat::text, "", ""},
           {InputFormat::qel, "\xEF\xBB\xBF", ""},
           {InputFormat::qel, "\xFF\xFE", ""},
           {InputFormat::qel, "\xEF\xBB", "\u00EF\u00BB"},
           {InputFormat::text, "a\xF0\x9F\x98", "a\u00F0\u0178\u02DC"},
           {InputFormat::text, "\xFE\xFF\xD8\x3D", "\uFFFD"},
           {InputFormat::text, std::string_view("\xFE\xFF\0a\xD8\x3D\xDE", 7), "a\uFFFD\u00DE"},
           {InputFormat::qel, "a\r\n", "a"},
           {InputFormat::text, "a\r", "a\n"},
           {InputFormat::rtf, "{\\rtf1 a\\'e", "ae"},
           {InputFormat::rtf, "{\\rtf1 \\u-10179?\\b \\u-8704?}", "\U0001F600"},
           {InputFormat::rtf, "{\\rtf1 a}b}", "a"}}) {
    const Options options = test::options_for(row.from, OutputFormat::text);
    EXPECT_EQ(convert(row.bytes, options), row.text) << row.bytes;
    const std::uint64_t read = row.bytes.find("}b}") == row.bytes.npos ? row.bytes.size() : 9;
    EXPECT_EQ(pushed(row.bytes, read, options, 0, [] { return std::size_t{1}; }), row.text);
  }
}

}  // namespace
}  // namespace qel::convert
