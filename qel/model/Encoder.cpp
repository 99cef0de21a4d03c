#include "qel/model/Encoder.h"

#include <cstddef>
#include <deque>
#include <optional>
#include <string_view>
#include <utility>
#include <vector>

#include "qel/model/QELCode.h"
#include "qel/model/Trimming.h"

namespace qel {
namespace {

using style_codes::CodeSet;
using style_codes::CodeState;

bool is_left_out(const CodeState& state, const OutputOptions& options) {
  return (options.without_ignored && state.color == ignored_color) ||
         (options.without_hidden && state.color == hidden_color) ||
         (options.without_note && state.color == note_color);
}

/// Writes codes in the spelling that the options ask for.
class CodeWriter {
 public:
  CodeWriter(std::u16string& out, const OutputOptions& options)
      : out_(out),
        options_(options),
        set_(options.codes == OutputOptions::Codes::v6 ? CodeSet::v6 : CodeSet::current) {}

  void opening(const CodeState& state, const CodeState* last) {
    write([&](std::u16string& to) {
      if (last == nullptr) {
        style_codes::append_on(to, state, set_);
      } else {
        style_codes::append_different_on(to, state, *last, set_);
      }
    });
  }

  void closing(const CodeState& state, const CodeState* next) {
    write([&](std::u16string& to) { style_codes::append_different_off(to, state, next, set_); });
  }

  void line_codes(std::int32_t count) {
    if (!options_.line_codes && options_.codes != OutputOptions::Codes::custom) return;
    for (; count > 0; --count) {
      if (options_.codes == OutputOptions::Codes::none) {
        out_.append(u"\r\n");
      } else {
        write([](std::u16string& to) { to.append(u"/nl"); });
      }
    }
  }

 private:
  template <class Append>
  void write(Append append) {
    switch (options_.codes) {
      case OutputOptions::Codes::none:
        return;
      case OutputOptions::Codes::custom:
        scratch_.clear();
        append(scratch_);
        options_.custom->append_translated(out_, scratch_);
        return;
      default:
        append(out_);
    }
  }

  std::u16string& out_;
  const OutputOptions& options_;
  CodeSet set_;
  std::u16string scratch_;
};

/// Writes runs as they come. The codes between two runs depend on both, so each run waits for the
/// next.
class RunWriter {
 public:
  RunWriter(std::u16string& out, const OutputOptions& options)
      : out_(out),
        codes_(out, options),
        is_custom_(options.codes == OutputOptions::Codes::custom) {}

  void add(const Run& run) {
    if (run_) write(*run_, &run.state);
    if (run_) last_ = run_->state;
    run_ = run;
  }

  void finish(std::int32_t line_codes_at_end) {
    if (run_) write(*run_, nullptr);
    codes_.line_codes(line_codes_at_end);
  }

 private:
  void write(const Run& run, const CodeState* next) {
    codes_.line_codes(run.line_codes_before);
    codes_.opening(run.state, last_ ? &*last_ : nullptr);
    if (is_custom_) {
      // Only the text: the host's own spelling of the codes is not ours to change.
      out_.append(restore_escaped_codes(std::u16string(run.text)));
    } else {
      out_.append(run.text);
    }
    codes_.closing(run.state, next);
  }

  std::u16string& out_;
  CodeWriter codes_;
  bool is_custom_;
  std::optional<Run> run_;  // waits for the next
  std::optional<CodeState> last_;
};

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
    visit(Run{segment->text(), state, std::exchange(line_codes, 0)});
  }
  return line_codes;
}

}  // namespace

std::u16string encode(const SegmentCollection& segments, std::int32_t line_codes_at_end,
                      const OutputOptions& options) {
  std::u16string out;
  const auto only_segment = segments.Count() == 1 ? segments.Item(1) : nullptr;
  const bool nothing_to_style = only_segment && only_segment->length() == 0;
  if (nothing_to_style && !options.line_codes) return out;
  out.reserve(expected_size(segments));
  RunWriter writer(out, options);
  if (trims(options)) {
    std::vector<Run> runs;
    line_codes_at_end +=
        for_each_run(segments, options, [&](const Run& run) { runs.push_back(run); });
    std::deque<std::u16string> changed_texts;
    trim(runs, options, changed_texts);
    for (const Run& run : runs) writer.add(run);
    writer.finish(line_codes_at_end);
  } else {
    line_codes_at_end += for_each_run(segments, options, [&](const Run& run) { writer.add(run); });
    writer.finish(line_codes_at_end);
  }
  if (options.codes == OutputOptions::Codes::custom) return out;
  return restore_escaped_codes(std::move(out));
}

}  // namespace qel
