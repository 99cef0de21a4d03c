#pragma once

#include <string>
#include <string_view>

namespace qel {

/// Appends a text as it stands between the quotes of a JSON string.
void append_json(std::u16string& out, std::u16string_view text);

}  // namespace qel
