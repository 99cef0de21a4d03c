#include "qel/convert/SwitchedRuns.h"

#include <utility>

#include "qel/base/Scan.h"

namespace qel::convert {

void SwitchedRuns::text(std::u16string_view text, const style_codes::CodeState& state) {
  if (!switches_.recognize_tabs && find_any<u'\t'>(text, 0) < text.size()) {
    changed_ =
        replace_all(std::u16string(text), u"\t", switches_.convert_tabs_to_space ? u" " : u"");
    text = changed_;
    if (text.empty()) return;
  }
  if (!std::exchange(has_text_, true) && blanks_first_ > 0) {
    pass(std::u16string(blanks_first_, u' '), state);
  }
  pass(text, state);
}

void SwitchedRuns::pass(std::u16string_view text, const style_codes::CodeState& state) {
  pass_held();
  state_ = state;
  if (switches_.convert_nl_to_space && text.ends_with(u' ')) {
    is_blank_held_ = true;
    text.remove_suffix(1);
  }
  if (!text.empty()) sink_.text(text, state);
}

void SwitchedRuns::pass_held() {
  if (std::exchange(is_blank_held_, false)) sink_.text(u" ", state_);
}

void SwitchedRuns::line_break(const style_codes::CodeState& state) {
  if (switches_.keep_breaks()) {
    pass_held();
    sink_.line_break(state);
  } else if (switches_.convert_nl_to_space && has_text_) {
    pass(u" ", state_);
  } else if (switches_.convert_nl_to_space) {
    ++blanks_first_;
  }
}

void SwitchedRuns::finish() {
  if (!has_text_ && blanks_first_ > 1) sink_.text(std::u16string(blanks_first_ - 1, u' '), {});
  sink_.finish();
}

}  // namespace qel::convert
