#include <gtest/gtest.h>

#include <cstdint>
#include <string>
#include <string_view>
#include <utility>

#include "qel/richtext/CodePage.h"

namespace qel::richtext {
namespace {

/// The sum of what `scripts/generate-code-pages sums` counts: characters that no system replaces,
/// nor adds, as Windows adds U+05BA to 1255.
std::uint32_t sum_of(int number) {
  const CodePage page(number);
  std::uint32_t sum = 0;
  const auto add = [&](std::uint32_t code, std::u16string_view text) {
    if (text.size() != 1 || text[0] < 0xA0 || text[0] == 0x05BA) return;
    const bool is_private = text[0] >= 0xE000 && text[0] < 0xF900;
    if (!is_private) sum = sum * 31 + code + text[0];
  };
  for (std::uint32_t code = 0x80; code < 0x100; ++code) {
    const auto byte = static_cast<std::uint8_t>(code);
    const char16_t character = page.decode_single(byte);
    if (page.length_from(byte) == 1 && character != decode_western(byte))
      add(code, {&character, 1});
  }
  for (std::uint32_t code = 0x8140; code < 0x10000; ++code) {
    const auto lead = static_cast<std::uint8_t>(code >> 8);
    if (page.length_from(lead) < 2) continue;
    add(code, page.decode(std::string{static_cast<char>(lead), static_cast<char>(code & 0xFF)}));
  }
  return sum;
}

TEST(CodePage, AgreeWithAnotherSource) {
  const std::pair<int, std::uint32_t> sums[] = {
      {437, 0xA44134FB},   {737, 0x671DFE9B},   {775, 0x40A55B1B},   {850, 0xCEEF54E7},
      {852, 0x989A8CB4},   {855, 0xEE95D2A5},   {857, 0x9EB070BE},   {860, 0x5FE63538},
      {861, 0x9E6F79CA},   {862, 0x1D13882B},   {863, 0x2B8F07E8},   {864, 0x0BC64FDC},
      {865, 0x823EF3AD},   {866, 0xBC981CF6},   {869, 0x13ABD9CA},   {874, 0x36A1F500},
      {1250, 0xFBD951AB},  {1251, 0xB9FB1A07},  {1253, 0xC489CAFC},  {1254, 0x68EC3AE1},
      {1255, 0x46DA130A},  {1256, 0x2D6E13E8},  {1257, 0x5047A1B4},  {1258, 0xC71F9DAF},
      {20866, 0xBF3B479C}, {28592, 0x19527B37}, {28593, 0x762420B5}, {28594, 0x6DCC2F2C},
      {28595, 0x40AC4AA2}, {28596, 0x811D4058}, {28599, 0x68EC3AE1}, {28603, 0xA436F6F3},
      {28605, 0x1FFA4A3C}, {932, 0xAD4FA74A},   {936, 0xCEA0F9F5},   {949, 0xE132857B},
      {950, 0xABCD2922}};
  for (const auto& [number, sum] : sums) EXPECT_EQ(sum_of(number), sum) << number;
}

}  // namespace
}  // namespace qel::richtext
