#pragma once

#include <cstddef>
#include <cstdint>
#include <limits>
#include <string_view>
#include <type_traits>

#include "qel/base/Hex.h"

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
/// the end. The units of the RTF are characters, or bytes.
template <class Char>
class RtfScanner {
 public:
  using View = std::basic_string_view<Char>;

  static constexpr char16_t last_ascii = 0x7F;
  static constexpr char16_t last = 0xFFFF;

  RtfScanner() = default;
  /// Characters after `last_plain` are no plain text.
  explicit RtfScanner(View rtf, char16_t last_plain = last) : rtf_(rtf), last_plain_(last_plain) {}

  bool at_end() const { return at_ >= rtf_.size(); }
  std::size_t position() const { return at_; }
  std::size_t left() const { return rtf_.size() - at_; }
  void go_to(std::size_t position) { at_ = position; }
  char16_t peek() const { return unit(at_); }
  char16_t next() { return unit(at_++); }
  void skip(std::size_t count) { at_ = count > rtf_.size() - at_ ? rtf_.size() : at_ + count; }

  /// The text up to the next character that may mean something to RTF, at least one character long:
  /// for a caller who has seen that the next character means nothing.
  View plain_text();
  /// Goes to the next brace or backslash.
  void skip_plain_text();
  /// Reads a control word after its backslash, with its parameter and the blank that ends it.
  ControlWord control_word();
  /// Reads the two digits of "\'hh"; where they are missing it reads nothing and returns -1.
  int hex_byte();

 private:
  char16_t unit(std::size_t at) const {
    return static_cast<char16_t>(static_cast<std::make_unsigned_t<Char>>(rtf_[at]));
  }
  std::size_t end_of_plain_text() const;
  Parameter parameter();

  View rtf_;
  char16_t last_plain_ = last;
  std::size_t at_ = 0;
};

template <class Char>
inline ControlWord RtfScanner<Char>::control_word() {
  ControlWord word;
  const Char* const end = rtf_.data() + rtf_.size();
  const Char* at = rtf_.data() + at_;
  bool has_capitals = false;
  for (; at < end; ++at) {
    const auto letter = static_cast<unsigned>(*at | 0x20) - 'a';
    if (letter > 'z' - 'a') break;
    has_capitals = has_capitals || *at < 'a';
    word.key = word.key << 5U | (letter + 1);
  }
  if (has_capitals) word.key = no_word;
  at_ = static_cast<std::size_t>(at - rtf_.data());
  word.parameter = parameter();
  if (!at_end() && peek() == u' ') ++at_;
  return word;
}

template <class Char>
inline Parameter RtfScanner<Char>::parameter() {
  const auto digit_at = [this](std::size_t at) {
    return at < rtf_.size() ? static_cast<unsigned>(unit(at)) - u'0' : ~0U;
  };
  Parameter parameter;
  const bool negative = !at_end() && peek() == u'-';
  std::size_t at = negative ? at_ + 1 : at_;
  if (digit_at(at) > 9) return parameter;
  constexpr std::int64_t limit = std::numeric_limits<std::int32_t>::max();
  std::int64_t value = 0;
  for (unsigned digit = 0; (digit = digit_at(at)) <= 9; ++at) {
    if (value <= limit) value = value * 10 + digit;
  }
  if (value > limit) value = limit;
  at_ = at;
  parameter.given = true;
  parameter.value = static_cast<std::int32_t>(negative ? -value : value);
  return parameter;
}

template <class Char>
inline int RtfScanner<Char>::hex_byte() {
  if (at_ + 2 > rtf_.size()) return -1;
  const int high = hex_value(unit(at_));
  const int low = hex_value(unit(at_ + 1));
  if (high < 0 || low < 0) return -1;
  at_ += 2;
  return high * 16 + low;
}

/// Appends "\'hh" to a string or to bytes.
template <class String>
void append_hex_escape(String& out, std::uint8_t byte) {
  constexpr std::string_view hex_digits = "0123456789abcdef";
  for (const char c : {'\\', '\'', hex_digits[byte >> 4U], hex_digits[byte & 0xFU]}) {
    out.push_back(static_cast<typename String::value_type>(c));
  }
}

}  // namespace qel::richtext
