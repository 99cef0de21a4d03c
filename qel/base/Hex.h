#pragma once

namespace qel {

/// The value of a hexadecimal digit in either case; -1 for any other character.
constexpr int hex_value(char16_t character) {
  if (character >= u'0' && character <= u'9') return character - u'0';
  if (character >= u'a' && character <= u'f') return character - u'a' + 10;
  if (character >= u'A' && character <= u'F') return character - u'A' + 10;
  return -1;
}

}  // namespace qel
