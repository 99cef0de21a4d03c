#include "qel/rtf/RtfBodyWriter.h"

#include <cmath>
#include <cstdint>
#include <limits>
#include <string>

#include "qel/base/Error.h"
#include "qel/base/Records.h"
#include "qel/rtf/CodeTable.h"

namespace qel::rtf {
namespace {

std::int64_t half_points(float points) {
  const double size = std::nearbyint(static_cast<double>(points) * 2);
  // NaN fails this comparison too.
  if (!(size >= 0 && size <= std::numeric_limits<std::int16_t>::max())) {
    throw Error(Error::overflow, "RTFParser",
                "QELToRTF: FontSize " + std::to_string(points) + " is no size that RTF can hold");
  }
  return static_cast<std::int64_t>(size);
}

}  // namespace

std::u16string document_head(QELIndexFonts& fonts, const QELIndexColors& colors,
                             platform::MeasuringSurface& surface, Way way) {
  std::u16string head = u"{\\rtf1\\ansi\\ansicpg1252\\deff0 ";
  head.append(fonts.font_table(&surface, way)).append(colors.get_ColorTable());
  head.append(u"{\\f0\\fs").append(records::from_integer(half_points(fonts.get_FontSize())));
  return head.append(u" ");
}

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
