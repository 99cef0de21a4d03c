#include "qel/model/RunWriter.h"

#include "qel/model/QELCode.h"

namespace qel {

using style_codes::CodeSet;
using style_codes::CodeState;

namespace {

bool is_markup(const OutputOptions& options) {
  return options.codes == OutputOptions::Codes::current ||
         options.codes == OutputOptions::Codes::v6;
}

CodeSet code_set(const OutputOptions& options) {
  if (options.codes == OutputOptions::Codes::v6) return CodeSet::v6;
  return options.way == Way::lossless ? CodeSet::lossless : CodeSet::current;
}

}  // namespace

RunWriter::RunWriter(std::u16string& out, const OutputOptions& options)
    : out_(out), options_(options), set_(code_set(options)) {
  if (options.way == Way::lossless && is_markup(options)) {
    lossless_.emplace(out, set_);
  }
}

void RunWriter::add(const Run& run) {
  if (lossless_) {
    lossless_->line_breaks(run.line_codes_before);
    lossless_->text(
        run.text, run.state,
        run.origin.is_markup ? LosslessMarkup::Text::markup : LosslessMarkup::Text::any);
    return;
  }
  if (run_) write(*run_, &run.state);
  if (run_) last_ = run_->state;
  run_ = run;
}

void RunWriter::finish(std::int32_t line_codes_at_end, bool is_cut) {
  if (lossless_) {
    lossless_->line_breaks(line_codes_at_end);
    lossless_->finish(is_cut);
    return;
  }
  if (run_) write(*run_, nullptr);
  line_codes(line_codes_at_end);
  run_.reset();
  last_.reset();
  ends_with_tilde_ = false;
}

void RunWriter::write(const Run& run, const CodeState* next) {
  if (is_nested()) nested_.close(out_, codes_on(run.state), *options_.custom);
  line_codes(run.line_codes_before);
  open(run.state);
  write_text(run);
  ends_with_tilde_ = run.origin.ends_with_tilde && run.text.ends_with(u'~');
  state_before_ = run.state;
  close(run.state, next);
}

void RunWriter::write_text(const Run& run) {
  if (is_custom()) {
    // Only the text: the host's own spelling of the codes is not ours to change.
    const std::u16string text(run.text);
    options_.custom->append_text(out_,
                                 options_.way == Way::stated ? restore_escaped_codes(text) : text);
    return;
  }
  const bool is_escaped = ends_with_tilde_ && out_.ends_with(u'~');
  const bool acts = is_markup(options_) && run.origin.begins_with_code && !is_escaped &&
                    IsQELCode(run.text.substr(0, 3));
  if (!acts) {
    out_.append(run.text);
    return;
  }
  out_.push_back(u'/');
  out_.append(style_codes::code_of_no_effect<char16_t>(run.state)).append(run.text.substr(1));
}

void RunWriter::open(const CodeState& state) {
  if (is_nested()) return nested_.change(out_, codes_on(state), *options_.custom);
  codes([&](std::u16string& to) {
    if (last_) {
      style_codes::append_different_on(to, state, *last_, set_);
    } else {
      style_codes::append_on(to, state, set_);
    }
  });
}

void RunWriter::close(const CodeState& state, const CodeState* next) {
  if (!is_nested()) {
    codes([&](std::u16string& to) { style_codes::append_different_off(to, state, next, set_); });
  } else if (next == nullptr) {
    nested_.close(out_, {}, *options_.custom);
  }
}

std::u16string_view RunWriter::codes_on(const CodeState& state) {
  scratch_.clear();
  style_codes::append_on(scratch_, state, set_);
  return scratch_;
}

void RunWriter::line_codes(std::int32_t count) {
  if (!options_.line_codes && !is_custom()) return;
  for (; count > 0; --count) {
    if (options_.codes == OutputOptions::Codes::none) {
      out_.append(u"\r\n");
    } else {
      codes([](std::u16string& to) { to.append(u"/nl"); });
    }
  }
}

template <class Append>
void RunWriter::codes(Append append) {
  if (options_.codes == OutputOptions::Codes::none) return;
  if (is_custom()) {
    scratch_.clear();
    append(scratch_);
    options_.custom->append_translated(out_, scratch_);
    return;
  }
  const std::size_t begin = out_.size();
  append(out_);
  if (out_.size() == begin) return;
  if (ends_with_tilde_ && begins_with_escaped_code(std::u16string_view(out_).substr(begin - 1))) {
    out_.insert(begin, style_codes::code_behind_tilde<char16_t>(state_before_));
  }
  ends_with_tilde_ = false;
}

}  // namespace qel
