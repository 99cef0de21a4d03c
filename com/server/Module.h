#pragma once

#include <windows.h>

#include <string>

namespace qel::com {

/// The loaded library itself.
class Module {
 public:
  /// Full path of its file.
  static std::wstring path();
  /// Whether nothing of it is in use, so that it can be unloaded.
  static bool is_idle() noexcept;

 private:
  friend class ModuleUse;
  static void add_use(long count) noexcept;
};

/// Keeps the library loaded as long as it lives.
class ModuleUse {
 public:
  ModuleUse() noexcept { Module::add_use(1); }
  ModuleUse(const ModuleUse&) = delete;
  ModuleUse& operator=(const ModuleUse&) = delete;
  ~ModuleUse() { Module::add_use(-1); }

  /// For a host that locks the library by itself.
  static void lock(bool locked) noexcept { Module::add_use(locked ? 1 : -1); }
};

}  // namespace qel::com
