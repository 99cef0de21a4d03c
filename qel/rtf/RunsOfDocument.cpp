#include "qel/rtf/RunsOfDocument.h"

#include <array>

#include "qel/base/Utf16.h"

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

DocumentSink::FormatId RunsOfDocument::intern(const richtext::CharFormat& format) {
  lacking_.add(format, indexes_);
  const CodeState state = indexes_.state(format);
  return state.attributes | static_cast<FormatId>(state.font) << font_shift |
         static_cast<FormatId>(state.color) << color_shift;
}

void RunsOfDocument::text(std::u16string_view text, FormatId format) {
  if (half_ != 0) {
    const std::array<char16_t, 2> pair = {half_, text.front()};
    if (is_low_surrogate(pair[1]) && format == half_format_) {
      half_ = 0;
      sink_.text({pair.data(), pair.size()}, state_of(format));
      text.remove_prefix(1);
    }
    pass_half();
  }
  if (!text.empty() && is_high_surrogate(text.back())) {
    half_ = text.back();
    half_format_ = format;
    text.remove_suffix(1);
  }
  if (!text.empty()) sink_.text(text, state_of(format));
}

void RunsOfDocument::pass_half() {
  if (half_ == 0) return;
  sink_.text({&half_, 1}, state_of(half_format_));
  half_ = 0;
}

void RunsOfDocument::paragraph_break(FormatId format, richtext::Alignment /*alignment*/) {
  pass_half();
  sink_.line_break(state_of(format));
}

void RunsOfDocument::finish(richtext::Alignment /*alignment*/) {
  pass_half();
  sink_.finish();
}

}  // namespace qel::rtf
