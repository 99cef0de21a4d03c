#pragma once

#include <windows.h>

#include <cstdint>
#include <string>

namespace qel::com {

/// Whether all users of a machine can create the classes, or only the one who registers them.
enum class RegistrationScope : std::uint8_t { machine, user };

/// The entries of the component in the system's registry.
class Registration {
 public:
  explicit Registration(RegistrationScope scope) : scope_(scope) {}

  /// Enters all classes and the type library. After a failure some entries may be there.
  HRESULT add() const noexcept;
  /// Takes all of them out again, and nothing else, wherever the library was when they were made.
  /// Does not mind what is not there.
  HRESULT remove() const noexcept;

 private:
  HKEY root() const;
  HRESULT add_classes() const;
  HRESULT add_type_library() const;
  HRESULT remove_classes() const;
  HRESULT remove_type_library() const;

  RegistrationScope scope_;
};

}  // namespace qel::com
