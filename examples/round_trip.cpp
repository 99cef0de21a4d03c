// Markup to RTF, back to markup, and the runs of the text. Link to QEL::qel; no window is needed.
#include <cstdint>
#include <iostream>

#include "qel/base/Utf8.h"
#include "qel/qel.h"

int main() {
  const qel::Common::ConversionSlots slots;  // what conversions on this thread work with
  qel::QELIndexFonts fonts;
  const qel::QELIndexColors colors;
  qel::RTFParser parser;
  parser.put_Lossless(true);

  const std::u16string rtf = parser.QELToRTF(u"Hello /b1world/b0/nl", fonts, colors);
  const std::u16string markup = parser.RTFToQEL(rtf, fonts, colors);
  std::cout << qel::to_utf8(markup) << '\n';

  qel::StyleDecoder decoder;
  decoder.put_Lossless(true);
  decoder.put_QELText(markup);
  for (std::int32_t i = 1; i <= decoder.get_SegmentCount(); ++i) {
    std::cout << qel::to_utf8(decoder.SegmentText(i))
              << (decoder.SegmentStyle(i)->Bold ? " is bold\n" : " is not bold\n");
  }
}
