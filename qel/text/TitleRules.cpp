#include "qel/text/TitleRules.h"

#include <array>
#include <vector>

#include "qel/base/CaseMapping.h"
#include "qel/base/Utf16.h"

namespace qel::title_rules {
namespace {

struct Word {
  std::size_t first_letter = 0;
  std::size_t end = 0;
  bool has_gaps = false;  // has characters to look through
};

bool begins_word(char16_t character) {
  static constexpr auto in_ascii = [] {
    std::array<bool, 0x80> begins = {};
    for (const char16_t c : std::u16string_view(u" \"([{\t\r\n")) begins[c] = true;
    return begins;
  }();
  return character < in_ascii.size() ? in_ascii[character] : is_opening(character);
}

bool is_sign(char32_t character) {
  const bool is_ascii_letter = (character | 0x20U) - U'a' < 26;
  return !is_ascii_letter && (character == escaped || is_punctuation(character));
}

/// The position, from `at` on, of the first character that is neither looked through nor a sign.
std::size_t skip_signs(std::u16string_view text, std::size_t at) {
  while (at < text.size()) {
    const char32_t character = character_at(text, at);
    if (character == escaped || (character != looked_through && !is_sign(character))) break;
    at += units_of(character);
  }
  return at;
}

bool has_letters(std::u16string_view word) {
  for (std::size_t at = 0; at < word.size();) {
    const char32_t character = character_at(word, at);
    if (character != looked_through && !is_sign(character)) return true;
    at += units_of(character);
  }
  return false;
}

std::vector<Word> words_of(std::u16string_view text) {
  std::vector<Word> words;
  for (std::size_t at = 0; at < text.size(); ++at) {
    Word word;
    word.first_letter = skip_signs(text, at);
    for (at = word.first_letter; at < text.size() && !begins_word(text[at]); ++at) {
      word.has_gaps = word.has_gaps || text[at] == looked_through;
    }
    word.end = at;
    if (has_letters(text.substr(word.first_letter, at - word.first_letter))) words.push_back(word);
  }
  return words;
}

void map_at(std::u16string& text, std::size_t at, Mapping mapping) {
  put_character(text, at, mapping(character_at(text, at)));
}

/// `word` is in lower case.
bool is_listed(std::u16string_view word, const WordSet& list) {
  if (list.contains(word)) return true;
  const std::size_t size = word.size();
  while (!word.empty() && is_sign(word.back())) word.remove_suffix(1);
  return word.size() < size && list.contains(word);
}

/// The same for a word in any case, in which some characters may have to be looked through.
bool is_listed_somehow(std::u16string_view word, const WordSet& list) {
  std::u16string letters = to_lower(word);
  std::erase(letters, looked_through);
  return is_listed(letters, list);
}

}  // namespace

void map_all(std::u16string& text, Span span, Mapping mapping) {
  constexpr char16_t ascii = 0x80;
  std::array<char16_t, ascii> mapped{};
  for (char16_t c = 0; c < ascii; ++c) mapped[c] = static_cast<char16_t>(mapping(c));
  for (std::size_t at = span.begin; at < span.end;) {
    if (text[at] < ascii) {
      text[at] = mapped[text[at]];
      ++at;
    } else {
      const char32_t character = character_at(text, at);
      put_character(text, at, mapping(character));
      at += units_of(character);
    }
  }
}

void map_first(std::u16string& text, Span span, Mapping mapping) {
  std::size_t at = skip_signs(text, span.begin);
  while (at < span.end && begins_word(text[at])) at = skip_signs(text, at + 1);
  if (at < span.end) map_at(text, at, mapping);
}

void title_case(std::u16string& text, Span span, const WordSet& ignored) {
  map_all(text, span, to_lower);
  const std::vector<Word> words = words_of(text);
  for (const Word& word : words) {
    if (word.first_letter < span.begin || word.first_letter >= span.end) continue;
    const bool at_an_end = &word == &words.front() || &word == &words.back();
    const auto letters =
        std::u16string_view(text).substr(word.first_letter, word.end - word.first_letter);
    const bool is_lower = word.end <= span.end && !word.has_gaps;
    const bool is_spared = !at_an_end && (is_lower ? is_listed(letters, ignored)
                                                   : is_listed_somehow(letters, ignored));
    if (!is_spared) map_at(text, word.first_letter, to_upper);
  }
}

void initial_cap(std::u16string& text, Span span) {
  map_all(text, span, to_lower);
  map_first(text, span, to_upper);
}

}  // namespace qel::title_rules
