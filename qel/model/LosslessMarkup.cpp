#include "qel/model/LosslessMarkup.h"

#include <algorithm>
#include <type_traits>
#include <utility>

#include "qel/base/Ascii.h"
#include "qel/base/Scan.h"
#include "qel/model/Parser.h"
#include "qel/model/QELCode.h"

namespace qel {
namespace {

using style_codes::CodeState;

template <class Char>
bool is_code(Char letter, Char digit) {
  return is_code_of_any_reader(static_cast<char16_t>(letter), static_cast<char16_t>(digit));
}

/// Whether the last `count` characters of a text, the first of them a slash, make a code with those
/// that follow.
template <class Char>
bool meet_as_code(std::basic_string_view<Char> text,
                  std::type_identity_t<std::basic_string_view<Char>> following, std::size_t count) {
  constexpr std::size_t code_length = 3;
  if (text.size() < count || following.size() < code_length - count) return false;
  const auto end = text.substr(text.size() - count);
  if (end.front() != '/') return false;
  return count == 1 ? is_code(following[0], following[1]) : is_code(end[1], following[0]);
}

template <class Char>
bool meet_as_code(std::basic_string_view<Char> text,
                  std::type_identity_t<std::basic_string_view<Char>> following) {
  const std::size_t size = text.size();
  const bool has_slash = size > 0 && (text[size - 1] == '/' || (size > 1 && text[size - 2] == '/'));
  if (!has_slash) return false;
  return meet_as_code(text, following, 1) || meet_as_code(text, following, 2);
}

/// Whether a text that ends so may become a part of a code, whatever follows.
template <class Char>
bool may_begin_code(std::basic_string_view<Char> text) {
  constexpr auto ends = ascii<Char, "01l">;
  return text.ends_with('/') || std::any_of(ends.begin(), ends.end(), [text](const Char& end) {
           return meet_as_code(text, {&end, 1}, 2);
         });
}

}  // namespace

template <class Char>
void BasicLosslessMarkup<Char>::text(View text, const CodeState& state, Text kind) {
  if (text.empty()) return;
  if (!held_.empty() && line_breaks_ == 0 && state == state_) {
    const String joined = std::exchange(held_, {}).append(text);
    append(joined, kind);
    return;
  }
  enter(state);
  if (meet_as_code(written_text(), text)) keep_apart();
  append(text, kind);
}

template <class Char>
void BasicLosslessMarkup<Char>::append(View text, Text kind) {
  for (std::size_t at = 0; at < text.size();) {
    const std::size_t end = find_any<u'/', u'\r', u'\n'>(text, at);
    out_.append(text, at, end - at);
    if (end == text.size()) return;
    at = end + 1;
    if (text[end] == '/') {
      const View rest = text.substr(at, 2);
      if (kind == Text::any && rest.size() < 2 && may_begin_code(text.substr(end))) {
        held_ = text.substr(end);
        return;
      }
      append_slash(rest, kind);
    } else {
      if (text[end] == '\r' && at < text.size() && text[at] == '\n') ++at;
      ++line_breaks_;
      append_breaks();
    }
  }
}

template <class Char>
void BasicLosslessMarkup<Char>::append_slash(View rest, Text kind) {
  if (rest.size() < 2) {
    out_.push_back('/');
    return;
  }
  const auto letter = static_cast<char16_t>(rest[0]);
  const auto digit = static_cast<char16_t>(rest[1]);
  if (is_escapable(letter, digit)) {
    out_.append(ascii<Char, "~/">);
    return;
  }
  out_.push_back('/');
  const bool is_code = kind == Text::any ? is_code_of_any_reader(letter, digit)
                                         : is_code_of_text_model(letter, digit);
  if (is_code) keep_apart();
}

template <class Char>
void BasicLosslessMarkup<Char>::keep_apart() {
  out_.append(style_codes::code_of_no_effect<Char>(state_));
  text_begin_ = out_.size();
}

template <class Char>
template <class Append>
void BasicLosslessMarkup<Char>::append_codes(Append append) {
  const std::size_t begin = out_.size();
  append(out_);
  if (out_.size() == begin) return;
  if (begin > text_begin_ && out_[begin - 1] == '~' &&
      begins_with_escaped_code(View(out_).substr(begin - 1))) {
    out_.insert(begin, style_codes::code_behind_tilde<Char>(state_));
  }
  text_begin_ = out_.size();
}

template <class Char>
void BasicLosslessMarkup<Char>::line_breaks(std::int32_t count) {
  // What follows decides where codes end; of very many breaks the first ones need not wait for it.
  constexpr std::int32_t most_waiting = 4096;
  line_breaks_ += count;
  if (line_breaks_ < most_waiting) return;
  if (!held_.empty()) out_.append(std::exchange(held_, {}));
  append_breaks();
}

template <class Char>
void BasicLosslessMarkup<Char>::append_breaks() {
  if (line_breaks_ == 0) return;
  for (; line_breaks_ > 0; --line_breaks_) out_.append(ascii<Char, "/nl">);
  text_begin_ = out_.size();
}

template <class Char>
void BasicLosslessMarkup<Char>::enter(const CodeState& state) {
  if (!held_.empty()) out_.append(std::exchange(held_, {}));
  if (line_breaks_ == 0 && state == state_) return;
  append_codes([&](String& to) { style_codes::append_different_off(to, state_, &state, set_); });
  append_breaks();
  append_codes([&](String& to) { style_codes::append_different_on(to, state, state_, set_); });
  state_ = state;
}

template <class Char>
void BasicLosslessMarkup<Char>::finish(bool is_cut) {
  enter(CodeState());
  const View text = written_text();
  if (is_cut && text.ends_with('~')) {
    out_.append(style_codes::code_behind_tilde<Char>(state_));
  } else if (is_cut && may_begin_code(text)) {
    out_.append(style_codes::code_of_no_effect<Char>(state_));
  }
  text_begin_ = 0;
}

template class BasicLosslessMarkup<char>;
template class BasicLosslessMarkup<char16_t>;

void keep_apart(std::u16string& markup, std::u16string_view following) {
  MarkupScanner scanner(markup, Way::lossless);
  std::u16string_view last;
  while (scanner.next() != MarkupScanner::Item::end) last = scanner.text();
  const bool ends_with_text =
      !last.empty() && last.data() + last.size() == markup.data() + markup.size();
  if (!ends_with_text) return;
  if (begins_with_escaped_code(std::u16string(1, last.back()).append(following.substr(0, 3)))) {
    markup.append(style_codes::code_behind_tilde<char16_t>(scanner.state()));
  } else if (meet_as_code(last, following)) {
    markup.append(style_codes::code_of_no_effect<char16_t>(scanner.state()));
  }
}

}  // namespace qel
