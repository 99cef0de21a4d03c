// md4c, a parser of Markdown that calls back: parsing alone, and to HTML in a buffer.

#include <md4c-html.h>
#include <md4c.h>

#include "Speed.h"

namespace qel::bench {
namespace {

MD_SIZE size_of(const std::string& text) { return static_cast<MD_SIZE>(text.size()); }

void md4c_parse(benchmark::State& state) {
  const std::string& text = input(state).markdown;
  MD_PARSER parser = {};
  parser.enter_block = parser.leave_block = [](MD_BLOCKTYPE, void*, void*) { return 0; };
  parser.enter_span = parser.leave_span = [](MD_SPANTYPE, void*, void*) { return 0; };
  parser.text = [](MD_TEXTTYPE, const MD_CHAR*, MD_SIZE, void*) { return 0; };
  measure(state, text.size(), [&] {
    if (md_parse(text.data(), size_of(text), &parser, nullptr) != 0) state.SkipWithError("failed");
  });
}
BENCHMARK(md4c_parse)->Apply(all_sizes);

void append(const MD_CHAR* text, MD_SIZE size, void* out) {
  static_cast<std::string*>(out)->append(text, size);
}

void md4c_to_html(benchmark::State& state) {
  const std::string& text = input(state).markdown;
  measure(state, text.size(), [&] {
    std::string html;
    html.reserve(text.size() + text.size() / 4);
    if (md_html(text.data(), size_of(text), append, &html, 0, 0) != 0) {
      state.SkipWithError("failed");
    }
    benchmark::DoNotOptimize(html);
  });
}
BENCHMARK(md4c_to_html)->Apply(all_sizes);

}  // namespace
}  // namespace qel::bench
