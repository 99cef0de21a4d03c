// Work on formatted text: string functions, toggles, case and word wrap.

#include <memory>

#include "Speed.h"
#include "qel/headless/SvgCanvas.h"
#include "qel/qel.h"

namespace qel::bench {
namespace {

using benchmark::DoNotOptimize;
using benchmark::State;

void string_size_only(benchmark::internal::Benchmark* benchmark) {
  benchmark->Arg(string_size)->Unit(benchmark::kMicrosecond);
}

/// What everything here is compared with.
void decode_and_encode(State& state) {
  const Documents& text = input(state);
  StyleDecoder decoder;
  measure(state, text.markup_bytes, [&] {
    decoder.put_QELText(text.markup);
    DoNotOptimize(decoder.get_QELText());
  });
}
BENCHMARK(decode_and_encode)->Apply(string_size_only);

/// Times one call of a member of the text object.
template <class Call>
void measure_call(State& state, Call call) {
  const Documents& text = input(state);
  QELText tools;
  tools.put_QELText(text.markup);
  measure(state, text.markup_bytes, [&] { call(tools, text.markup); });
}

#define QEL_MEASURE_CALL(name, call)                                       \
  void name(State& state) {                                                \
    measure_call(state, [](QELText& tools, const std::u16string& markup) { \
      static_cast<void>(tools), static_cast<void>(markup);                 \
      call;                                                                \
    });                                                                    \
  }                                                                        \
  BENCHMARK(name)->Apply(string_size_only)

QEL_MEASURE_CALL(in_string, DoNotOptimize(tools.InString(markup, u"nowhere")));
QEL_MEASURE_CALL(in_string_any_case, DoNotOptimize(tools.InString(markup, u"nowhere", 1)));
QEL_MEASURE_CALL(in_string_rev, DoNotOptimize(tools.InStringRev(markup, u"nowhere")));
QEL_MEASURE_CALL(len_str, DoNotOptimize(tools.LenStr(markup)));
QEL_MEASURE_CALL(plain_text, DoNotOptimize(tools.PlainText(markup)));
QEL_MEASURE_CALL(left_str, std::int16_t length = 15'000;
                 DoNotOptimize(tools.LeftStr(markup, length)));
QEL_MEASURE_CALL(right_str, std::int16_t length = 15'000;
                 DoNotOptimize(tools.RightStr(markup, length)));
QEL_MEASURE_CALL(mid_str, DoNotOptimize(tools.MidStr(markup, 100, 25'000)));
QEL_MEASURE_CALL(stuff, iStyle style;
                 DoNotOptimize(tools.Stuff(markup, 15'000, 10, u"/b1new/b0", &style)));
QEL_MEASURE_CALL(stuff_with_style_data,
                 DoNotOptimize(tools.StuffWithStyleData(markup, 15'000, 10, u"new",
                                                        cReplaceData())));
QEL_MEASURE_CALL(split_words, DoNotOptimize(tools.Split(markup, u" ")));
QEL_MEASURE_CALL(split_sentences, DoNotOptimize(tools.Split(markup, u".")));
QEL_MEASURE_CALL(compare_texts, DoNotOptimize(tools.Compare(markup, markup)));
QEL_MEASURE_CALL(fmt_left, DoNotOptimize(TextAndFormatting::fmtLeft(markup, 15'000)));
QEL_MEASURE_CALL(fmt_mid, DoNotOptimize(TextAndFormatting::fmtMid(markup, 100, 15'000)));
QEL_MEASURE_CALL(toggle_bold, tools.ToggleTextAttribute(taBold, 0, 0));
QEL_MEASURE_CALL(toggle_color, tools.ToggleTextAttribute(taColor4, 0, 0));
QEL_MEASURE_CALL(toggle_upper_case, tools.ToggleTextAttribute(taUpperCase, 0, 0));
QEL_MEASURE_CALL(toggle_title_case, tools.ToggleTextAttribute(taTitleCase, 0, 0));
QEL_MEASURE_CALL(title_case, DoNotOptimize(tools.TitleCase(markup, 0, -1, true)));

#undef QEL_MEASURE_CALL

/// All of a document as one paragraph.
void word_wrap(State& state) {
  const Documents& text = input(state);
  TextAndFormatting layout;
  const auto canvas = std::make_shared<headless::SvgCanvas>(450);
  measure(state, text.markup_bytes, [&] {
    layout.put_Canvas(canvas);  // forgets the lines of the last text
    DoNotOptimize(layout.LineCount(text.markup, 450, 0));
  });
}
BENCHMARK(word_wrap)
    ->Arg(ten_thousand_words)
    ->Arg(hundred_thousand_words)
    ->Unit(benchmark::kMillisecond);

}  // namespace
}  // namespace qel::bench
