#include "TextInput.h"

#include <cstddef>
#include <cstdint>
#include <utility>

#include "qel/base/Utf8.h"
#include "qel/richtext/CodePage.h"
#include "qel/richtext/DocumentReader.h"
#include "qel/richtext/RtfBytes.h"

namespace qel::command {
namespace {

constexpr std::string_view utf8_mark = "\xEF\xBB\xBF";
constexpr std::string_view utf16_little_endian_mark = "\xFF\xFE";
constexpr std::string_view utf16_big_endian_mark = "\xFE\xFF";

bool has_utf16_mark(std::string_view bytes) {
  return bytes.starts_with(utf16_little_endian_mark) || bytes.starts_with(utf16_big_endian_mark);
}

/// `bytes` begin with a mark.
std::u16string decode_utf16(std::string_view bytes) {
  const std::size_t low = bytes.starts_with(utf16_little_endian_mark) ? 0 : 1;
  bytes.remove_prefix(utf16_little_endian_mark.size());
  const auto byte = [bytes](std::size_t at) { return static_cast<std::uint8_t>(bytes[at]); };
  std::u16string text(bytes.size() / 2, u'\0');
  for (std::size_t unit = 0; unit < text.size(); ++unit) {
    text[unit] = static_cast<char16_t>(byte(2 * unit + low) | (byte(2 * unit + 1 - low) << 8));
  }
  if (bytes.size() % 2 != 0) text.push_back(richtext::decode_western(byte(bytes.size() - 1)));
  return text;
}

std::u16string decode(std::string_view bytes) {
  if (has_utf16_mark(bytes)) return decode_utf16(bytes);
  if (bytes.starts_with(utf8_mark)) bytes.remove_prefix(utf8_mark.size());
  return from_utf8(bytes, richtext::decode_western);
}

}  // namespace

std::u16string decode_text(std::string&& bytes) {
  const std::string taken = std::move(bytes);
  return decode(taken);
}

bool is_rtf(std::string_view bytes) {
  constexpr std::size_t enough = 4096;
  return richtext::is_rtf(decode(bytes.substr(0, enough)));
}

std::u16string decode_rtf(std::string&& bytes) {
  const std::string taken = std::move(bytes);
  return has_utf16_mark(taken) ? decode_utf16(taken) : richtext::rtf_from_bytes(taken);
}

}  // namespace qel::command
