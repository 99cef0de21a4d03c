#pragma once

#include <cstddef>
#include <cstdint>
#include <string>

#include "qel/base/Color.h"
#include "qel/base/Records.h"

/// What the records of the tables have in common.
namespace qel::table_records {

/// What separates the ten items of one field.
constexpr std::u16string_view item_separator = u"\t";
constexpr std::size_t table_size = 10;

/// Whether `index` is an index of a table, 0 to 9.
constexpr bool is_index(std::int32_t index) {
  return index >= 0 && index < static_cast<std::int32_t>(table_size);
}

/// A system colour as its current value, any other as it is.
Color resolved(Color color);
/// The current value of the system colour that `color` names by the bits below the highest.
Color system_color_value(Color color);

/// The ten items of `get(0)` to `get(9)` joined by the item separator.
template <class Get>
std::u16string write_items(Get get) {
  std::u16string field;
  for (std::size_t i = 0; i < table_size; ++i) {
    if (i > 0) field.append(item_separator);
    field.append(get(static_cast<std::int16_t>(i)));
  }
  return field;
}

/// Calls `set(i, color)` for each of the first ten items that converts. Items convert as 16-bit
/// integers, although colours need more: stored records are read this way.
template <class Set>
void read_colors(std::u16string_view field, Set set) {
  const auto items = records::split(field, item_separator, table_size);
  for (std::size_t i = 0; i < table_size; ++i) {
    if (const auto color = records::to_integer16(items[i])) {
      set(static_cast<std::int16_t>(i), Color{*color});
    }
  }
}

}  // namespace qel::table_records
