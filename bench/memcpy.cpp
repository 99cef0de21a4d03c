// The limit: nothing that reads a text and writes one is faster than copying it.

#include <cstring>
#include <vector>

#include "Speed.h"

namespace qel::bench {
namespace {

void copy_memory(benchmark::State& state) {
  const std::string& text = input(state).markdown;
  std::vector<char> copy(text.size());
  measure(state, text.size(), [&] {
    std::memcpy(copy.data(), text.data(), text.size());
    benchmark::DoNotOptimize(copy.data());
  });
}
BENCHMARK(copy_memory)->Apply(all_sizes);

}  // namespace
}  // namespace qel::bench
