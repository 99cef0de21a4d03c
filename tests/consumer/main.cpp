#include <cstdio>

// What programs and platforms include. An installed header that none of these needs is private.
#include "qel/base/Utf8.h"
#include "qel/box/Search.h"
#include "qel/convert/HtmlWriter.h"
#include "qel/convert/Lint.h"
#include "qel/convert/Normalize.h"
#include "qel/headless/BoxUser.h"
#include "qel/headless/ControlSite.h"
#include "qel/headless/Drag.h"
#include "qel/headless/FixedCanvas.h"
#include "qel/headless/HeadlessPlatform.h"
#include "qel/headless/PropertyBag.h"
#include "qel/headless/SvgCanvas.h"
#include "qel/platform/Keys.h"
#include "qel/qel.h"
#include "qel/richtext/CompressedRtf.h"
#include "qel/richtext/DocumentReader.h"
#include "qel/richtext/RtfBytes.h"
#include "qel/richtext/RtfWriter.h"

int main() {
  qel::StyleDecoder decoder;
  decoder.put_QELText(u"plain and /b1bold/b0");
  std::printf("QEL %s: %d segments\n", qel::version, static_cast<int>(decoder.get_SegmentCount()));
  return decoder.get_SegmentCount() == 2 ? 0 : 1;
}
