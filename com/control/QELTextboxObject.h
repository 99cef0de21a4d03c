#pragma once

#include "com/automation/Adapter.h"
#include "qel/base/Error.h"

namespace qel::com {

class QELTextboxObject {
 public:
  [[noreturn]] static IUnknown* create() {
    throw Error(Error::component_base, "QELTextbox", "the control is not there");
  }
};

}  // namespace qel::com
