#pragma once

#include <array>
#include <cstddef>
#include <string_view>

namespace qel {

/// A literal of ASCII, for texts in UTF-16 as well as in UTF-8.
template <std::size_t size>
struct AsciiLiteral {
  // NOLINTNEXTLINE(google-explicit-constructor): a literal is one
  consteval AsciiLiteral(const char (&literal)[size]) {
    for (std::size_t i = 0; i < size; ++i) characters[i] = literal[i];
  }
  char characters[size] = {};
};

template <class Char, AsciiLiteral literal>
inline constexpr auto ascii_characters = [] {
  std::array<Char, sizeof literal.characters - 1> characters = {};
  for (std::size_t i = 0; i < characters.size(); ++i) {
    characters[i] = static_cast<Char>(literal.characters[i]);
  }
  return characters;
}();

/// `ascii<char16_t, "/nl">` is u"/nl".
template <class Char, AsciiLiteral literal>
inline constexpr std::basic_string_view<Char> ascii{ascii_characters<Char, literal>.data(),
                                                    ascii_characters<Char, literal>.size()};

}  // namespace qel
