// Runs each kind of work on each hostile text, in three sizes, and prints a line for each run:
// "WORK of SHAPE" and the size, separated by a TAB. run.sh counts the instructions of each run.
// Usage: pathological PART PARTS

#include <cstdio>
#include <cstdlib>
#include <functional>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include "pathological/Shapes.h"
#include "qel/base/Utf8.h"
#include "qel/convert/Convert.h"
#include "qel/convert/Lint.h"
#include "qel/convert/Normalize.h"
#include "qel/headless/FixedCanvas.h"
#include "qel/model/StyleDecoder.h"
#include "qel/model/TextAttribute.h"
#include "qel/platform/Common.h"
#include "qel/richtext/RtfBytes.h"
#include "qel/text/MarkupStrings.h"
#include "qel/text/TextAndFormatting.h"
#include "qel/text/TextCase.h"

/// Its instructions are those that count.
extern "C" void pathological_run(const std::function<void()>& work) { work(); }

namespace qel::hostile {
namespace {

/// Through a pointer that may change, so that it is called as it is.
void (*volatile run_counted)(const std::function<void()>&) = pathological_run;

struct Work {
  std::string name;
  std::function<void(std::u16string_view text)> run;
  std::size_t times = 1;  // as large a text as the shape says
};

/// Pieces that end everywhere.
void pass_through(std::u16string_view text, convert::InputFormat from, convert::OutputFormat to,
                  Way way) {
  convert::Options options;
  options.from = from;
  options.to = to;
  options.way = way;
  constexpr std::size_t piece = 61;
  const std::string bytes =
      from == convert::InputFormat::rtf ? richtext::rtf_to_bytes(text) : to_utf8(text);
  convert::Converter converter(options, [](std::string_view) {});
  for (std::size_t at = 0; at < bytes.size(); at += piece) {
    converter.push(std::string_view(bytes).substr(at, piece));
  }
  converter.finish();
}

void add_conversions(std::vector<Work>& works, convert::InputFormat from) {
  using convert::OutputFormat;
  const auto add = [&](const std::string& name, OutputFormat to, Way way) {
    // They are quick, and have to be more than a few parts of their input.
    works.push_back({name, [from, to, way](auto text) { pass_through(text, from, to, way); }, 4});
  };
  add("to markup", OutputFormat::qel, Way::lossless);
  add("to RTF", OutputFormat::rtf, Way::lossless);
  add("to reduced RTF", OutputFormat::simple_rtf, Way::lossless);
  add("to runs", OutputFormat::segments, Way::lossless);
  add("to HTML", OutputFormat::html, Way::lossless);
  add("stated, to reduced RTF", OutputFormat::simple_rtf, Way::stated);
  add("stated, to runs", OutputFormat::segments, Way::stated);
}

std::vector<Work> rtf_works() {
  std::vector<Work> works;
  add_conversions(works, convert::InputFormat::rtf);
  works.push_back({"title case", [](auto text) { TextCase().AutoTitleCaseRTF(text); }});
  return works;
}

void search(std::u16string_view text, Way way) {
  using namespace markup;
  const std::size_t length = text.size() / 4;
  // All of it but its last character is everywhere, or all but its first.
  const std::u16string late = std::u16string(text.substr(0, length)) + u"\u0416";
  const std::u16string early = u"\u0416" + std::u16string(text.substr(0, length));
  for (const auto matching : {Matching::exact, Matching::ignoring_case}) {
    for (const std::u16string& wanted : {late, early}) {
      find(text, wanted, matching, way);
      find_last(text, wanted, matching, npos, way);
    }
  }
}

void cut(std::u16string_view text, Way way) {
  using namespace markup;
  const std::size_t middle = length(text, way) / 2;
  left(text, middle, way);
  right(text, middle, way);
  mid(text, middle / 2, middle, way);
  replace(text, middle, middle / 2, u"/b1new/b0", way);
  toggle(text, taBold, middle / 2, middle, way);
}

void split(std::u16string_view text, Way way) {
  for (const std::u16string_view delimiter : {u"a", u"/", u" ", u"~", u"\u0416"}) {
    markup::split(text, delimiter, way);
  }
}

void decode(std::u16string_view text, Way way) {
  StyleDecoder decoder;
  decoder.put_Lossless(way == Way::lossless);
  for (const std::int32_t division : {0, 1, 3}) {
    decoder.SetQELText(text, division);
    decoder.get_Words();
    decoder.GetQELTextv6(ofLineCodes, true, true);
  }
  decoder.put_QELText(text);
  const auto half = static_cast<std::ptrdiff_t>(decoder.get_Text().size() / 2);
  decoder.divide(half / 2, half);
  decoder.RemoveTrailingPunctuation(text);
}

void lay_out(std::u16string_view text, Way way) {
  TextAndFormatting engine;
  engine.put_Lossless(way == Way::lossless);
  engine.put_Canvas(std::make_shared<headless::FixedCanvas>());
  engine.LineCount(text, 1, 0);
  engine.WriteParagraph(text, 0, 0, 100, 0);
}

std::vector<Work> markup_works() {
  std::vector<Work> works;
  add_conversions(works, convert::InputFormat::qel);
  works.push_back({"lint", [](auto text) { convert::lint(text, {}, [](const auto&) {}); }});
  works.push_back({"the shortest markup", [](auto text) { convert::normalized(text); }});
  for (const Way way : {Way::lossless, Way::stated}) {
    const std::string name = way == Way::lossless ? "" : "stated, ";
    works.push_back({name + "searching", [way](auto text) { search(text, way); }});
    works.push_back({name + "cutting", [way](auto text) { cut(text, way); }});
    works.push_back({name + "splitting", [way](auto text) { split(text, way); }});
    works.push_back({name + "decoding", [way](auto text) { decode(text, way); }});
    works.push_back({name + "layout", [way](auto text) { lay_out(text, way); }});
    works.push_back(
        {name + "case", [way](auto text) {
           for (const auto change : {CaseChange::swap, CaseChange::title, CaseChange::initial}) {
             markup::change_case(text, change, text.size() / 20, text.size() / 10, way);
           }
         }});
  }
  return works;
}

/// Many small texts instead of a large one.
void convert_one_by_one(std::size_t count) {
  for (; count > 0; --count) {
    convert::rtf_from_markup(std::string_view("/b1a/b0"));
    convert::markup_from_rtf(std::string_view("{\\rtf1\\b a}"));
  }
}

void run_all(std::u16string_view beginning, const std::vector<Shape>& shapes,
             const std::vector<Work>& works, std::size_t part, std::size_t parts) {
  std::size_t number = 0;
  for (const Work& work : works) {
    for (const Shape& shape : shapes) {
      if (number++ % parts != part) continue;
      const std::size_t once = work.times * shape.size;
      for (const std::size_t size : {once / 20, once, 4 * once}) {
        const std::u16string text = std::u16string(beginning) + shape.text(size);
        run_counted([&] { work.run(text); });
        std::printf("%s of %.*s\t%zu\n", work.name.c_str(), static_cast<int>(shape.name.size()),
                    shape.name.data(), size);
      }
    }
  }
}

}  // namespace
}  // namespace qel::hostile

int main(int argc, char** argv) {
  using namespace qel::hostile;
  if (argc != 3) return EXIT_FAILURE;
  const auto part = std::size_t{std::strtoul(argv[1], nullptr, 10)};
  const auto parts = std::size_t{std::strtoul(argv[2], nullptr, 10)};
  const qel::Common::ConversionSlots slots;
  run_all(u"", markup_shapes(), markup_works(), part, parts);
  run_all(u"{\\rtf1 ", rtf_shapes(), rtf_works(), part, parts);
  if (part == 0) {
    for (const std::size_t count : {5U, 100U, 400U}) {
      run_counted([count] { convert_one_by_one(count); });
      std::printf("one by one\t%zu\n", count);
    }
  }
  return EXIT_SUCCESS;
}
