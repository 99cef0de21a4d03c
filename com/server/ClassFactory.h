#pragma once

#include <unknwn.h>
#include <windows.h>

#include "com/server/ClassTable.h"

namespace qel::com {

/// A factory of the class, asked for its interface `id`; the entry has to outlive it.
HRESULT class_factory_of(const ClassEntry& entry, REFIID id, void** result) noexcept;

}  // namespace qel::com
