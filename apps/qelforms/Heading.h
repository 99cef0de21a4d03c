#pragma once

#include <cstdint>
#include <string>

namespace qel::forms {

/// What a list shows of a record.
struct Heading {
  std::int64_t id = 0;
  std::u16string title;  ///< the visible text, on one line
  std::int64_t changed = 0;
  std::u16string snippet;  ///< of a search: the words around those that were found in the body
};

}  // namespace qel::forms
