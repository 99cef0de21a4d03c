// unrtf, a converter of RTF that comes as a program: its text mode, by the processor time it takes.

#include "Process.h"
#include "Speed.h"

namespace qel::bench {
namespace {

void unrtf_to_text(benchmark::State& state) {
  const std::string& rtf = input(state).rtf_bytes;
  const TemporaryFile file(".rtf");
  file.write(rtf);
  for ([[maybe_unused]] auto _ : state) {
    const ProcessUse use = run_process({"unrtf", "--quiet", "--text", file.path()});
    if (!use.succeeded) {
      state.SkipWithError("unrtf failed");
      break;
    }
    state.SetIterationTime(use.cpu_seconds);
  }
  count_bytes(state, rtf.size());
}
BENCHMARK(unrtf_to_text)->Apply(all_sizes)->UseManualTime()->MinTime(0.1);

}  // namespace
}  // namespace qel::bench
