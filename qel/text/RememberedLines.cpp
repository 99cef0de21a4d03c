#include "qel/text/RememberedLines.h"

#include <cstdint>
#include <cstring>
#include <limits>
#include <utility>

namespace qel {

LineSettings::LineSettings(const platform::Canvas& canvas, const QELIndexFonts& index_fonts,
                           float width_in, float indent_in, bool reveals_codes, bool has_hidden,
                           Way read_in)
    : font(canvas.get_FontName()),
      size(canvas.get_FontSize()),
      width(width_in),
      indent(indent_in),
      reveal_codes(reveals_codes),
      with_hidden(has_hidden),
      way(read_in) {
  for (std::size_t i = 0; i < fonts.size(); ++i) {
    fonts[i] = index_fonts.get_Font(static_cast<std::int16_t>(i));
  }
}

RememberedLines::RememberedLines(std::u16string_view text, LineSettings settings,
                                 const platform::Canvas& canvas, const QELIndexFonts& fonts)
    : text_(text),
      settings_(std::move(settings)),
      typesetter_(canvas, fonts),
      rest_(text_, settings_.width, settings_.indent, [this](std::u16string_view markup) {
        return settings_.reveal_codes
                   ? typesetter_.revealed_width(markup)
                   : typesetter_.markup_width(markup, settings_.with_hidden, settings_.way);
      }) {}

bool RememberedLines::are_of(std::u16string_view text, const LineSettings& settings) const {
  // As bytes, which is many times as fast: this is done for every line.
  return text.size() == text_.size() && settings == settings_ && !text.empty() &&
         std::memcmp(text.data(), text_.data(), text.size() * sizeof(char16_t)) == 0 &&
         typesetter_.sample_widths() == sample_widths_;
}

void RememberedLines::find(std::size_t count) {
  const std::size_t before = found_.size();
  while (found_.size() < count) {
    const auto line = rest_.next();
    if (!line) break;
    found_.push_back(*line);
  }
  if (found_.size() > before) sample_widths_ = typesetter_.sample_widths();
}

std::optional<std::u16string_view> RememberedLines::line(std::size_t number) {
  find(number);
  if (number == 0 || number > found_.size()) return std::nullopt;
  return found_[number - 1];
}

const std::vector<std::u16string_view>& RememberedLines::all() {
  find(std::numeric_limits<std::size_t>::max());
  return found_;
}

}  // namespace qel
