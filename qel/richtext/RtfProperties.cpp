#include "qel/richtext/RtfProperties.h"

#include <algorithm>

#include "qel/richtext/CodePage.h"

namespace qel::richtext {
namespace {

/// Groups nested more deeply than this are read, but restore nothing when they end.
constexpr std::size_t deepest_group = 10'000;
/// A larger count of replacement characters is broken input.
constexpr std::int32_t longest_replacement = 32;

}  // namespace

const std::array<RtfProperties::Setter, property_count> RtfProperties::setters = {
    &RtfProperties::set_flag,
    &RtfProperties::clear_flag,
    &RtfProperties::set_offset,
    &RtfProperties::set_fixed_offset,
    &RtfProperties::set_font,
    &RtfProperties::set_size,
    &RtfProperties::set_color,
    &RtfProperties::set_plain,
    &RtfProperties::set_alignment,
    &RtfProperties::set_default_font,
    &RtfProperties::set_code_page,
    &RtfProperties::set_character_set,
    &RtfProperties::set_font_code_page,
    &RtfProperties::set_color_component,
    &RtfProperties::set_replacement_length,
    &RtfProperties::set_destination,
    &RtfProperties::begin_text_part,
    &RtfProperties::begin_field,
    &RtfProperties::begin_field_result,
};

void RtfProperties::set(const KnownWord& word, Parameter parameter, std::uint64_t token) {
  token_ = token;
  forget_format();
  (this->*setters[static_cast<std::size_t>(word.action)])(word.argument, parameter);
}

void RtfProperties::open_group() {
  if (groups_.size() < deepest_group) {
    groups_.push_back(state_);
  } else {
    ++groups_beyond_;
  }
}

void RtfProperties::close_group() {
  if (groups_beyond_ > 0) {
    --groups_beyond_;
    return;
  }
  if (state_.destination == Destination::font_table && groups_.size() <= font_group_) {
    formats_.fonts().end_font();
  }
  if (groups_.empty()) return;
  state_ = groups_.back();
  forget_format();
  groups_.pop_back();
}

void RtfProperties::set_flag(std::int32_t flag, Parameter parameter) {
  if (parameter.value_or(1) == 0) {
    clear_flag(flag, parameter);
  } else {
    state_.character.flags |= static_cast<std::uint8_t>(flag);
  }
}

void RtfProperties::clear_flag(std::int32_t flag, Parameter /*parameter*/) {
  state_.character.flags &= static_cast<std::uint8_t>(~flag);
}

void RtfProperties::set_offset(std::int32_t sign, Parameter half_points) {
  constexpr std::int32_t usual = 6;
  constexpr std::int32_t limit = 3276;  // its twips still fit 16 bits
  const std::int32_t value = std::clamp(half_points.value_or(usual), -limit, limit);
  // Where raised text follows lowered text, the end of the one is written behind the beginning of
  // the other, which it must not undo.
  const bool ends_other =
      value == 0 && token_ == offset_token_ + 1 && sign * state_.character.offset < 0;
  if (ends_other) return;
  state_.character.offset = static_cast<std::int16_t>(sign * value);
  offset_token_ = token_;
}

void RtfProperties::set_fixed_offset(std::int32_t half_points, Parameter parameter) {
  const bool on = parameter.value_or(1) != 0;
  state_.character.offset = on ? static_cast<std::int16_t>(half_points) : std::int16_t{0};
}

void RtfProperties::set_font(std::int32_t /*argument*/, Parameter number) {
  if (state_.destination == Destination::font_table) {
    formats_.fonts().begin_font(number.value_or(0));
    font_group_ = groups_.size();
  } else {
    state_.character.font = number.value_or(CharState::default_font);
  }
}

void RtfProperties::set_size(std::int32_t /*argument*/, Parameter half_points) {
  const std::int32_t value = half_points.value_or(24);
  if (value >= 1 && value <= 0x7FFF)
    state_.character.half_points = static_cast<std::uint16_t>(value);
}

void RtfProperties::set_color(std::int32_t /*argument*/, Parameter number) {
  state_.character.color = number.value_or(0);
}

void RtfProperties::set_plain(std::int32_t /*argument*/, Parameter /*parameter*/) {
  state_.character = CharState();
}

void RtfProperties::set_alignment(std::int32_t alignment, Parameter /*parameter*/) {
  state_.alignment = static_cast<Alignment>(alignment);
  last_alignment_ = state_.alignment;
}

void RtfProperties::set_default_font(std::int32_t /*argument*/, Parameter number) {
  default_font_ = number.value_or(CharState::default_font);
  formats_.set_default_font(default_font_);
  symbol_fonts_ = {};
}

void RtfProperties::set_code_page(std::int32_t number, Parameter parameter) {
  formats_.set_document_code_page(number != 0 ? number : parameter.value_or(CodePage::western));
}

void RtfProperties::set_character_set(std::int32_t /*argument*/, Parameter number) {
  if (state_.destination == Destination::font_table)
    formats_.fonts().set_character_set(number.value_or(0));
}

void RtfProperties::set_font_code_page(std::int32_t /*argument*/, Parameter number) {
  if (state_.destination == Destination::font_table && number.given) {
    formats_.fonts().set_code_page(number.value);
  }
}

void RtfProperties::set_color_component(std::int32_t component, Parameter value) {
  if (state_.destination != Destination::color_table) return;
  formats_.colors().set_component(component, value.value_or(0));
}

void RtfProperties::set_replacement_length(std::int32_t /*argument*/, Parameter count) {
  const std::int32_t value = count.value_or(1);
  if (value < 0 || value > longest_replacement) return;
  state_.replacement_length = static_cast<std::uint8_t>(value);
}

void RtfProperties::set_destination(std::int32_t destination, Parameter /*parameter*/) {
  begin_destination(static_cast<Destination>(destination));
}

void RtfProperties::begin_destination(Destination destination) {
  const Destination was = state_.destination;
  state_.destination = destination;
  // Outside the text nobody tells the parts of a group apart. But shapes are grouped in shapes, and
  // a picture may be wrapped in a group of its own.
  const bool may_nest = destination == Destination::shape || destination == Destination::picture;
  const bool may_have_parts = was == Destination::text || (may_nest && was == destination);
  if (has_text_parts(state_.destination) && !may_have_parts) {
    state_.destination = Destination::skipped;
  }
  const bool is_table = state_.destination == Destination::font_table ||
                        state_.destination == Destination::color_table;
  if (!is_table) return;
  formats_.forget();
  symbol_fonts_ = {};
}

void RtfProperties::begin_text_part(std::int32_t holder, Parameter /*parameter*/) {
  if (state_.destination == static_cast<Destination>(holder)) {
    state_.destination = Destination::text;
  }
}

void RtfProperties::begin_field(std::int32_t /*argument*/, Parameter /*parameter*/) {
  state_.is_field_shown = false;
}

void RtfProperties::begin_field_result(std::int32_t /*argument*/, Parameter /*parameter*/) {
  if (state_.is_field_shown) skip_group();
}

const SymbolFont* RtfProperties::find_symbol_font() {
  const std::int32_t state_font = state_.character.font;
  const std::int32_t number = state_font == CharState::default_font ? default_font_ : state_font;
  KnownSymbols& known = symbol_fonts_[static_cast<std::uint32_t>(number) % symbol_fonts_.size()];
  if (!known.is_set || known.number != number) {
    const RtfFontTable::Font* const font = fonts().find(number);
    const bool has_symbols = font != nullptr && font->code_page == CodePage::symbol;
    known = {number, has_symbols ? SymbolFont::find(font->name) : nullptr, true};
  }
  return known.font;
}

}  // namespace qel::richtext
