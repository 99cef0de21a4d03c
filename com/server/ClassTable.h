#pragma once

#include <unknwn.h>
#include <windows.h>

#include <cstdint>
#include <span>

namespace qel::com {

enum class ClassKind : std::uint8_t {
  object,
  file_user,  ///< opens files, unless the host tells it not to
  control,    ///< has a place on forms
  page        ///< shows properties of controls; not for scripts
};

/// A class that hosts can create.
struct ClassEntry {
  const CLSID& id;
  ClassKind kind;
  /// A new object with a reference for the caller, as a part of `outer` unless that is null; raises
  /// where it cannot be made.
  IUnknown* (*create)(IUnknown* outer);
};

/// All of them.
std::span<const ClassEntry> creatable_classes();

}  // namespace qel::com
