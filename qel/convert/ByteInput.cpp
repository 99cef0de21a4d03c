#include "qel/convert/ByteInput.h"

#include <algorithm>

#include "qel/base/Utf16.h"
#include "qel/base/Utf8.h"
#include "qel/richtext/CodePage.h"

namespace qel::convert {
namespace {

/// How many bytes at the end may be the beginning of a character in UTF-8.
std::size_t cut_utf8(std::string_view bytes) {
  constexpr std::size_t longest = 4;
  for (std::size_t tail = 1; tail < longest && tail <= bytes.size(); ++tail) {
    const auto byte = static_cast<std::uint8_t>(bytes[bytes.size() - tail]);
    const bool is_tail = (byte & 0xC0U) == 0x80;
    if (is_tail) continue;
    const std::size_t length = byte < 0xC0 ? 1 : byte < 0xE0 ? 2 : byte < 0xF0 ? 3 : 4;
    return length > tail ? tail : 0;
  }
  return 0;
}

std::size_t append_utf16(std::u16string& out, std::string_view bytes, bool is_big_endian,
                         bool is_last) {
  const auto byte = [bytes](std::size_t at) { return static_cast<std::uint8_t>(bytes[at]); };
  const std::size_t low = is_big_endian ? 1 : 0;
  std::size_t at = 0;
  for (; at + 1 < bytes.size(); at += 2) {
    out.push_back(static_cast<char16_t>(byte(at + low) | (byte(at + 1 - low) << 8)));
  }
  if (is_last) {
    if (at < bytes.size()) out.push_back(richtext::decode_western(byte(at)));
    return bytes.size();
  }
  if (at > 0 && is_high_surrogate(out.back())) {
    out.pop_back();
    at -= 2;
  }
  return at;
}

}  // namespace

Mark mark_of(std::string_view bytes) {
  if (bytes.starts_with("\xEF\xBB\xBF")) return {Encoding::utf8, 3};
  if (bytes.starts_with("\xFF\xFE")) return {Encoding::utf16_little_endian, 2};
  if (bytes.starts_with("\xFE\xFF")) return {Encoding::utf16_big_endian, 2};
  return {};
}

std::size_t append_decoded(std::u16string& out, std::string_view bytes, Encoding encoding,
                           bool is_last) {
  switch (encoding) {
    case Encoding::bytes: {
      const std::size_t kept = out.size();
      out.resize(kept + bytes.size());
      std::transform(
          bytes.begin(), bytes.end(), out.begin() + static_cast<std::ptrdiff_t>(kept),
          [](char byte) { return static_cast<char16_t>(static_cast<std::uint8_t>(byte)); });
      return bytes.size();
    }
    case Encoding::utf8:
      if (!is_last) bytes = without_cut_character(bytes);
      append_utf16_of(out, bytes, richtext::decode_western);
      return bytes.size();
    default:
      return append_utf16(out, bytes, encoding == Encoding::utf16_big_endian, is_last);
  }
}

std::string_view without_cut_character(std::string_view bytes) {
  return bytes.substr(0, bytes.size() - cut_utf8(bytes));
}

std::size_t append_decoded(std::string& out, std::string_view bytes, bool is_last) {
  if (!is_last) bytes = without_cut_character(bytes);
  append_valid_utf8(out, bytes, richtext::decode_western);
  return bytes.size();
}

std::string bytes_of(std::u16string_view units) {
  std::string bytes(units.size(), '\0');
  std::transform(units.begin(), units.end(), bytes.begin(),
                 [](char16_t unit) { return static_cast<char>(unit); });
  return bytes;
}

}  // namespace qel::convert
