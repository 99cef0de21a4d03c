#pragma once

#include "qel/platform/Clipboard.h"

namespace qel::qt {

/// The system's clipboard: plain text, and RTF under both of its names.
class Clipboard : public platform::Clipboard {
 public:
  std::optional<std::u16string> rtf() const override;
  std::optional<std::u16string> text() const override;
  void put(std::u16string_view text, std::u16string_view rtf) override;
};

}  // namespace qel::qt
