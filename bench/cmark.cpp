// cmark, the reference implementation of CommonMark: a tree, then HTML.

#include <cmark.h>

#include <cstdlib>

#include "Speed.h"

namespace qel::bench {
namespace {

void cmark_to_html(benchmark::State& state) {
  const std::string& text = input(state).markdown;
  measure(state, text.size(), [&] {
    char* const html = cmark_markdown_to_html(text.data(), text.size(), CMARK_OPT_DEFAULT);
    benchmark::DoNotOptimize(html);
    cmark_get_default_mem_allocator()->free(html);
  });
}
BENCHMARK(cmark_to_html)->Apply(all_sizes);

}  // namespace
}  // namespace qel::bench
