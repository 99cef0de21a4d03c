#pragma once

#include <cstdint>

#include "qel/richtext/CodePage.h"

namespace qel {

/// The character for a box, which takes characters, where a listener may have changed the `typed`
/// one to the code of a typographic quote in code page 1252.
inline std::int16_t character_of(std::int16_t code, std::int16_t typed) {
  const bool is_quote = code != typed && code >= 0x91 && code <= 0x94;
  if (!is_quote) return code;
  return static_cast<std::int16_t>(richtext::decode_western(static_cast<std::uint8_t>(code)));
}

}  // namespace qel
