#include "qel/rtf/RtfBodyWriter.h"

#include "qel/rtf/CodeTable.h"

namespace qel::rtf {

void RtfBodyWriter::text(std::u16string_view text, const style_codes::CodeState& state) {
  enter(state);
  append_text(out_, text);
}

void RtfBodyWriter::line_break(const style_codes::CodeState& state) {
  enter(state);
  out_.append(u"\\par ");
}

void RtfBodyWriter::enter(style_codes::CodeState state) {
  if (state == last_) return;
  state = shown_state(state);
  codes_.clear();
  style_codes::append_different_off(codes_, last_, &state, style_codes::CodeSet::lossless);
  style_codes::append_different_on(codes_, state, last_, style_codes::CodeSet::lossless);
  append_words(out_, codes_);
  last_ = state;
}

}  // namespace qel::rtf
