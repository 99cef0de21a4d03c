#include "qel/convert/TextInput.h"

#include "qel/base/Scan.h"

namespace qel::convert {

std::size_t TextInput::read(std::u16string_view part, bool is_last) {
  const style_codes::CodeState plain;
  // The second half of a break may follow.
  const bool is_cut = !is_last && part.ends_with(u'\r');
  if (is_cut) part.remove_suffix(1);
  for (std::size_t at = 0; at < part.size();) {
    const std::size_t end = find_any<u'\r', u'\n'>(part, at);
    if (end > at) sink_.text(part.substr(at, end - at), plain);
    if (end == part.size()) break;
    sink_.line_break(plain);
    at = end + (part.substr(end, 2) == u"\r\n" ? 2 : 1);
  }
  return part.size();
}

}  // namespace qel::convert
