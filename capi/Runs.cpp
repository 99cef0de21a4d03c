#include <deque>
#include <memory>
#include <string>
#include <utility>

#include "Buffer.h"
#include "Guard.h"
#include "MarkupReading.h"
#include "Options.h"
#include "qel/base/Utf8.h"
#include "qel/model/StyleDecoder.h"
#include "qel/richtext/CodePage.h"

struct qel_runs {
  qel::capi::Buffer text;
  std::deque<qel_run> runs;
};

namespace qel::capi {
namespace {

using style_codes::CodeState;

std::uint8_t has(const CodeState& state, style_codes::AttributeBit bit) {
  return (state.attributes & bit) != 0 ? 1 : 0;
}

qel_run run_of(const CodeState& state) {
  qel_run run = {};
  run.bold = has(state, style_codes::bold_bit);
  run.italic = has(state, style_codes::italic_bit);
  run.underline = has(state, style_codes::underline_bit);
  run.strike = has(state, style_codes::strike_through_bit);
  run.superscript = has(state, style_codes::superscript_bit);
  run.subscript = has(state, style_codes::subscript_bit);
  run.small_caps = has(state, style_codes::small_caps_bit);
  run.font = static_cast<std::uint8_t>(state.font);
  run.color = static_cast<std::uint8_t>(state.color);
  return run;
}

/// Collects runs.
class Runs : public TextSink {
 public:
  explicit Runs(qel_runs& to) : to_(to) {}

  void text(std::u16string_view text, const CodeState& state) override {
    if (line_breaks_ > 0 || to_.runs.empty() || state != state_) begin_run(state);
    scratch_.clear();
    append_utf8(scratch_, text);
    to_.text.append(scratch_);
    to_.runs.back().text.size += scratch_.size();
  }
  void line_break(const CodeState& /*state*/) override { ++line_breaks_; }
  /// The texts stay where they are from now on.
  void finish() override {
    if (line_breaks_ > 0) begin_run({});
    const char* data = to_.text.data();
    for (qel_run& run : to_.runs) {
      run.text.data = run.text.size == 0 ? nullptr : data;
      data += run.text.size;
    }
  }

 private:
  void begin_run(const CodeState& state) {
    to_.runs.push_back(run_of(state));
    to_.runs.back().line_breaks = std::exchange(line_breaks_, 0);
    state_ = state;
  }

  qel_runs& to_;
  CodeState state_;
  std::uint32_t line_breaks_ = 0;
  std::string scratch_;
};

/// In the stated way, which decodes whole texts.
void read_stated(std::string_view markup, TextSink& sink) {
  StyleDecoder decoder;
  decoder.put_QELText(from_utf8(markup, richtext::decode_western));
  const SegmentCollection& segments = *decoder.get_Segments();
  const auto breaks = [&](std::int32_t count) {
    for (; count > 0; --count) sink.line_break({});
  };
  for (const auto& segment : segments) {
    breaks(segment->line_codes_before());
    sink.text(restore_escaped_codes(segment->get_Text()), segment->code_state());
  }
  breaks(segments.line_codes_at_end());
  sink.finish();
}

}  // namespace
}  // namespace qel::capi

qel_status qel_runs_of(qel_text markup, const qel_options* options, qel_runs** runs,
                       qel_error* error) {
  if (runs != nullptr) *runs = nullptr;
  return qel::capi::guarded(error, [&] {
    qel_runs*& read = qel::capi::existing(runs);
    const auto& all = qel::capi::or_defaults(options).conversion;
    auto made = std::make_unique<qel_runs>();
    qel::capi::Runs sink(*made);
    if (all.way == qel::Way::lossless) {
      qel::capi::read_markup(qel::capi::view(markup), all, sink);
    } else {
      qel::capi::ask(all);
      qel::capi::read_stated(qel::capi::view(markup), sink);
    }
    read = made.release();
  });
}

size_t qel_runs_count(const qel_runs* runs) { return runs == nullptr ? 0 : runs->runs.size(); }

const qel_run* qel_runs_at(const qel_runs* runs, size_t index) {
  return index < qel_runs_count(runs) ? &runs->runs[index] : nullptr;
}

void qel_runs_free(qel_runs* runs) { delete runs; }
