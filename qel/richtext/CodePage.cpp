#include "qel/richtext/CodePage.h"

#include <algorithm>
#include <iterator>
#include <utility>

namespace qel::richtext {
namespace {

/// Bytes 0x80 to 0x9F of code page 1252.
constexpr std::array<char16_t, 32> western_controls = {
    0x20AC, 0x0081, 0x201A, 0x0192, 0x201E, 0x2026, 0x2020, 0x2021, 0x02C6, 0x2030, 0x0160,
    0x2039, 0x0152, 0x008D, 0x017D, 0x008F, 0x0090, 0x2018, 0x2019, 0x201C, 0x201D, 0x2022,
    0x2013, 0x2014, 0x02DC, 0x2122, 0x0161, 0x203A, 0x0153, 0x009D, 0x017E, 0x0178};

/// Bytes 0x80 to 0xFF of a code page; U+FFFD where it has no character.
struct HighHalf {
  int code_page;
  std::array<char16_t, 128> characters;
};

#include "qel/richtext/CodePageTables.inc"

struct LeadBytes {
  int code_page;
  std::uint8_t first;
  std::uint8_t last;
};

/// First bytes of the two-byte characters of the East Asian code pages.
constexpr std::array lead_bytes = {
    LeadBytes{932, 0x81, 0x9F},   LeadBytes{932, 0xE0, 0xFC},   LeadBytes{936, 0x81, 0xFE},
    LeadBytes{949, 0x81, 0xFE},   LeadBytes{950, 0x81, 0xFE},   LeadBytes{1361, 0x84, 0xD3},
    LeadBytes{1361, 0xD8, 0xDE},  LeadBytes{1361, 0xE0, 0xF9},  LeadBytes{10001, 0x81, 0x9F},
    LeadBytes{10001, 0xE0, 0xFC}, LeadBytes{10002, 0x81, 0xFC}, LeadBytes{10003, 0xA1, 0xFD},
    LeadBytes{10008, 0xA1, 0xF7}, LeadBytes{54936, 0x81, 0xFE}};

constexpr int gb18030 = 54936;
constexpr int utf8 = 65001;

std::size_t utf8_length_from(std::uint8_t first_byte) {
  if (first_byte >= 0xC2 && first_byte <= 0xDF) return 2;
  if ((first_byte & 0xF0U) == 0xE0U) return 3;
  return first_byte >= 0xF0 && first_byte <= 0xF4 ? 4 : 1;
}

std::size_t bytes_from(int code_page, std::uint8_t first_byte) {
  if (code_page == utf8) return utf8_length_from(first_byte);
  const bool is_lead =
      std::any_of(lead_bytes.begin(), lead_bytes.end(), [&](const LeadBytes& range) {
        return range.code_page == code_page && first_byte >= range.first &&
               first_byte <= range.last;
      });
  return is_lead ? 2 : 1;
}

}  // namespace

// To the system, numbers below 4 stand for the machine's own code pages, which no document can
// mean.
CodePage::CodePage(int number) : number_(number < 4 ? western : number) {
  for (std::size_t byte = 0; byte < lengths_.size(); ++byte) {
    lengths_[byte] =
        static_cast<std::uint8_t>(bytes_from(number_, static_cast<std::uint8_t>(byte)));
  }
  for (std::size_t i = 0; i < high_half_.size(); ++i) {
    const auto byte = static_cast<std::uint8_t>(0x80 + i);
    high_half_[i] = number_ == symbol ? char16_t{byte} : decode_western(byte);
  }
  if (number_ == western || number_ == symbol || takes_table()) return;
  system_ = std::make_unique<SystemDecoder>(number_);
  for (std::size_t i = 0; i < high_half_.size(); ++i) {
    const char byte = static_cast<char>(0x80 + i);
    const std::u16string text = system_->decode({&byte, 1});
    if (text.size() == 1) high_half_[i] = text.front();
    if (text.empty()) give_up_single(0x80 + i);
  }
}

std::size_t CodePage::length_from(std::string_view bytes) const {
  const bool has_four =
      number_ == gb18030 && bytes.size() > 1 && bytes[1] >= '0' && bytes[1] <= '9';
  return has_four ? 4 : length_from(static_cast<std::uint8_t>(bytes.front()));
}

bool CodePage::takes_table() {
  const auto* const table =
      std::find_if(std::begin(high_halves), std::end(high_halves),
                   [&](const HighHalf& each) { return each.code_page == number_; });
  if (table == std::end(high_halves)) return false;
  for (std::size_t i = 0; i < high_half_.size(); ++i) {
    const char16_t character = table->characters[i];
    if (character != u'\uFFFD') {
      high_half_[i] = character;
    } else {
      give_up_single(0x80 + i);
    }
  }
  return true;
}

void CodePage::give_up_single(std::size_t byte) {
  if (lengths_[byte] == 1) lengths_[byte] = 0;
}

std::u16string CodePage::decode(std::string_view bytes) const {
  const auto first = static_cast<std::uint8_t>(bytes.front());
  if (bytes.size() > 1) return system_ ? system_->decode(bytes) : std::u16string();
  return lengths_[first] == 1 ? std::u16string(1, decode_single(first)) : std::u16string();
}

char16_t decode_western(std::uint8_t byte) {
  return byte >= 0x80 && byte < 0xA0 ? western_controls[byte - 0x80U] : char16_t{byte};
}

std::u16string decode_each_western(std::string_view bytes) {
  std::u16string text;
  for (const char byte : bytes) text.push_back(decode_western(static_cast<std::uint8_t>(byte)));
  return text;
}

std::optional<std::uint8_t> encode_western(char16_t character) {
  if (character < 0x80 || (character >= 0xA0 && character <= 0xFF)) {
    return static_cast<std::uint8_t>(character);
  }
  const auto found = std::find(western_controls.begin(), western_controls.end(), character);
  if (found == western_controls.end()) return {};
  return static_cast<std::uint8_t>(0x80 + (found - western_controls.begin()));
}

std::optional<int> code_page_of_character_set(int character_set) {
  // The character set numbers of font records, as RTF uses them.
  constexpr std::array<std::pair<int, int>, 31> code_pages = {{{0, 1252},   {2, CodePage::symbol},
                                                               {77, 10000}, {78, 10001},
                                                               {79, 10003}, {80, 10008},
                                                               {81, 10002}, {82, 1361},
                                                               {83, 10005}, {84, 10004},
                                                               {85, 10006}, {86, 10081},
                                                               {87, 10021}, {88, 10029},
                                                               {89, 10007}, {128, 932},
                                                               {129, 949},  {130, 1361},
                                                               {134, 936},  {136, 950},
                                                               {161, 1253}, {162, 1254},
                                                               {163, 1258}, {177, 1255},
                                                               {178, 1256}, {186, 1257},
                                                               {204, 1251}, {222, 874},
                                                               {238, 1250}, {254, 437},
                                                               {255, 850}}};
  const auto found = std::find_if(code_pages.begin(), code_pages.end(),
                                  [&](const auto& entry) { return entry.first == character_set; });
  if (found == code_pages.end()) return {};
  return found->second;
}

}  // namespace qel::richtext
