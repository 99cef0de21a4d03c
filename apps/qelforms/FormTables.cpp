#include "FormTables.h"

#include <cstddef>
#include <cstdint>
#include <string_view>

#include "qel/base/Records.h"

namespace qel::forms {
namespace {

constexpr std::u16string_view fonts_name = u"fonts";
constexpr std::u16string_view colors_name = u"colors";
constexpr std::size_t table_size = 10;

/// Calls `set(index, color)` for each colour of a field of the record.
template <class Set>
void read_colors(std::u16string_view field, Set set) {
  const auto items = records::split(field, u"\t", table_size);
  for (std::size_t i = 0; i < table_size; ++i) {
    if (const auto color = records::to_integer32(items[i])) {
      set(static_cast<std::int16_t>(i), Color{*color});
    }
  }
}

void put_label_color(QELIndexColors& colors, std::int16_t index, Color color) {
  try {
    colors.put_LabelColor(index, color);
  } catch (const Error&) {
    // Two labels of the record have the same colour: the second keeps the colour that it had.
  }
}

/// The table's own reader takes only colours of 16 bits, so the colours are set afterwards.
void read_colors_record(QELIndexColors& colors, std::u16string_view record) {
  colors.put_All(record);
  constexpr std::size_t field_count = 4;  // colours, label colours, label names, active label
  const auto fields = records::split(record, u"<Colors:Rec>", field_count);
  read_colors(fields[0], [&](std::int16_t i, Color color) { colors.put_Color(i, color); });
  // No two labels may ever have the same colour, so the old colours make room first.
  read_colors(fields[1], [&](std::int16_t i, Color) { put_label_color(colors, i, Color{i}); });
  read_colors(fields[1], [&](std::int16_t i, Color color) { put_label_color(colors, i, color); });
}

}  // namespace

command::Tables load_tables(const RecordStore& store) {
  command::Tables tables;
  const std::u16string fonts = store.table(fonts_name);
  const std::u16string colors = store.table(colors_name);
  if (!fonts.empty()) tables.fonts.put_All(fonts);
  if (!colors.empty()) read_colors_record(*tables.colors, colors);
  return tables;
}

void save_tables(RecordStore& store, const command::Tables& tables) {
  store.together([&] {
    store.put_table(fonts_name, tables.fonts.get_All());
    store.put_table(colors_name, tables.colors->get_All());
  });
}

}  // namespace qel::forms
