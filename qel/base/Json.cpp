#include "qel/base/Json.h"

#include <cstddef>
#include <cstdint>

#include "qel/base/Scan.h"

namespace qel {
namespace {

void append_control(std::u16string& out, char16_t character) {
  constexpr std::u16string_view named = u"\b\t\n\f\r";
  constexpr std::u16string_view names = u"btnfr";
  constexpr std::u16string_view hex_digits = u"0123456789abcdef";
  const std::size_t name = named.find(character);
  if (name != std::u16string_view::npos) {
    out.append({u'\\', names[name]});
    return;
  }
  out.append(u"\\u00");
  out.append({hex_digits[character >> 4U], hex_digits[character & 0xFU]});
}

}  // namespace

void append_json(std::u16string& out, std::u16string_view text) {
  const auto is_special = [](auto c) {
    return (c < std::uint16_t{u' '}) | (c == std::uint16_t{u'"'}) | (c == std::uint16_t{u'\\'});
  };
  for (std::size_t at = 0; at < text.size(); ++at) {
    const std::size_t end = find_first(text, at, is_special);
    out.append(text, at, end - at);
    if (end == text.size()) return;
    if (text[end] < u' ') {
      append_control(out, text[end]);
    } else {
      out.append({u'\\', text[end]});
    }
    at = end;
  }
}

}  // namespace qel
