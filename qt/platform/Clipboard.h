#pragma once

#include "qel/platform/Clipboard.h"

namespace qel::qt {

/// The system's clipboard: plain text, HTML, and RTF under both of its names.
class Clipboard : public platform::Clipboard {
 public:
  std::optional<std::u16string> rtf() const override;
  std::optional<std::u16string> html() const override;
  std::optional<std::u16string> text() const override;
  void put(std::u16string_view text, std::u16string_view rtf) override;
  std::optional<richtext::Document> read_html(std::u16string_view html,
                                              const richtext::CharFormat& base) const override;
};

}  // namespace qel::qt
