// The text box while it is used: keys, the text as markup, pasting.

#include <memory>

#include "Speed.h"
#include "qel/headless/BoxUser.h"
#include "qel/headless/ControlSite.h"
#include "qel/headless/HeadlessPlatform.h"
#include "qel/headless/PropertyBag.h"
#include "qel/platform/Keys.h"
#include "qel/qel.h"

namespace qel::bench {
namespace {

using benchmark::DoNotOptimize;
using benchmark::State;

/// A control for many lines that holds the text, and a user at it.
struct Desk {
  explicit Desk(const Documents& text) { control.put_TextQEL(text.markup); }

  static QELTextbox& restored(QELTextbox& control) {
    control.ReadProperties(headless::PropertyBag(u"Multiline=1\nSmartQuotes=True"));
    return control;
  }

  headless::ControlSite form;
  std::shared_ptr<headless::HeadlessPlatform> platform =
      std::make_shared<headless::HeadlessPlatform>();
  QELTextbox control{form, platform};
  platform::RichEdit& box = *restored(control).CurrentRichTextBox();
  headless::BoxUser user{box};
};

/// One key a time; the text grows by a tenth at most.
void type_keys(State& state, std::u16string_view key, bool in_the_middle) {
  Desk desk(input(state));
  const auto size = static_cast<std::int32_t>(desk.box.get_Text().size());
  desk.box.select({in_the_middle ? size / 2 : size, 0});
  for (auto _ : state) desk.user.type(key);
}
constexpr int keystrokes = 10'000;

void key_in_the_middle(State& state) { type_keys(state, u"x", true); }
BENCHMARK(key_in_the_middle)
    ->Arg(small_size)
    ->Iterations(keystrokes)
    ->Unit(benchmark::kMicrosecond);

void key_at_the_end(State& state) { type_keys(state, u"x", false); }
BENCHMARK(key_at_the_end)->Arg(small_size)->Iterations(keystrokes)->Unit(benchmark::kMicrosecond);

void typographic_quote(State& state) { type_keys(state, u"\"", true); }
BENCHMARK(typographic_quote)
    ->Arg(small_size)
    ->Iterations(keystrokes)
    ->Unit(benchmark::kMicrosecond);

void key_erases(State& state) {
  Desk desk(input(state));
  desk.box.select({static_cast<std::int32_t>(desk.box.get_Text().size() / 2), 0});
  for (auto _ : state) desk.user.press(keys::backspace_key);
}
BENCHMARK(key_erases)->Arg(small_size)->Iterations(keystrokes)->Unit(benchmark::kMicrosecond);

void shortcut(State& state) {
  Desk desk(input(state));
  desk.box.select({static_cast<std::int32_t>(desk.box.get_Text().size() / 2), 20});
  for (auto _ : state) desk.user.press('B', keys::ctrl_key);
}
BENCHMARK(shortcut)->Arg(small_size)->Iterations(keystrokes)->Unit(benchmark::kMicrosecond);

// The text as markup, beside the same by way of RTF.

void assign_text(State& state) {
  const Documents& text = input(state);
  Desk desk(text);
  measure(state, text.markup_bytes, [&] { desk.control.put_TextQEL(text.markup); });
}
BENCHMARK(assign_text)->Arg(small_size)->Arg(medium_size)->Unit(benchmark::kMillisecond);

void markup_to_box(State& state) {
  const Documents& text = input(state);
  QELIndexFonts fonts;
  const QELIndexColors colors;
  const Common::ConversionSlots slots;
  const RTFParser parser;
  box::Box box;
  measure(state, text.markup_bytes,
          [&] { box.put_TextRTF(parser.QELToRTF(text.markup, fonts, colors)); });
}
BENCHMARK(markup_to_box)->Arg(small_size)->Arg(medium_size)->Unit(benchmark::kMillisecond);

void box_to_markup(State& state) {
  const Documents& text = input(state);
  const QELIndexFonts fonts;
  const QELIndexColors colors;
  const Common::ConversionSlots slots;
  const RTFParser parser;
  box::Box box;
  box.put_TextRTF(text.rtf);
  measure(state, text.markup_bytes,
          [&] { DoNotOptimize(parser.RTFToQEL(box.get_TextRTF(), fonts, colors)); });
}
BENCHMARK(box_to_markup)->Arg(small_size)->Arg(medium_size)->Unit(benchmark::kMillisecond);

void read_text(State& state) {
  const Documents& text = input(state);
  const Desk desk(text);
  measure(state, text.markup_bytes, [&] { DoNotOptimize(desk.control.get_TextQEL()); });
}
BENCHMARK(read_text)->Arg(small_size)->Arg(medium_size)->Unit(benchmark::kMillisecond);

void read_reduced_rtf(State& state) {
  const Documents& text = input(state);
  const Desk desk(text);
  measure(state, text.markup_bytes, [&] { DoNotOptimize(desk.control.get_TextRTF()); });
}
BENCHMARK(read_reduced_rtf)->Arg(small_size)->Arg(medium_size)->Unit(benchmark::kMillisecond);

/// 10 kB of RTF into the middle of the text, and out again.
void paste(State& state) {
  constexpr std::size_t pasted_size = 10'000;
  Desk desk(input(state));
  const Documents& pasted = documents(pasted_size);
  desk.platform->clipboard().put(u"", pasted.rtf);
  const auto middle = static_cast<std::int32_t>(desk.box.get_Text().size() / 2);
  for (auto _ : state) {
    desk.box.select({middle, 0});
    desk.control.PasteClipboardContents();
    state.PauseTiming();
    desk.box.select({middle, desk.box.selection().start - middle});
    desk.box.put_SelText(u"");
    state.ResumeTiming();
  }
}
BENCHMARK(paste)->Arg(small_size)->Unit(benchmark::kMillisecond);

}  // namespace
}  // namespace qel::bench
