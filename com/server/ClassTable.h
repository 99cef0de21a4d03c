#pragma once

#include <unknwn.h>
#include <windows.h>

#include <span>

namespace qel::com {

/// A class that hosts can create.
struct ClassEntry {
  const CLSID& id;
  bool is_control;   ///< has a place on forms
  bool opens_files;  ///< unless the host tells it not to
  /// A new object with a reference for the caller, as a part of `outer` unless that is null; raises
  /// where it cannot be made.
  IUnknown* (*create)(IUnknown* outer);
};

/// All of them.
std::span<const ClassEntry> creatable_classes();

}  // namespace qel::com
