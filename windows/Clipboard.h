#pragma once

#include "qel/platform/Clipboard.h"

namespace qel::windows {

/// The system's clipboard: plain text, and RTF as bytes.
class Clipboard : public platform::Clipboard {
 public:
  std::optional<std::u16string> rtf() const override;
  std::optional<std::u16string> text() const override;
  /// Raises when another program keeps the clipboard open.
  void put(std::u16string_view text, std::u16string_view rtf) override;
};

}  // namespace qel::windows
