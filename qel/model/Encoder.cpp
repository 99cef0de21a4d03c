#include "qel/model/Encoder.h"

#include <cstddef>
#include <deque>
#include <string_view>
#include <vector>

#include "qel/model/QELCode.h"
#include "qel/model/Trimming.h"

namespace qel {
namespace {

using style_codes::CodeSet;
using style_codes::CodeState;

bool is_left_out(const CodeState& state, const OutputForm& form) {
  return (form.without_ignored && state.color == ignored_color) ||
         (form.without_hidden && state.color == hidden_color) ||
         (form.without_note && state.color == note_color);
}

struct Runs {
  std::vector<Run> kept;
  std::int32_t line_codes_at_end = 0;
};

Runs runs_of(const SegmentCollection& segments, std::int32_t line_codes_at_end,
             const OutputForm& form) {
  Runs runs;
  runs.kept.reserve(static_cast<std::size_t>(segments.end() - segments.begin()));
  std::int32_t line_codes = 0;
  for (const auto& segment : segments) {
    line_codes += segment->line_codes_before();
    const CodeState state = segment->code_state();
    if (is_left_out(state, form)) continue;
    runs.kept.push_back({segment->get_Text(), state, line_codes});
    line_codes = 0;
  }
  runs.line_codes_at_end = line_codes + line_codes_at_end;
  return runs;
}

/// Writes the codes of one output form.
class CodeWriter {
 public:
  CodeWriter(std::u16string& out, const OutputForm& form)
      : out_(out),
        form_(form),
        set_(form.codes == OutputForm::Codes::v6 ? CodeSet::v6 : CodeSet::current) {}

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
    if (!form_.line_codes && form_.codes != OutputForm::Codes::custom) return;
    for (; count > 0; --count) {
      if (form_.codes == OutputForm::Codes::none) {
        out_.append(u"\r\n");
      } else {
        write([](std::u16string& to) { to.append(u"/nl"); });
      }
    }
  }

 private:
  template <class Append>
  void write(Append append) {
    switch (form_.codes) {
      case OutputForm::Codes::none:
        return;
      case OutputForm::Codes::custom:
        scratch_.clear();
        append(scratch_);
        form_.custom->append_translated(out_, scratch_);
        return;
      default:
        append(out_);
    }
  }

  std::u16string& out_;
  const OutputForm& form_;
  CodeSet set_;
  std::u16string scratch_;
};

std::size_t expected_size(const Runs& runs) {
  constexpr std::size_t codes_per_run = 8;
  std::size_t size = 0;
  for (const Run& run : runs.kept) size += run.text.size() + codes_per_run;
  return size;
}

}  // namespace

std::u16string encode(const SegmentCollection& segments, std::int32_t line_codes_at_end,
                      const OutputForm& form) {
  Runs runs = runs_of(segments, line_codes_at_end, form);
  std::deque<std::u16string> changed_texts;
  trim(runs.kept, form, changed_texts);

  std::u16string out;
  CodeWriter codes(out, form);
  const std::vector<Run>& kept = runs.kept;
  const bool nothing_to_style = kept.size() == 1 && kept.front().text.empty();
  out.reserve(expected_size(runs));
  for (std::size_t i = 0; i < kept.size() && !nothing_to_style; ++i) {
    codes.line_codes(kept[i].line_codes_before);
    codes.opening(kept[i].state, i == 0 ? nullptr : &kept[i - 1].state);
    out.append(kept[i].text);
    codes.closing(kept[i].state, i + 1 == kept.size() ? nullptr : &kept[i + 1].state);
  }
  codes.line_codes(runs.line_codes_at_end);
  return restore_escaped_codes(std::move(out));
}

}  // namespace qel
