#pragma once

#include <cstddef>
#include <string>
#include <string_view>

#include "qel/text/WordSet.h"

/// The rules of title case and of initial capitals, on a plain text. No rule changes its length.
///
/// A word begins at the beginning of the text, and behind a blank, a double quote, an opening
/// bracket, a tab or a line break, and ends before the next of those; what has only punctuation is
/// none. Its first letter is its first character behind opening quotes: a word that begins with
/// anything but a letter has no letter to raise.
namespace qel::title_rules {

/// Stands for a character that is not part of the text: it neither begins nor ends a word.
constexpr char16_t looked_through = 0xFFFF;

/// Whether a word may begin after the character: blank, double quote, opening bracket.
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
/// Whether the first letter of a word may stand behind it: a quote that opens or is straight.
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

/// Maps the first letter of the span: the first character that is behind all blanks, breaks,
/// opening quotes and opening brackets.
void map_first(std::u16string& text, Span span, Mapping mapping);

/// Lowers the span, but for the first letters of words. The first letter of a word in `ignored`,
/// whatever its case and punctuation after it, is raised only in the first or last word of the
/// text.
void title_case(std::u16string& text, Span span, const WordSet& ignored);

/// Lowers the span, but for its first letter.
void initial_cap(std::u16string& text, Span span);

}  // namespace qel::title_rules
