#pragma once

#include <string_view>

#include "qel/base/Color.h"

namespace qel {

/// What a colour is called, such as "Dark green"; a system colour has no name.
std::u16string_view color_name(Color color);

}  // namespace qel
