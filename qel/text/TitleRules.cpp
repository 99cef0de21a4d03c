#include "qel/text/TitleRules.h"

#include <algorithm>
#include <vector>

#include "qel/base/CaseMapping.h"
#include "qel/base/Utf16.h"

namespace qel::title_rules {
namespace {

struct Word {
  std::size_t first_letter = 0;
  std::size_t end = 0;
};

bool begins_word(char16_t character) {
  return is_opening(character) || character == u'\t' || character == u'\r' || character == u'\n';
}

/// Where the first character stands, from `at` on, that is neither looked through nor a quote.
std::size_t skip_quotes(std::u16string_view text, std::size_t at) {
  while (at < text.size() && (text[at] == looked_through || is_left_quote(text[at]))) ++at;
  return at;
}

bool has_letters(std::u16string_view word) {
  for (std::size_t at = 0; at < word.size();) {
    const char32_t character = character_at(word, at);
    if (character != looked_through && !is_punctuation(character)) return true;
    at += units_of(character);
  }
  return false;
}

std::vector<Word> words_of(std::u16string_view text) {
  std::vector<Word> words;
  for (std::size_t at = 0; at < text.size(); ++at) {
    const std::size_t first_letter = skip_quotes(text, at);
    at = first_letter;
    while (at < text.size() && !begins_word(text[at])) ++at;
    if (has_letters(text.substr(first_letter, at - first_letter))) {
      words.push_back({first_letter, at});
    }
  }
  return words;
}

bool is_listed(std::u16string word, const WordSet& list) {
  word.erase(std::remove(word.begin(), word.end(), looked_through), word.end());
  if (list.contains(word)) return true;
  while (!word.empty() && is_punctuation(word.back())) word.pop_back();
  return list.contains(word);
}

void map_at(std::u16string& text, std::size_t at, Mapping mapping) {
  put_character(text, at, mapping(character_at(text, at)));
}

}  // namespace

bool is_opening(char16_t character) {
  return std::u16string_view(u" \"\u201C({[").find(character) != std::u16string_view::npos;
}

bool is_left_quote(char16_t character) {
  return std::u16string_view(u"\u201C\u2018'\"").find(character) != std::u16string_view::npos;
}

void map_all(std::u16string& text, Span span, Mapping mapping) {
  const std::size_t count = span.end - span.begin;
  text.replace(span.begin, count,
               map_characters(std::u16string_view(text).substr(span.begin, count), mapping));
}

void map_first(std::u16string& text, Span span, Mapping mapping) {
  for (std::size_t at = span.begin; at < span.end; ++at) {
    if (text[at] == looked_through || begins_word(text[at]) || is_left_quote(text[at])) continue;
    map_at(text, at, mapping);
    return;
  }
}

void title_case(std::u16string& text, Span span, const WordSet& ignored) {
  map_all(text, span, to_lower);
  const std::vector<Word> words = words_of(text);
  for (const Word& word : words) {
    if (word.first_letter < span.begin || word.first_letter >= span.end) continue;
    const bool at_an_end = &word == &words.front() || &word == &words.back();
    const auto letters =
        std::u16string_view(text).substr(word.first_letter, word.end - word.first_letter);
    if (!at_an_end && !ignored.empty() && is_listed(to_lower(letters), ignored)) continue;
    map_at(text, word.first_letter, to_upper);
  }
}

void initial_cap(std::u16string& text, Span span) {
  map_all(text, span, to_lower);
  map_first(text, span, to_upper);
}

}  // namespace qel::title_rules
