#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <memory>
#include <optional>
#include <string>
#include <string_view>

namespace qel::richtext {

/// The system's own conversion from a code page. One source file per system implements it.
class SystemDecoder {
 public:
  /// `number` as in "\ansicpg": 932, 1251, 65001 and so on.
  explicit SystemDecoder(int number);
  SystemDecoder(const SystemDecoder&) = delete;
  SystemDecoder& operator=(const SystemDecoder&) = delete;
  ~SystemDecoder();

  /// The characters that the bytes stand for; empty when they are not a whole sequence of valid
  /// characters, or the system does not know the code page.
  std::u16string decode(std::string_view bytes) const;

 private:
  struct Handle;
  std::unique_ptr<Handle> handle_;
};

/// A code page in which a document's bytes are read.
class CodePage {
 public:
  static constexpr int western = 1252;
  /// The bytes of symbol fonts: glyph numbers, which become the characters of the same number.
  static constexpr int symbol = 42;

  /// A code page that the system does not know is read as 1252.
  explicit CodePage(int number);

  /// The number of bytes (1 to 4) in a character that begins with this one; 0 where none does.
  std::size_t length_from(std::uint8_t first_byte) const { return lengths_[first_byte]; }
  /// The same where the second byte may have come, too, which in GB18030 tells 4 bytes from 2.
  std::size_t length_from(std::string_view bytes) const;
  /// The character that a single byte stands for; that of code page 1252 where it stands for none.
  char16_t decode_single(std::uint8_t byte) const {
    return byte < 0x80 ? char16_t{byte} : high_half_[byte - 0x80U];
  }
  /// The characters that a whole sequence stands for; empty when it stands for none.
  std::u16string decode(std::string_view bytes) const;
  /// Whether several bytes are characters of the code page.
  bool has(std::string_view bytes) const { return !decode(bytes).empty(); }
  /// Whether several bytes are the beginning of a longer character.
  bool may_go_on(std::string_view bytes) const { return length_from(bytes) > bytes.size(); }

 private:
  /// Fills the high half from the library's own table of the code page, if there is one.
  bool takes_table();
  /// A byte of the high half is not a character.
  void give_up_single(std::size_t byte);

  int number_;
  std::unique_ptr<SystemDecoder> system_;
  std::array<char16_t, 128> high_half_ = {};
  std::array<std::uint8_t, 256> lengths_ = {};
};

/// Code page 1252, whose five unassigned bytes stand for the control characters of their number.
char16_t decode_western(std::uint8_t byte);
std::u16string decode_each_western(std::string_view bytes);
/// The byte of a character; empty when code page 1252 does not have it.
std::optional<std::uint8_t> encode_western(char16_t character);

/// The code page of a font's character set number ("\fcharset"); empty for the document's own.
std::optional<int> code_page_of_character_set(int character_set);

}  // namespace qel::richtext
