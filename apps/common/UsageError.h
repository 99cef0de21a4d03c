#pragma once

#include <stdexcept>

namespace qel::command {

/// The command was called with arguments that are not valid; the message says which.
class UsageError : public std::runtime_error {
 public:
  using runtime_error::runtime_error;
};

}  // namespace qel::command
