#pragma once

#include <qelcom.h>
#include <windows.h>

#include "com/automation/Values.h"
#include "com/pages/Settings.h"
#include "windows/Pointer.h"

namespace qel::com {

/// A text box that shows how the settings look.
class Preview {
 public:
  Preview();

  void put(const Setting& setting, const Value& value);
  /// Draws it as wide and high as `bounds`, which are in pixels.
  void draw(HDC context, const RECT& bounds);

 private:
  Pointer<IQELTextbox> box_;
};

}  // namespace qel::com
