#pragma once

#include "qel/platform/Platform.h"

namespace qel::windows {

/// The visual styles of the desktop, as the system's library of that name knows them.
class VisualStyles : public platform::VisualStyles {
 public:
  /// Styles as the library `library` knows them, which is looked for when they are asked for.
  explicit VisualStyles(const wchar_t* library = L"uxtheme.dll") : library_(library) {}

  /// Raises where the system has no such library.
  std::optional<std::u16string> color_scheme() const override;

 private:
  const wchar_t* library_;
};

}  // namespace qel::windows
