#include "qel/tables/TableRecords.h"

#include "qel/platform/Common.h"

namespace qel::table_records {

Color resolved(Color color) { return is_system_color(color) ? system_color_value(color) : color; }

Color system_color_value(Color color) {
  return Common::current_platform()->system_colors().color(system_color_index(color));
}

}  // namespace qel::table_records
