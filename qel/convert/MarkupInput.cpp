#include "qel/convert/MarkupInput.h"

namespace qel::convert {

std::size_t MarkupInput::read(std::u16string_view part, bool is_last) {
  const std::size_t size = part.size();
  if (is_last && is_file_) {
    if (part.ends_with(u'\n')) part.remove_suffix(1);
    if (part.ends_with(u'\r')) part.remove_suffix(1);
  }
  scanner_.go_on(part, is_last);
  read_runs(scanner_, sink_);
  return is_last ? size : scanner_.position();
}

}  // namespace qel::convert
