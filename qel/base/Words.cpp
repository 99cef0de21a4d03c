#include "qel/base/Words.h"

#include "qel/base/CaseMapping.h"
#include "qel/base/CodeRanges.h"
#include "qel/base/Utf16.h"

namespace qel {
namespace {

/// Controls, blanks, and what only formats but for the joiners. Punctuation is elsewhere.
constexpr CodeRange blanks[] = {{0x0, 0x20},      {0x7F, 0xA0},     {0x1680, 0x1680},
                                {0x2000, 0x200B}, {0x200E, 0x200F}, {0x2028, 0x202F},
                                {0x205F, 0x206F}, {0x3000, 0x3000}, {0xD800, 0xDFFF},
                                {0xFEFF, 0xFEFF}, {0xFFF9, 0xFFFC}};

/// Joins the letters on both of its sides.
bool joins_letters(char32_t character) {
  constexpr char32_t right_quote = 0x2019;
  constexpr char32_t soft_hyphen = 0xAD;
  constexpr char32_t middle_dot = 0xB7;
  constexpr char32_t gershayim = 0x5F4;
  return character == U'\'' || character == right_quote || character == soft_hyphen ||
         character == middle_dot || character == gershayim;
}

bool is_word_at(std::u16string_view text, std::size_t at) {
  return at < text.size() && is_word_character(character_at(text, at));
}

bool is_joint_at(std::u16string_view text, std::size_t at) {
  return at > 0 && at + 1 < text.size() && joins_letters(text[at]) &&
         is_word_at(text, step_before(text, at)) && is_word_at(text, at + 1);
}

}  // namespace

bool is_word_character(char32_t character) {
  if (character < 0x80) {
    const char32_t letter = character | 0x20U;
    return (letter >= U'a' && letter <= U'z') || (character >= U'0' && character <= U'9');
  }
  return find_range(blanks, character) == nullptr && !is_punctuation(character) &&
         !joins_letters(character);
}

bool cuts_word(std::u16string_view text, std::size_t at) {
  if (at == 0 || at >= text.size()) return false;
  const std::size_t before = step_before(text, at);
  const bool is_behind_word = is_word_at(text, before);
  const bool is_before_word = is_word_at(text, at);
  if (is_behind_word && is_before_word) return true;
  return is_behind_word ? is_joint_at(text, at) : is_before_word && is_joint_at(text, before);
}

std::size_t word_start(std::u16string_view text, std::size_t from) {
  while (from < text.size() && (!is_word_at(text, from) || cuts_word(text, from))) {
    from = step_after(text, from);
  }
  return from;
}

std::size_t word_end(std::u16string_view text, std::size_t at) {
  at = step_after(text, at);
  while (cuts_word(text, at)) at = step_after(text, at);
  return at;
}

}  // namespace qel
