#include "qel/richtext/CharFormat.h"

#include <cstddef>
#include <tuple>
#include <utility>

namespace qel::richtext {
namespace {

/// The fields of any of the three kinds of format, in one order.
template <class Format>
auto fields_of(Format& format) {
  return std::tie(format.bold, format.italic, format.underline, format.strike_through,
                  format.small_caps, format.offset, format.color, format.font_name, format.size);
}

template <class Left, class Right, class Action>
void for_each_field(Left& left, Right& right, Action action) {
  auto left_fields = fields_of(left);
  auto right_fields = fields_of(right);
  [&]<std::size_t... Index>(std::index_sequence<Index...>) {
    (action(std::get<Index>(left_fields), std::get<Index>(right_fields)), ...);
  }
  (std::make_index_sequence<std::tuple_size_v<decltype(left_fields)>>());
}

}  // namespace

MixedFormat::MixedFormat(const CharFormat& format) {
  for_each_field(*this, format, [](auto& mixed, const auto& value) { mixed = value; });
}

void MixedFormat::merge(const CharFormat& format) {
  for_each_field(*this, format, [](auto& mixed, const auto& value) {
    if (mixed != value) mixed.reset();
  });
}

void FormatChange::apply_to(CharFormat& format) const {
  const float size_before = format.size;
  for_each_field(*this, format, [](const auto& change, auto& value) {
    if (change) value = *change;
  });
  constexpr float largest = 0x3FFF;
  const bool is_size = format.size > 0 && format.size <= largest;
  if (!is_size) format.size = size_before;
}

bool FormatChange::is_in(const MixedFormat& format) const {
  bool is_in = true;
  for_each_field(*this, format, [&](const auto& change, const auto& value) {
    if (change && value != *change) is_in = false;
  });
  return is_in;
}

}  // namespace qel::richtext
