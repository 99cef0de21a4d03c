#include "qel/rtf/RunsOfDocument.h"

#include <array>

#include "qel/base/Utf16.h"
#include "qel/base/Utf8.h"

namespace qel::rtf {
namespace {

using richtext::DocumentSink;
using style_codes::CodeState;

constexpr unsigned font_shift = 8;
constexpr unsigned color_shift = 12;

/// A format's number is all that is passed on of it, so nothing has to be remembered.
CodeState state_of(DocumentSink::FormatId id) {
  constexpr unsigned index_mask = 0xF;
  return {static_cast<std::uint8_t>(id), static_cast<std::int16_t>(id >> font_shift & index_mask),
          static_cast<std::int16_t>(id >> color_shift & index_mask)};
}

}  // namespace

template <class Char>
DocumentSink::FormatId BasicRunsOfDocument<Char>::intern(const richtext::CharFormat& format) {
  lacking_.add(format, *indexes_);
  const CodeState state = indexes_->state(format);
  return state.attributes | static_cast<FormatId>(state.font) << font_shift |
         static_cast<FormatId>(state.color) << color_shift;
}

template <class Char>
void BasicRunsOfDocument<Char>::text(std::u16string_view text, FormatId format) {
  if (half_ != 0) {
    const std::array<char16_t, 2> pair = {half_, text.front()};
    // Halves in two formats would be lost: lossless, the character has the format of its first.
    const bool may_join = format == half_format_ || indexes_->way() == Way::lossless;
    if (is_low_surrogate(pair[1]) && may_join) {
      half_ = 0;
      pass({pair.data(), pair.size()}, half_format_);
      text.remove_prefix(1);
    }
    pass_half();
  }
  if (!text.empty() && is_high_surrogate(text.back())) {
    half_ = text.back();
    half_format_ = format;
    text.remove_suffix(1);
  }
  if (!text.empty()) pass(text, format);
}

template <>
void BasicRunsOfDocument<char16_t>::pass(std::u16string_view text, FormatId format) {
  sink_.text(text, state_of(format));
}

template <>
void BasicRunsOfDocument<char>::pass(std::u16string_view text, FormatId format) {
  bytes_.clear();
  for (std::size_t at = 0; at < text.size();) append_utf8(bytes_, next_character(text, at));
  sink_.text(bytes_, state_of(format));
}

template <>
void BasicRunsOfDocument<char16_t>::ascii(std::string_view text, FormatId format) {
  DocumentSink::ascii(text, format);
}

template <>
void BasicRunsOfDocument<char>::ascii(std::string_view text, FormatId format) {
  pass_half();
  sink_.text(text, state_of(format));
}

template <class Char>
void BasicRunsOfDocument<Char>::pass_half() {
  if (half_ == 0) return;
  pass({&half_, 1}, half_format_);
  half_ = 0;
}

template <class Char>
void BasicRunsOfDocument<Char>::paragraph_break(FormatId format,
                                                richtext::Alignment /*alignment*/) {
  pass_half();
  sink_.line_break(state_of(format));
}

template <class Char>
void BasicRunsOfDocument<Char>::finish(richtext::Alignment /*alignment*/) {
  pass_half();
  sink_.finish();
}

template class BasicRunsOfDocument<char>;
template class BasicRunsOfDocument<char16_t>;

}  // namespace qel::rtf
