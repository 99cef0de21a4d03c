#pragma once

#include <stdexcept>

namespace qel::command {

/// The command was called in a way that cannot be meant; the message says in which.
class UsageError : public std::runtime_error {
 public:
  using runtime_error::runtime_error;
};

}  // namespace qel::command
