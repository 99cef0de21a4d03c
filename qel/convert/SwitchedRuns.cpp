#include "qel/convert/SwitchedRuns.h"

#include <utility>

#include "qel/base/Ascii.h"
#include "qel/base/Scan.h"

namespace qel::convert {

template <class Char>
void SwitchedRuns<Char>::text(std::basic_string_view<Char> text,
                              const style_codes::CodeState& state) {
  if (!switches_.recognize_tabs && find_any<u'\t'>(text, 0) < text.size()) {
    changed_ = replace_all(String(text), ascii<Char, "\t">,
                           switches_.convert_tabs_to_space ? ascii<Char, " "> : ascii<Char, "">);
    text = changed_;
    if (text.empty()) return;
  }
  if (!std::exchange(has_text_, true) && blanks_first_ > 0) {
    pass(String(blanks_first_, ' '), state);
  }
  pass(text, state);
}

template <class Char>
void SwitchedRuns<Char>::pass(std::basic_string_view<Char> text,
                              const style_codes::CodeState& state) {
  pass_held();
  state_ = state;
  if (switches_.convert_nl_to_space && text.ends_with(' ')) {
    is_blank_held_ = true;
    text.remove_suffix(1);
  }
  if (!text.empty()) sink_.text(text, state);
}

template <class Char>
void SwitchedRuns<Char>::pass_held() {
  if (std::exchange(is_blank_held_, false)) sink_.text(ascii<Char, " ">, state_);
}

template <class Char>
void SwitchedRuns<Char>::line_break(const style_codes::CodeState& state) {
  if (switches_.keep_breaks()) {
    pass_held();
    sink_.line_break(state);
  } else if (switches_.convert_nl_to_space && has_text_) {
    pass(ascii<Char, " ">, state_);
  } else if (switches_.convert_nl_to_space) {
    ++blanks_first_;
  }
}

template <class Char>
void SwitchedRuns<Char>::finish() {
  if (!has_text_ && blanks_first_ > 1) sink_.text(String(blanks_first_ - 1, ' '), {});
  sink_.finish();
}

template class SwitchedRuns<char>;
template class SwitchedRuns<char16_t>;

}  // namespace qel::convert
