#pragma once

#include "qel/platform/Platform.h"

namespace qel::windows {

/// The visual styles of the system, from its library for them.
class VisualStyles : public platform::VisualStyles {
 public:
  /// Uses the styles library named `library`, which is loaded when the styles are asked for.
  explicit VisualStyles(const wchar_t* library = L"uxtheme.dll") : library_(library) {}

  /// Raises where the system has no such library.
  std::optional<std::u16string> color_scheme() const override;

 private:
  const wchar_t* library_;
};

}  // namespace qel::windows
