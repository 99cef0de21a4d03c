#pragma once

#include "qel/convert/Options.h"

namespace qel::test {

inline convert::Options options_for(convert::InputFormat from, convert::OutputFormat to,
                                    Way way = Way::lossless) {
  convert::Options options;
  options.from = from;
  options.to = to;
  options.way = way;
  return options;
}

}  // namespace qel::test
