#include "qel/tables/QELIndexColors.h"

#include <cstddef>
#include <exception>

#include "qel/base/Error.h"
#include "qel/tables/TableRecords.h"

namespace qel {
namespace {

constexpr std::u16string_view separator = u"<Colors:Rec>";

}  // namespace

std::int16_t QELIndexColors::ColorIndexGivenColor(Color Value) const {
  for (std::int16_t i = 0; table_records::is_index(i); ++i) {
    if (get_Color(i) == Value) return i;
  }
  return -1;
}

Color QELIndexColors::ConvertSystemColor(Color Value) {
  return table_records::system_color_value(Value);
}

std::u16string QELIndexColors::get_All() const {
  const auto labels = get_Labels();
  const auto number = [](Color color) { return records::from_integer(color); };
  std::u16string record =
      table_records::write_items([&](std::int16_t i) { return number(get_Color(i)); });
  record.append(separator).append(
      table_records::write_items([&](std::int16_t i) { return number(labels->get_Color(i)); }));
  record.append(separator).append(
      table_records::write_items([&](std::int16_t i) { return labels->get_Name(i); }));
  return record.append(separator).append(number(labels->get_ActiveLabelIndex()));
}

void QELIndexColors::put_All(std::u16string_view Value) {
  const auto fields = records::split(Value, separator, 4);
  table_records::read_colors(fields[0], [&](std::int16_t index, Color color) {
    colors_[static_cast<std::size_t>(index)] = color;
  });
  table_records::read_colors(fields[1], [&](std::int16_t index, Color color) {
    try {
      put_LabelColor(index, color);
    } catch (const std::exception&) {
      // Another label may have this colour: the item is skipped like one that is not a number.
      return;
    }
  });
  const auto names = records::split(fields[2], table_records::item_separator);
  for (std::size_t i = 0; i < names.size() && i < colors_.size(); ++i) {
    put_LabelName(static_cast<std::int16_t>(i), names[i]);
  }
  if (const auto active = records::to_integer16(fields[3])) put_ActiveLabelIndex(*active);
}

std::shared_ptr<QELIndexLabels> QELIndexColors::get_Labels() const {
  if (!labels_) labels_ = std::make_shared<QELIndexLabels>();
  return labels_;
}

void QELIndexColors::CopyFrom(const QELIndexColors& Source) {
  colors_ = Source.colors_;
  get_Labels()->CopyFrom(*Source.get_Labels());
}

void QELIndexColors::CopyTo(QELIndexColors& Target) const {
  for (std::int16_t i = 0; table_records::is_index(i); ++i) Target.put_Color(i, get_Color(i));
  get_Labels()->CopyTo(*Target.get_Labels());
}

Color QELIndexColors::get_Color(std::int16_t Index) const {
  return table_records::is_index(Index) ? colors_[static_cast<std::size_t>(Index)] : 0;
}

void QELIndexColors::put_Color(std::int16_t Index, Color Value) {
  const Color value = table_records::resolved(Value);
  if (table_records::is_index(Index)) colors_[static_cast<std::size_t>(Index)] = value;
  rebuild_color_table();
}

void QELIndexColors::require_unused_color(Color value, std::int16_t index) const {
  if (!is_used_elsewhere(value, index)) return;
  throw Error(Error::component_base + 11001, "QELIndexColors",
              "You attempted to set a color that is being used by one of the other already defined "
              "colors.");
}

void QELIndexColors::require_unused_label_color(Color value, std::int16_t index) const {
  if (!is_used_elsewhere(value, index)) return;
  throw Error(Error::component_base + 11002, "QELIndexColors",
              "You attempted to set a label color that is being used by one of the other already "
              "defined label colors.");
}

bool QELIndexColors::is_used_elsewhere(Color value, std::int16_t index) const {
  for (std::int16_t other = 0; table_records::is_index(other); ++other) {
    if (other != index && get_Color(other) == value) return true;
  }
  return false;
}

void QELIndexColors::rebuild_color_table() {
  color_table_ = u"{\\colortbl";
  for (const Color color : colors_) {
    color_table_.append(u"\\red").append(records::from_integer(red_of(color)));
    color_table_.append(u"\\green").append(records::from_integer(green_of(color)));
    color_table_.append(u"\\blue").append(records::from_integer(blue_of(color))).append(u";");
  }
  color_table_.append(u"}");
}

}  // namespace qel
