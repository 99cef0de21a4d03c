#pragma once

#include <benchmark/benchmark.h>

#include <cstddef>
#include <cstdint>

#include "Documents.h"

/// What every benchmark of a text does.
namespace qel::bench {

inline void all_sizes(benchmark::internal::Benchmark* benchmark) {
  benchmark->Arg(small_size)->Arg(medium_size)->Arg(large_size)->Unit(benchmark::kMillisecond);
}

/// The documents of the size that this run is for.
inline const Documents& input(const benchmark::State& state) {
  return documents(static_cast<std::size_t>(state.range(0)));
}

/// Each iteration read so many bytes, counted as a file holds them.
inline void count_bytes(benchmark::State& state, std::size_t bytes) {
  state.SetBytesProcessed(state.iterations() * static_cast<std::int64_t>(bytes));
}

/// Times `work`, which reads a file of so many bytes.
template <class Work>
void measure(benchmark::State& state, std::size_t bytes, Work work) {
  for ([[maybe_unused]] auto _ : state) {
    work();
    benchmark::ClobberMemory();
  }
  count_bytes(state, bytes);
}

}  // namespace qel::bench
