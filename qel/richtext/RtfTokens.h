#pragma once

#include <cstddef>
#include <cstdint>
#include <string_view>

namespace qel::richtext {

/// The number after a control word.
struct Parameter {
  bool given = false;
  std::int32_t value = 0;

  std::int32_t value_or(std::int32_t otherwise) const { return given ? value : otherwise; }
};

/// A control word's name packed into a number: five bits a letter, so that of a longer name the
/// last twelve letters count, by which the words that the reader knows differ from all others. 0
/// for a name with capitals, none of which the reader knows.
using WordKey = std::uint64_t;

constexpr WordKey no_word = 0;

constexpr WordKey word_key(std::string_view name) {
  WordKey key = 0;
  for (const char letter : name) key = key << 5U | static_cast<WordKey>(letter - 'a' + 1);
  return key;
}

struct ControlWord {
  WordKey key = no_word;
  Parameter parameter;
};

/// Scans RTF for control words and plain text, and leaves the rest to its caller. Never reads past
/// the end.
class RtfScanner {
 public:
  static constexpr char16_t last_ascii = 0x7F;
  static constexpr char16_t last = 0xFFFF;

  RtfScanner() = default;
  /// Characters after `last_plain` are no plain text.
  explicit RtfScanner(std::u16string_view rtf, char16_t last_plain = last)
      : rtf_(rtf), last_plain_(last_plain) {}

  bool at_end() const { return at_ >= rtf_.size(); }
  std::size_t position() const { return at_; }
  std::size_t left() const { return rtf_.size() - at_; }
  void go_to(std::size_t position) { at_ = position; }
  char16_t peek() const { return rtf_[at_]; }
  char16_t next() { return rtf_[at_++]; }
  void skip(std::size_t count) { at_ = count > rtf_.size() - at_ ? rtf_.size() : at_ + count; }

  /// The text up to the next character that may mean something to RTF, at least one character long:
  /// for a caller who has seen that the next character means nothing.
  std::u16string_view plain_text();
  /// Goes to the next brace or backslash.
  void skip_plain_text();
  /// Reads a control word after its backslash, with its parameter and the blank that ends it.
  ControlWord control_word();
  /// Reads the two digits of "\'hh"; where they are missing it reads nothing and returns -1.
  int hex_byte();

 private:
  std::size_t end_of_plain_text() const;
  Parameter parameter();

  std::u16string_view rtf_;
  char16_t last_plain_ = last;
  std::size_t at_ = 0;
};

/// Appends "\'hh" to a string or to bytes.
template <class String>
void append_hex_escape(String& out, std::uint8_t byte) {
  constexpr std::string_view hex_digits = "0123456789abcdef";
  for (const char c : {'\\', '\'', hex_digits[byte >> 4U], hex_digits[byte & 0xFU]}) {
    out.push_back(static_cast<typename String::value_type>(c));
  }
}

}  // namespace qel::richtext
