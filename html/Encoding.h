#pragma once

#include <string>
#include <string_view>

namespace qel::html {

/// The bytes of a file of HTML as UTF-8, without a mark: see `read_html`.
std::string to_valid_utf8(std::string_view bytes);

}  // namespace qel::html
