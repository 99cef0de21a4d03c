#include "qel/richtext/RtfFormats.h"

#include <algorithm>
#include <cmath>
#include <cstddef>
#include <optional>

namespace qel::richtext {

std::int32_t offset_in_rtf(std::int16_t twips) { return twips / 10; }

std::int32_t size_in_rtf(float points) {
  constexpr float largest = 0x7FFF;
  return static_cast<std::int32_t>(std::clamp(std::nearbyint(points * 2), 1.0F, largest));
}

bool are_equal_in_rtf(const CharFormat& left, const CharFormat& right) {
  return left.bold == right.bold && left.italic == right.italic &&
         left.underline == right.underline && left.strike_through == right.strike_through &&
         left.small_caps == right.small_caps &&
         offset_in_rtf(left.offset) == offset_in_rtf(right.offset) && left.color == right.color &&
         left.font_name == right.font_name && size_in_rtf(left.size) == size_in_rtf(right.size);
}

namespace {

/// Half-points as twips: the middle of the range of twips that is written as that number.
std::int16_t twips(std::int32_t half_points) {
  if (half_points == 0) return 0;
  return static_cast<std::int16_t>(half_points * 10 + (half_points > 0 ? 5 : -5));
}

}  // namespace

void RtfFormats::set_default_font(std::int32_t number) {
  default_font_ = number;
  forget();
}

DocumentSink::FormatId RtfFormats::id_of(const CharState& state) {
  const auto hash = static_cast<std::uint32_t>(state.flags) * 7U +
                    static_cast<std::uint32_t>(state.font) * 31U +
                    static_cast<std::uint32_t>(state.color) * 5U +
                    static_cast<std::uint32_t>(state.offset) * 3U + state.half_points;
  Known& known = known_[hash % known_.size()];
  if (!known.is_set || known.state != state) {
    known = {state, sink_.intern(format_of(state)), true};
    knows_any_ = true;
  }
  return known.id;
}

CharFormat RtfFormats::format_of(const CharState& state) const {
  CharFormat format = base_;
  format.bold = (state.flags & CharState::bold) != 0;
  format.italic = (state.flags & CharState::italic) != 0;
  format.underline = (state.flags & CharState::underline) != 0;
  format.strike_through = (state.flags & CharState::strike_through) != 0;
  format.small_caps = (state.flags & CharState::small_caps) != 0;
  format.offset = twips(state.offset);
  if (state.half_points != CharState::default_size) {
    format.size = static_cast<float>(state.half_points) / 2;
  }
  format.color = colors_.find(state.color).value_or(base_.color);
  if (const auto* font = font_of(state)) format.font_name = font->name;
  return format;
}

const RtfFontTable::Font* RtfFormats::font_of(const CharState& state) const {
  return fonts_.find(state.font == CharState::default_font ? default_font_ : state.font);
}

const CodePage& RtfFormats::code_page_of(const CharState& state) {
  if (last_code_page_ != nullptr && last_font_ == state.font) return *last_code_page_;
  const RtfFontTable::Font* const font = font_of(state);
  last_font_ = state.font;
  last_code_page_ = &code_page(font != nullptr ? font->code_page : std::nullopt);
  return *last_code_page_;
}

const CodePage& RtfFormats::code_page_of_font_name() { return code_page(fonts_.name_code_page()); }

/// The one with this number, or else the document's.
const CodePage& RtfFormats::code_page(std::optional<int> number) {
  const int wanted = number.value_or(document_code_page_);
  // Each may cost a look-up in the system, and no document needs many.
  constexpr std::size_t most_code_pages = 32;
  const bool is_affordable = code_pages_.size() < most_code_pages || code_pages_.contains(wanted);
  const int taken = is_affordable ? wanted : CodePage::western;
  // Nearly every document says that it is in this one.
  static const CodePage west(CodePage::western);
  if (taken == CodePage::western) return west;
  return code_pages_.try_emplace(taken, taken).first->second;
}

}  // namespace qel::richtext
