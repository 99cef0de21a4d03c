#pragma once

#include "qel/platform/Clipboard.h"

namespace qel::windows {

/// The system's clipboard: plain text, RTF as bytes, and HTML with its header.
class Clipboard : public platform::Clipboard {
 public:
  std::optional<std::u16string> rtf() const override;
  std::optional<std::u16string> html() const override;
  std::optional<std::u16string> text() const override;
  /// Raises when another program keeps the clipboard open.
  void put(std::u16string_view text, std::u16string_view rtf) override;
  /// Reads it where the library was built with `QEL::html`.
  std::optional<richtext::Document> read_html(std::u16string_view html,
                                              const richtext::CharFormat& base) const override;
};

}  // namespace qel::windows
