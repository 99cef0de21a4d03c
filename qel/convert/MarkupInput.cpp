#include "qel/convert/MarkupInput.h"

namespace qel::convert {

std::u16string_view without_last_break(std::u16string_view markup) {
  if (markup.ends_with(u'\n')) markup.remove_suffix(1);
  if (markup.ends_with(u'\r')) markup.remove_suffix(1);
  return markup;
}

std::size_t MarkupInput::read(std::u16string_view part, bool is_last) {
  const std::size_t size = part.size();
  if (is_last && is_file_) part = without_last_break(part);
  scanner_.go_on(part, is_last);
  read_runs(scanner_, sink_);
  return is_last ? size : scanner_.position();
}

}  // namespace qel::convert
