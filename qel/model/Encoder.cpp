#include "qel/model/Encoder.h"

#include <cstddef>
#include <deque>
#include <string_view>
#include <utility>
#include <vector>

#include "qel/model/QELCode.h"
#include "qel/model/RunWriter.h"
#include "qel/model/Trimming.h"

namespace qel {
namespace {

using style_codes::CodeState;

bool is_left_out(const CodeState& state, const OutputOptions& options) {
  return (options.without_ignored && state.color == ignored_color) ||
         (options.without_hidden && state.color == hidden_color) ||
         (options.without_note && state.color == note_color);
}

std::size_t expected_size(const SegmentCollection& segments) {
  constexpr std::size_t codes_per_run = 8;
  std::size_t size = 0;
  for (const auto& segment : segments) size += segment->text().size() + codes_per_run;
  return size;
}

/// Calls `visit` with each run that is not left out, and returns the line codes after the last.
template <class Visit>
std::int32_t for_each_run(const SegmentCollection& segments, const OutputOptions& options,
                          Visit visit) {
  std::int32_t line_codes = 0;
  for (const auto& segment : segments) {
    line_codes += segment->line_codes_before();
    const CodeState state = segment->code_state();
    if (is_left_out(state, options)) continue;
    visit(Run{segment->text(), state, std::exchange(line_codes, 0), segment->origin()});
  }
  return line_codes;
}

}  // namespace

std::u16string encode(const SegmentCollection& segments, const OutputOptions& options) {
  std::u16string out;
  const auto only_segment = segments.Count() == 1 ? segments.Item(1) : nullptr;
  const bool nothing_to_style = only_segment && only_segment->length() == 0;
  if (nothing_to_style && !options.line_codes && options.way == Way::stated) return out;
  out.reserve(expected_size(segments));
  std::deque<std::u16string> changed_texts;  // the writer holds on to the last run
  RunWriter writer(out, options);
  std::int32_t line_codes_at_end = segments.line_codes_at_end();
  if (trims(options)) {
    std::vector<Run> runs;
    line_codes_at_end +=
        for_each_run(segments, options, [&](const Run& run) { runs.push_back(run); });
    trim(runs, options, changed_texts);
    for (const Run& run : runs) writer.add(run);
  } else {
    line_codes_at_end += for_each_run(segments, options, [&](const Run& run) { writer.add(run); });
  }
  writer.finish(line_codes_at_end, options.is_cut);
  if (options.codes == OutputOptions::Codes::custom || options.way == Way::lossless) return out;
  return restore_escaped_codes(std::move(out));
}

}  // namespace qel
