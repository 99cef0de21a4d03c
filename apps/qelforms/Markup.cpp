#include "Markup.h"

#include <utility>

#include "qel/base/Scan.h"
#include "qel/model/StyleDecoder.h"

namespace qel::forms {

std::u16string visible_text(std::u16string_view markup) {
  StyleDecoder decoder;
  decoder.put_QELText(with_line_codes(markup));
  return replace_all(decoder.GetQELText(ofPlainText | ofLineCodes, false, false), u"\r\n", u" ");
}

std::u16string codes_to_close(std::u16string_view markup) {
  StyleDecoder decoder;
  // A character at the end has the style that is left on. This one cannot complete a code.
  decoder.put_QELText(std::u16string(markup).append(u"x"));
  return decoder.OffCodes(*decoder.SegmentStyle(decoder.get_SegmentCount()));
}

std::u16string with_line_codes(std::u16string_view markup) {
  std::u16string text = replace_all(std::u16string(markup), u"\r\n", u"/nl");
  return replace_all(replace_all(std::move(text), u"\n", u"/nl"), u"\r", u"/nl");
}

}  // namespace qel::forms
