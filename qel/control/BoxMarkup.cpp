#include "qel/control/BoxMarkup.h"

#include <cstddef>
#include <string_view>

namespace qel {

std::u16string with_closing_paragraph(std::u16string rtf, const RTFParser& parser) {
  constexpr std::u16string_view paragraph = u"\\par";
  const std::size_t end = rtf.rfind(u'}');
  if (!parser.get_ConvertNLToSpace() || end == std::u16string::npos) return rtf;
  std::u16string_view content = rtf;
  content = content.substr(0, content.find_last_not_of(u"} \r\n") + 1);
  // A backslash before it makes it text.
  const bool is_closed = content.ends_with(paragraph) && !content.ends_with(u"\\\\par");
  if (!is_closed) rtf.insert(end, paragraph);
  return rtf;
}

std::u16string rtf_for_markup(const platform::RichEdit& box, const RTFParser& parser) {
  return with_closing_paragraph(RTFParser::PreprocessRTF(box.get_TextRTF()), parser);
}

}  // namespace qel
