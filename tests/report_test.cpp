#include <gtest/gtest.h>

#include <string>
#include <string_view>

#include "qel/convert/Convert.h"
#include "support/Random.h"

namespace qel::convert {
namespace {

using namespace std::string_literals;

std::string described(const Report& report) {
  std::string text = report.is_broken_off ? "broken off " : "";
  for (const DroppedKind& kind : dropped_kinds) {
    if (report.dropped.*kind.count == 0) continue;
    text.append(kind.name).append(" ").append(std::to_string(report.dropped.*kind.count)) += " ";
  }
  return text;
}

TEST(Report, SaysWhatTheOutputLacks) {
  const std::string rtf =
      R"({\rtf1\ansicpg1253\deff0{\fonttbl{\f0 Arial;}{\f1 courier new;}{\f2 Georgia;}{\f3 Unused;}}{\colortbl;\red0\green0\blue255;\red1;})"
      R"({\header h}a{\fs40\f2 b}{\f1\cf1 c}{\cf2 d{\v e}}{\footnote n}{\field{\*\fldinst HYPERLINK "u"}{\fldrslt l}}\'e1\'ff\cell\row{\pict{\*\picprop{\sp{\sn wzDescription}{\sv p}}}0}{\object}})";
  const std::string parts =
      "pictures 1 objects 1 cells 1 rows 1 notes 1 headers 1 links 1 hidden 1 unknown 1 ";
  const std::string formats = "fonts 1 colors 1 sizes 1 ";
  const std::string kept = "pictures 1 objects 1 cells 1 rows 1 hidden 1 unknown 1 ";
  const std::string kept_text = "h\nabcd [n]l (u)\xCE\xB1\xC3\xBF\t\n[p]";
  const std::string packed =
      "\x2d\0\0\0\x05\0\0\0LZFu\xf1\xc5\xc7\xa7"s
      "\x41\0\x04 WXYZ\x0dn}\x01\x0e\xb0"s;
  struct Row {
    InputFormat from;
    OutputFormat to;
    Way way;
    bool keeps;  ///< all that is kept on request
    std::string input, output, report;
  };
  using In = InputFormat;
  using Out = OutputFormat;
  const Row rows[] = {
      {In::rtf, Out::text, Way::lossless, false, rtf, "abcdl\xCE\xB1\xC3\xBF\t\n", parts},
      {In::rtf, Out::text, Way::lossless, true, rtf, kept_text, kept},
      {In::rtf, Out::text, Way::stated, true, rtf, kept_text, kept},
      {In::rtf, Out::qel, Way::lossless, true, rtf,
       "h/nlab/y2/f2c/f0/y0d [n]l (u)\xCE\xB1\xC3\xBF\t/nl[p]", kept + formats},
      {In::rtf, Out::qel, Way::stated, false, rtf, "ab/y2c/y0dl\xCE\xB1\xC3\xBF\t/nl",
       parts + "fonts 2 colors 1 sizes 1 "},
      {In::rtf, Out::rtf, Way::lossless, false, rtf.substr(0, rtf.size() - 1), "",
       "broken off " + parts},
      {In::rtf, Out::text, Way::lossless, true, "{\\rtf1 a{\\footnote b\\", "a [b]", "broken off "},
      {In::rtf, Out::text, Way::lossless, false, packed, "WXYZWXYZWXYZWXYZWXYZ", ""},
      {In::rtf, Out::text, Way::lossless, false, packed.substr(0, 30), "WXYZWXYZWXYZWXYZWXYZ", ""},
      {In::qel, Out::rtf_body, Way::lossless, false, "/f7a", "\\f7 a\\f0 ", ""},
      {In::qel, Out::rtf, Way::lossless, false, "/f7a/f1b/f8", "", "fonts 1 "},
      {In::qel, Out::simple_rtf, Way::stated, false, "/f7a/f1b/f8c", "", "fonts 2 "},
      {In::rtf, Out::qel, Way::lossless, false,
       R"({\rtf1{\fonttbl{\f0 Arial;}{\f1 courier new CYR;}}a\f1 b})", "a/f2b/f0", ""},
      {In::qel, Out::html, Way::lossless, false, "/f7a/f2b", "", "fonts 1 "},
      {In::qel, Out::qelv6, Way::lossless, false, "/f3/k1a/f0/k0/y4b/y0/y2c/y0/f2/y3d",
       "a/f0b/z1c/z0/f2d/f0", "fonts 1 colors 2 formats 1 "},
      {In::qel, Out::qelv6, Way::stated, false, "/f3/k1a/f0/k0/y3b", "a/f0b",
       "fonts 1 colors 1 formats 1 "},
  };
  test::Random random(test::base_seed());
  for (const Row& row : rows) {
    SCOPED_TRACE(random.describe() + row.input + " " + std::string(extension_of(row.to)));
    Options options;
    options.from = row.from;
    options.to = row.to;
    options.way = row.way;
    options.switches = {};
    if (row.keeps) options.extras = {true, true, true, true};
    std::string whole;
    for (const std::size_t longest : {row.input.size(), std::size_t{7}}) {
      std::string output;
      Converter converter(options, [&](std::string_view piece) { output.append(piece); });
      for (std::size_t at = 0, size = 0; at < row.input.size(); at += size) {
        size = longest == 7 ? 1 + random.below(longest) : longest;
        if (!converter.push(std::string_view(row.input).substr(at, size))) break;
      }
      const Report report = converter.finish();
      EXPECT_EQ(described(report), row.report);
      if (!row.output.empty()) {
        EXPECT_EQ(output, row.output);
      }
      EXPECT_TRUE(whole.empty() || output == whole);
      whole = output;
    }
  }
}

}  // namespace
}  // namespace qel::convert
