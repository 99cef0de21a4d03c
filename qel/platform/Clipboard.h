#pragma once

#include <optional>
#include <string>
#include <string_view>

#include "qel/platform/DragData.h"

namespace qel::platform {

/// The system's clipboard, as far as text goes.
class Clipboard {
 public:
  Clipboard() = default;
  Clipboard(const Clipboard&) = delete;
  Clipboard& operator=(const Clipboard&) = delete;
  virtual ~Clipboard() = default;

  /// Its content in that format; empty when it has none.
  virtual std::optional<std::u16string> rtf() const = 0;
  virtual std::optional<std::u16string> text() const = 0;
  /// Clears it and puts the same content there in both formats.
  virtual void put(std::u16string_view text, std::u16string_view rtf) = 0;

  /// All of its content.
  DragData data() const {
    DragData data;
    if (const auto rtf = this->rtf()) data.put(rtf_format, *rtf);
    if (const auto text = this->text()) data.put(text_format, *text);
    return data;
  }
};

}  // namespace qel::platform
