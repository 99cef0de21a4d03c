#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <string_view>

#include "qel/model/QELCode.h"

/// What the checks and the rewriting of markup have in common: they look at its codes, not only at
/// what the codes do.
namespace qel::convert {

/// A part of markup that is read as one.
struct Piece {
  enum class Kind : std::uint8_t {
    text,
    escaped_code,  ///< a code that is text, with its tilde
    unknown_code,  ///< text: a slash, a letter and a digit
    code_of_rtf,   ///< "/r1" and its like: text to all but conversions to RTF
    code,
    line_break,
  };

  Kind kind = Kind::text;
  std::u16string_view characters;

  bool is_text() const { return kind != Kind::code && kind != Kind::line_break; }
};

/// The piece that begins at `at`, which is where another ended, and within the markup.
Piece piece_at(std::u16string_view markup, std::size_t at, Way way);

/// How many of the last characters of a text make a code of some reader with the characters that
/// follow: 1, 2, or 0 where they make none.
std::size_t meet_as_code(std::u16string_view text, std::u16string_view following);

/// What the codes before a text ask for. The slots are in the order in which codes are switched on;
/// they are switched off in reverse.
class Formats {
 public:
  enum Slot : std::uint8_t {
    bold,
    italic,
    underline,
    small_caps,
    strike,
    lowered,
    raised,
    color,
    font,
  };
  static constexpr std::size_t count = 9;
  static constexpr std::array<char16_t, count> letters = {u'b', u'i', u'u', u'c', u'k',
                                                          u's', u'p', u'y', u'f'};

  /// 0 where it is off, 1 or the index where it is on.
  struct Value {
    std::uint8_t of_text = 0;
    std::uint8_t of_rtf = 0;  ///< to conversions to RTF, which have codes of their own

    friend bool operator==(const Value&, const Value&) = default;
  };

  /// The slot of a code's letter, `count` where it has none.
  static std::size_t slot_of(char16_t letter);

  Value& operator[](std::size_t slot) { return values_[slot]; }
  const Value& operator[](std::size_t slot) const { return values_[slot]; }
  /// Reads a code, or one of RTF.
  void apply(const Piece& code);

 private:
  std::array<Value, count> values_;
};

}  // namespace qel::convert
