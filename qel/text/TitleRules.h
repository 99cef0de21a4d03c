#pragma once

#include <cstddef>
#include <string>
#include <string_view>

#include "qel/text/WordSet.h"

/// The rules of title case and initial capitals for plain text. No rule changes the text's length.
///
/// A word begins at the beginning of the text or after a blank, a double quote, an opening bracket,
/// a tab or a line break, and ends before the next of those; punctuation alone is not a word. Its
/// first letter is its first character after punctuation and symbols of any kind: a word that
/// begins with a digit has no letter to raise.
namespace qel::title_rules {

/// Stands in for a character that is not part of the text: it neither begins nor ends a word.
constexpr char16_t looked_through = 0xFFFF;

/// Stands in for a character of an escaped code: like punctuation, but no letter behind it is the
/// first of its word.
constexpr char16_t escaped = 0xFFFE;

/// Whether a word may begin after the character: a blank, a double quote or an opening bracket.
constexpr bool is_opening(char16_t character) {
  switch (character) {
    case u' ':
    case u'"':
    case u'(':
    case u'[':
    case u'{':
    case u'\u201C':
      return true;
    default:
      return false;
  }
}
/// An opening or a straight quote.
constexpr bool is_left_quote(char16_t character) {
  return character == u'\u201C' || character == u'\u2018' || character == u'\'' ||
         character == u'"';
}

/// The part of a text that a rule may change, in code units.
struct Span {
  std::size_t begin = 0;
  std::size_t end = 0;
};

using Mapping = char32_t (*)(char32_t character);

/// Maps each character of the span.
void map_all(std::u16string& text, Span span, Mapping mapping);

/// Maps the first letter of the span: the first character that is not a blank, a break, punctuation
/// or a symbol.
void map_first(std::u16string& text, Span span, Mapping mapping);

/// Lowers the span and raises the first letter of each word. A word in `ignored`, regardless of
/// case and of punctuation after it, is raised only as the first or the last word of the text.
void title_case(std::u16string& text, Span span, const WordSet& ignored);

/// Lowers the span and raises its first letter.
void initial_cap(std::u16string& text, Span span);

}  // namespace qel::title_rules
