#include "Markup.h"

#include <utility>

#include "qel/base/Scan.h"
#include "qel/model/StyleDecoder.h"
#include "qel/text/MarkupStrings.h"

namespace qel::forms {

std::u16string visible_text(std::u16string_view markup) {
  StyleDecoder decoder;
  decoder.put_Lossless(true);
  decoder.put_QELText(markup);
  return replace_all(decoder.GetQELText(ofPlainText | ofLineCodes, false, false), u"\r\n", u" ");
}

std::u16string with_closed_codes(std::u16string_view markup) {
  return markup::left(markup, markup::npos, Way::lossless);
}

std::u16string with_line_codes(std::u16string_view markup) {
  std::u16string text = replace_all(std::u16string(markup), u"\r\n", u"/nl");
  return replace_all(replace_all(std::move(text), u"\n", u"/nl"), u"\r", u"/nl");
}

}  // namespace qel::forms
