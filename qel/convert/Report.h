#pragma once

#include <cstdint>

namespace qel::convert {

/// What a conversion did.
struct Report {
  std::uint64_t bytes_in = 0;
  std::uint64_t bytes_out = 0;
  bool is_stopped = false;  ///< the caller ended it: the output is a beginning
};

}  // namespace qel::convert
