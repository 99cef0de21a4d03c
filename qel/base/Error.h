#pragma once

#include <cstdint>
#include <stdexcept>
#include <string>

namespace qel {

/// An error reported to the host, with what the platform's error object holds.
class Error : public std::runtime_error {
 public:
  /// Base of the component's own error numbers.
  static constexpr std::uint32_t component_base = 0x80040000U;
  /// The platform's number for a subscript out of range.
  static constexpr std::uint32_t subscript_out_of_range = 9;
  /// The platform's number for a value that is too large.
  static constexpr std::uint32_t overflow = 6;
  /// The platform's number for a value of the wrong kind.
  static constexpr std::uint32_t type_mismatch = 13;
  /// The platform's number for a call that needs an object which is not set.
  static constexpr std::uint32_t object_not_set = 91;

  /// `source` names the class that raised the error; both texts are plain ASCII.
  Error(std::uint32_t number, std::string source, const std::string& description)
      : std::runtime_error(source + ": " + description),
        number_(number),
        source_(std::move(source)),
        description_(description) {}

  std::uint32_t number() const noexcept { return number_; }
  const std::string& source() const noexcept { return source_; }
  const std::string& description() const noexcept { return description_; }

 private:
  std::uint32_t number_;
  std::string source_;
  std::string description_;
};

}  // namespace qel
