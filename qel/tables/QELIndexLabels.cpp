#include "qel/tables/QELIndexLabels.h"

#include <cstddef>

#include "qel/base/Error.h"
#include "qel/tables/TableRecords.h"

namespace qel {
namespace {

constexpr std::u16string_view separator = u"<Labels:Rec>";

bool has_name(std::int16_t index) { return index >= 1 && table_records::is_index(index); }

}  // namespace

std::u16string QELIndexLabels::get_All() const {
  std::u16string record = table_records::write_items(
      [&](std::int16_t index) { return records::from_integer(get_Color(index)); });
  record.append(separator);
  // Not a slip: stored records have colour 0 in place of name 0.
  record.append(table_records::write_items([&](std::int16_t index) {
    return index == 0 ? records::from_integer(get_Color(0)) : get_Name(index);
  }));
  return record.append(separator).append(records::from_integer(active_));
}

void QELIndexLabels::put_All(std::u16string_view Value) {
  const auto fields = records::split(Value, separator, 3);
  table_records::read_colors(fields[0], [&](std::int16_t index, Color color) {
    colors_[static_cast<std::size_t>(index)] = color;
  });
  const auto names = records::split(fields[1], table_records::item_separator, size);
  for (std::size_t i = 0; i < size; ++i) names_[i] = names[i];
  records::read(active_, fields[2]);
}

void QELIndexLabels::put_ActiveLabelIndex(std::int16_t Index) {
  if (has_name(Index)) active_ = Index;
}

void QELIndexLabels::CopyFrom(const QELIndexLabels& Source) {
  for (std::size_t i = 0; i < size; ++i) {
    colors_[i] = Source.get_Color(static_cast<std::int16_t>(i));
    names_[i] = Source.get_Name(static_cast<std::int16_t>(i));
  }
  active_ = Source.active_;
}

void QELIndexLabels::CopyTo(QELIndexLabels& Target) const {
  for (std::int16_t i = 0; table_records::is_index(i); ++i) {
    Target.put_Color(i, get_Color(i));
    Target.put_Name(i, get_Name(i));
  }
  Target.put_ActiveLabelIndex(active_);
}

Color QELIndexLabels::get_Color(std::int16_t Index) const {
  return table_records::is_index(Index) ? colors_[static_cast<std::size_t>(Index)] : 0;
}

void QELIndexLabels::put_Color(std::int16_t Index, Color Value) {
  if (!table_records::is_index(Index)) return;
  const Color value = table_records::resolved(Value);
  for (std::int16_t other = 0; table_records::is_index(other); ++other) {
    if (other == Index || get_Color(other) != value) continue;
    throw Error(Error::component_base + 11002, "QELIndexLabels",
                "You attempted to set a label color that is being used by one of the other already "
                "defined label colors.");
  }
  colors_[static_cast<std::size_t>(Index)] = value;
}

std::u16string QELIndexLabels::get_Name(std::int16_t Index) const {
  return has_name(Index) ? names_[static_cast<std::size_t>(Index)] : std::u16string();
}

void QELIndexLabels::put_Name(std::int16_t Index, std::u16string_view Value) {
  if (has_name(Index)) names_[static_cast<std::size_t>(Index)] = Value;
}

}  // namespace qel
