#include <cstdio>

#include "qel/qel.h"

int main() {
  qel::StyleDecoder decoder;
  decoder.put_QELText(u"plain and /b1bold/b0");
  std::printf("QEL %s: %d segments\n", qel::version, static_cast<int>(decoder.get_SegmentCount()));
  return decoder.get_SegmentCount() == 2 ? 0 : 1;
}
