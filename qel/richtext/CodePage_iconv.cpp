#include <iconv.h>

#include <array>
#include <cstddef>
#include <string>
#include <string_view>
#include <utility>

#include "qel/richtext/CodePage.h"

namespace qel::richtext {
namespace {

/// The converter's name for a code page, usually "CP" and the number.
std::string name_of(int number) {
  constexpr std::array<std::pair<int, std::string_view>, 10> names = {{{708, "ASMO-708"},
                                                                       {1361, "JOHAB"},
                                                                       {10001, "CP932"},
                                                                       {10002, "CP950"},
                                                                       {10003, "EUC-KR"},
                                                                       {10008, "EUC-CN"},
                                                                       {20866, "KOI8-R"},
                                                                       {21866, "KOI8-U"},
                                                                       {54936, "GB18030"},
                                                                       {65001, "UTF-8"}}};
  for (const auto& [code_page, name] : names) {
    if (code_page == number) return std::string(name);
  }
  constexpr int before_iso = 28590;
  const int part = number - before_iso;
  if (part >= 1 && part <= 16) return "ISO-8859-" + std::to_string(part);
  return "CP" + std::to_string(number);
}

iconv_t invalid_converter() {
  return reinterpret_cast<iconv_t>(-1);  // NOLINT(performance-no-int-to-ptr): the system's spelling
}

}  // namespace

struct SystemDecoder::Handle {
  iconv_t converter;
};

SystemDecoder::SystemDecoder(int number)
    : handle_(std::make_unique<Handle>(Handle{iconv_open("UTF-16LE", name_of(number).c_str())})) {}

SystemDecoder::~SystemDecoder() {
  if (handle_->converter != invalid_converter()) iconv_close(handle_->converter);
}

std::u16string SystemDecoder::decode(std::string_view bytes) const {
  if (handle_->converter == invalid_converter()) return {};
  std::string input(bytes);
  std::array<char, 64> output{};
  char* next_in = input.data();
  char* next_out = output.data();
  std::size_t in_left = input.size();
  std::size_t out_left = output.size();
  iconv(handle_->converter, nullptr, nullptr, nullptr, nullptr);
  const std::size_t result = iconv(handle_->converter, &next_in, &in_left, &next_out, &out_left);
  if (result == static_cast<std::size_t>(-1) || in_left != 0) return {};
  // Where marks may follow a letter, as in 1255 and 1258, the converter holds the letter back.
  iconv(handle_->converter, nullptr, nullptr, &next_out, &out_left);
  std::u16string text;
  for (const char* at = output.data(); at < next_out; at += 2) {
    text.push_back(static_cast<char16_t>(static_cast<unsigned char>(at[0]) |
                                         (static_cast<unsigned char>(at[1]) << 8)));
  }
  return text;
}

}  // namespace qel::richtext
