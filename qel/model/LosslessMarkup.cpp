#include "qel/model/LosslessMarkup.h"

#include <algorithm>
#include <utility>

#include "qel/base/Scan.h"
#include "qel/model/Parser.h"
#include "qel/model/QELCode.h"

namespace qel {
namespace {

using style_codes::CodeState;

/// Whether the last `count` characters of a text, the first of them a slash, make a code with those
/// that follow.
bool meet_as_code(std::u16string_view text, std::u16string_view following, std::size_t count) {
  constexpr std::size_t code_length = 3;
  if (text.size() < count || following.size() < code_length - count) return false;
  const std::u16string_view end = text.substr(text.size() - count);
  if (end.front() != u'/') return false;
  return count == 1 ? is_code_of_any_reader(following[0], following[1])
                    : is_code_of_any_reader(end[1], following[0]);
}

bool meet_as_code(std::u16string_view text, std::u16string_view following) {
  const std::size_t size = text.size();
  const bool has_slash =
      size > 0 && (text[size - 1] == u'/' || (size > 1 && text[size - 2] == u'/'));
  if (!has_slash) return false;
  return meet_as_code(text, following, 1) || meet_as_code(text, following, 2);
}

/// Whether a text that ends so may become a part of a code, whatever follows.
bool may_begin_code(std::u16string_view text) {
  constexpr std::u16string_view ends = u"01l";
  return text.ends_with(u'/') || std::any_of(ends.begin(), ends.end(), [text](const char16_t& end) {
           return meet_as_code(text, {&end, 1}, 2);
         });
}

}  // namespace

void LosslessMarkup::text(std::u16string_view text, const CodeState& state, Text kind) {
  if (text.empty()) return;
  if (!held_.empty() && line_breaks_ == 0 && state == state_) {
    const std::u16string joined = std::exchange(held_, {}).append(text);
    append(joined, kind);
    return;
  }
  enter(state);
  if (meet_as_code(written_text(), text)) keep_apart();
  append(text, kind);
}

void LosslessMarkup::append(std::u16string_view text, Text kind) {
  for (std::size_t at = 0; at < text.size();) {
    const std::size_t end = find_any<u'/', u'\r', u'\n'>(text, at);
    out_.append(text, at, end - at);
    if (end == text.size()) return;
    at = end + 1;
    if (text[end] == u'/') {
      const std::u16string_view rest = text.substr(at, 2);
      if (kind == Text::any && rest.size() < 2 && may_begin_code(text.substr(end))) {
        held_ = text.substr(end);
        return;
      }
      append_slash(rest, kind);
    } else {
      if (text[end] == u'\r' && at < text.size() && text[at] == u'\n') ++at;
      ++line_breaks_;
      append_breaks();
    }
  }
}

void LosslessMarkup::append_slash(std::u16string_view rest, Text kind) {
  const bool is_whole = rest.size() == 2;
  if (is_whole && is_escapable(rest[0], rest[1])) {
    out_.append(u"~/");
    return;
  }
  out_.push_back(u'/');
  const bool is_code =
      is_whole && (kind == Text::any ? is_code_of_any_reader(rest[0], rest[1])
                                     : IsQELCode(std::u16string(u"/").append(rest)));
  if (is_code) keep_apart();
}

void LosslessMarkup::keep_apart() {
  out_.append(style_codes::code_of_no_effect(state_));
  text_begin_ = out_.size();
}

template <class Append>
void LosslessMarkup::append_codes(Append append) {
  const std::size_t begin = out_.size();
  append(out_);
  if (out_.size() == begin) return;
  if (begin > text_begin_ && out_[begin - 1] == u'~' &&
      begins_with_escaped_code(std::u16string_view(out_).substr(begin - 1))) {
    out_.insert(begin, style_codes::code_behind_tilde(state_));
  }
  text_begin_ = out_.size();
}

void LosslessMarkup::line_breaks(std::int32_t count) {
  // What follows decides where codes end; of very many breaks the first ones need not wait for it.
  constexpr std::int32_t most_waiting = 4096;
  line_breaks_ += count;
  if (line_breaks_ < most_waiting) return;
  if (!held_.empty()) out_.append(std::exchange(held_, {}));
  append_breaks();
}

void LosslessMarkup::append_breaks() {
  if (line_breaks_ == 0) return;
  for (; line_breaks_ > 0; --line_breaks_) out_.append(u"/nl");
  text_begin_ = out_.size();
}

void LosslessMarkup::enter(const CodeState& state) {
  if (!held_.empty()) out_.append(std::exchange(held_, {}));
  if (line_breaks_ == 0 && state == state_) return;
  append_codes(
      [&](std::u16string& to) { style_codes::append_different_off(to, state_, &state, set_); });
  append_breaks();
  append_codes(
      [&](std::u16string& to) { style_codes::append_different_on(to, state, state_, set_); });
  state_ = state;
}

void LosslessMarkup::finish(bool is_cut) {
  enter(CodeState());
  const std::u16string_view text = written_text();
  if (is_cut && text.ends_with(u'~')) {
    out_.append(style_codes::code_behind_tilde(state_));
  } else if (is_cut && may_begin_code(text)) {
    out_.append(style_codes::code_of_no_effect(state_));
  }
  text_begin_ = 0;
}

void keep_apart(std::u16string& markup, std::u16string_view following) {
  MarkupScanner scanner(markup, Way::lossless);
  std::u16string_view last;
  while (scanner.next() != MarkupScanner::Item::end) last = scanner.text();
  const bool ends_with_text =
      !last.empty() && last.data() + last.size() == markup.data() + markup.size();
  if (!ends_with_text) return;
  if (begins_with_escaped_code(std::u16string(1, last.back()).append(following.substr(0, 3)))) {
    markup.append(style_codes::code_behind_tilde(scanner.state()));
  } else if (meet_as_code(last, following)) {
    markup.append(style_codes::code_of_no_effect(scanner.state()));
  }
}

}  // namespace qel
