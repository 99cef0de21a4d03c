// What the library does.

#include "Speed.h"
#include "qel/box/Box.h"
#include "qel/convert/Convert.h"
#include "qel/qel.h"

namespace qel::bench {
namespace {

using benchmark::DoNotOptimize;
using benchmark::State;

/// A parser that keeps line breaks, and what it needs around it.
struct Converter {
  Common::ConversionSlots slots;
  QELIndexFonts fonts;
  QELIndexColors colors;
  RTFParser parser;

  Converter() {
    parser.put_ConvertNLToSpace(false);
    parser.put_RecognizeCRLF(true);
  }
  std::u16string to_rtf(std::u16string_view markup) {
    return parser.QELToRTF(markup, fonts, colors);
  }
  std::u16string to_markup(std::u16string_view rtf) const {
    return parser.RTFToQEL(rtf, fonts, colors);
  }
};

void markup_to_rtf(State& state) {
  const Documents& text = input(state);
  Converter converter;
  measure(state, text.markup_bytes, [&] { DoNotOptimize(converter.to_rtf(text.markup)); });
}
BENCHMARK(markup_to_rtf)->Apply(all_sizes);

/// Each piece is looked at and dropped, as a file or a pipe would take it.
void convert_bytes(State& state, const std::string& bytes, convert::InputFormat from,
                   convert::OutputFormat to) {
  convert::Options options;
  options.from = from;
  options.to = to;
  measure(state, bytes.size(), [&] {
    convert::Converter converter(options, [](std::string_view piece) { DoNotOptimize(piece); });
    converter.push(bytes);
    DoNotOptimize(converter.finish());
  });
}

void rtf_file_to_markup(State& state) {
  convert_bytes(state, input(state).rtf_bytes, convert::InputFormat::rtf,
                convert::OutputFormat::qel);
}
BENCHMARK(rtf_file_to_markup)->Apply(all_sizes);

void rtf_file_to_text(State& state) {
  convert_bytes(state, input(state).rtf_bytes, convert::InputFormat::rtf,
                convert::OutputFormat::text);
}
BENCHMARK(rtf_file_to_text)->Apply(all_sizes);

void markup_file_to_rtf(State& state) {
  convert_bytes(state, input(state).markup_file, convert::InputFormat::qel,
                convert::OutputFormat::rtf);
}
BENCHMARK(markup_file_to_rtf)->Apply(all_sizes);

void markup_file_to_html(State& state) {
  convert_bytes(state, input(state).markup_file, convert::InputFormat::qel,
                convert::OutputFormat::html);
}
BENCHMARK(markup_file_to_html)->Apply(all_sizes);

void markup_file_to_text(State& state) {
  convert_bytes(state, input(state).markup_file, convert::InputFormat::qel,
                convert::OutputFormat::text);
}
BENCHMARK(markup_file_to_text)->Apply(all_sizes);

void rtf_string_to_markup(State& state) {
  const Documents& text = input(state);
  const Converter converter;
  measure(state, text.rtf_bytes.size(), [&] { DoNotOptimize(converter.to_markup(text.rtf)); });
}
BENCHMARK(rtf_string_to_markup)->Apply(all_sizes);

void decode(State& state) {
  const Documents& text = input(state);
  StyleDecoder decoder;
  measure(state, text.markup_bytes, [&] { decoder.put_QELText(text.markup); });
}
BENCHMARK(decode)->Apply(all_sizes);

void decode_into_words(State& state) {
  const Documents& text = input(state);
  StyleDecoder decoder;
  measure(state, text.markup_bytes, [&] { decoder.SetQELText(text.markup, 1); });
}
BENCHMARK(decode_into_words)->Apply(all_sizes);

void encode(State& state) {
  const Documents& text = input(state);
  StyleDecoder decoder;
  decoder.put_QELText(text.markup);
  measure(state, text.markup_bytes, [&] { DoNotOptimize(decoder.get_QELText()); });
}
BENCHMARK(encode)->Apply(all_sizes);

void box_to_rtf(State& state) {
  const Documents& text = input(state);
  box::Box box;
  box.put_TextRTF(text.rtf);
  measure(state, text.rtf_bytes.size(), [&] { DoNotOptimize(box.get_TextRTF()); });
}
BENCHMARK(box_to_rtf)->Apply(all_sizes);

}  // namespace
}  // namespace qel::bench
