#include "qel/text/TitleRules.h"

#include <array>

#include "qel/base/CaseMapping.h"
#include "qel/base/Scan.h"
#include "qel/base/Utf16.h"

namespace qel::title_rules {
namespace {

struct Word {
  std::size_t first_letter = 0;
  std::size_t end = 0;
  bool has_gaps = false;  // has characters to look through
};

bool begins_word(char16_t character) {
  return is_opening(character) || character == u'\t' || character == u'\r' || character == u'\n';
}

/// The first character, from `at` on, after which a word begins or that is looked through.
std::size_t find_end_or_gap(std::u16string_view text, std::size_t at) {
  return find_any<u' ', u'"', u'(', u'[', u'{', u'\u201C', u'\t', u'\r', u'\n', looked_through>(
      text, at);
}

bool is_sign(char32_t character) {
  static constexpr auto in_ascii = [] {
    std::array<bool, 0x80> signs = {};
    constexpr std::u16string_view all = u"!\"#$%&'()*+,-./:;<=>?@[\\]^_`{|}~";
    for (const char16_t c : all) signs[c] = true;
    return signs;
  }();
  if (character < in_ascii.size()) return in_ascii[character];
  return character == escaped || is_punctuation(character);
}

/// The position, from `at` on, of the first character that is neither looked through nor a sign.
inline std::size_t skip_signs(std::u16string_view text, std::size_t at) {
  while (at < text.size()) {
    const char32_t character = character_at(text, at);
    if (character == escaped || (character != looked_through && !is_sign(character))) break;
    at += units_of(character);
  }
  return at;
}

/// Whether there is a letter in a word without the signs at its beginning.
bool has_letters(std::u16string_view word) {
  if (!word.empty() && word.front() != escaped) return true;
  for (std::size_t at = 0; at < word.size();) {
    const char32_t character = character_at(word, at);
    if (character != looked_through && !is_sign(character)) return true;
    at += units_of(character);
  }
  return false;
}

/// The word that begins at `at`, or what stands there instead of one.
Word read_word(std::u16string_view text, std::size_t at) {
  Word word;
  word.first_letter = skip_signs(text, at);
  word.end = find_end_or_gap(text, word.first_letter);
  while (word.end < text.size() && text[word.end] == looked_through) {
    word.has_gaps = true;
    word.end = find_end_or_gap(text, word.end + 1);
  }
  return word;
}

inline void map_at(std::u16string& text, std::size_t at, Mapping mapping) {
  put_character(text, at, mapping(character_at(text, at)));
}

std::u16string_view letters_of(std::u16string_view text, const Word& word) {
  return text.substr(word.first_letter, word.end - word.first_letter);
}

/// `word` is in lower case.
inline bool is_listed(std::u16string_view word, const WordSet& list) {
  if (list.contains(word)) return true;
  const std::size_t size = word.size();
  while (!word.empty() && is_sign(word.back())) word.remove_suffix(1);
  return word.size() < size && list.contains(word);
}

/// Whether the word is one of the list; the span is in lower case.
bool is_spared(std::u16string_view text, const Word& word, Span span, const WordSet& ignored) {
  std::u16string_view letters = letters_of(text, word);
  std::u16string lower;
  if (word.end > span.end || word.has_gaps) {
    lower = to_lower(letters);
    std::erase(lower, looked_through);
    letters = lower;
  }
  return is_listed(letters, ignored);
}

}  // namespace

void map_all(std::u16string& text, Span span, Mapping mapping) {
  constexpr char16_t ascii = 0x80;
  std::array<char16_t, ascii> mapped{};
  // Not worth its while for a short text.
  const char16_t known = span.end - span.begin > ascii ? ascii : 0;
  for (char16_t c = 0; c < known; ++c) mapped[c] = static_cast<char16_t>(mapping(c));
  for (std::size_t at = span.begin; at < span.end;) {
    if (text[at] < known) {
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
  constexpr std::size_t none = std::u16string_view::npos;
  std::size_t first_word = none;
  std::size_t spared = none;  // where the last word found begins, if it has been spared
  // Letters in another case do not change where words are.
  for (std::size_t at = 0; at < text.size();) {
    const Word word = read_word(text, at);
    at = word.end + 1;
    if (!has_letters(letters_of(text, word))) continue;
    spared = none;
    if (first_word == none) first_word = word.first_letter;
    if (word.first_letter < span.begin || word.first_letter >= span.end) continue;
    if (word.first_letter != first_word && is_spared(text, word, span, ignored)) {
      spared = word.first_letter;
    } else {
      map_at(text, word.first_letter, to_upper);
    }
  }
  if (spared != none) map_at(text, spared, to_upper);
}

void initial_cap(std::u16string& text, Span span) {
  map_all(text, span, to_lower);
  map_first(text, span, to_upper);
}

}  // namespace qel::title_rules
