#include "SearchWords.h"

#include <algorithm>
#include <utility>

#include "qel/base/CaseMapping.h"
#include "qel/base/Graphemes.h"
#include "qel/base/Utf16.h"
#include "qel/base/Words.h"

namespace qel::forms {
namespace {

bool is_blank(char32_t c) {
  if (c < 0x80) return c <= ' ' || c == 0x7F;
  return c <= 0xA0 || c == 0x1680 || (c >= 0x2000 && c <= 0x200B) || c == 0x2028 || c == 0x2029 ||
         c == 0x202F || c == 0x205F || c == 0x3000 || c == 0xFEFF;
}

/// Joiners part words here, as they do in the index.
bool is_in_word(char32_t c) {
  constexpr char32_t non_joiner = 0x200C;
  constexpr char32_t joiner = 0x200D;
  return is_word_character(c) && c != non_joiner && c != joiner;
}

bool is_accent(char32_t c) { return c >= 0x300 && c <= 0x36F; }

void append_folded(std::u16string& text, char32_t character) {
  if (character < 0x80) {
    const bool is_upper = character >= 'A' && character <= 'Z';
    text.push_back(static_cast<char16_t>(is_upper ? character | 0x20U : character));
    return;
  }
  if (is_accent(character)) return;
  const char32_t folded = without_accents(to_lower(character));
  if (units_of(folded) == 2) text.push_back(high_surrogate_of(folded));
  text.push_back(units_of(folded) == 2 ? low_surrogate_of(folded) : static_cast<char16_t>(folded));
}

struct Word {
  Part part;
  std::u16string folded;
};

std::vector<Word> words_of(std::u16string_view text) {
  std::vector<Word> words;
  bool is_within = false;
  for (std::size_t at = 0; at < text.size();) {
    const std::size_t start = at;
    const char32_t character = next_character(text, at);
    if (!is_in_word(character)) {
      is_within = false;
      continue;
    }
    if (!is_within) words.push_back({{start, 0}, {}});
    is_within = true;
    append_folded(words.back().folded, character);
    words.back().part.length = at - words.back().part.start;
  }
  return words;
}

/// What stands between blanks.
std::vector<std::u16string_view> chunks_of(std::u16string_view text) {
  std::vector<std::u16string_view> chunks;
  std::size_t start = 0;
  for (std::size_t i = 0; i <= text.size(); ++i) {
    if (i < text.size() && !is_blank(text[i])) continue;
    if (i > start) chunks.push_back(text.substr(start, i - start));
    start = i + 1;
  }
  return chunks;
}

/// In quotes, nothing is an operator, and what is between letters only parts words.
std::u16string quoted(std::u16string_view text) {
  std::u16string quoted = u"\"";
  for (const char16_t unit : text) quoted.append(unit == u'"' ? 2 : 1, unit);
  return quoted.append(u"\"");
}

}  // namespace

SearchWords::SearchWords(std::u16string_view text) {
  for (const std::u16string_view chunk : chunks_of(text)) {
    Phrase phrase;
    for (Word& word : words_of(chunk)) phrase.push_back(std::move(word.folded));
    // An accent alone is no word.
    std::erase(phrase, std::u16string());
    is_last_begun_ = !phrase.empty() && !is_blank(text.back());
    if (phrase.empty()) continue;
    phrases_.push_back(std::move(phrase));
    query_.append(query_.empty() ? u"" : u" ").append(quoted(chunk));
  }
  if (is_last_begun_) query_.push_back(u'*');
}

template <class Words>
bool SearchWords::stands_at(const Phrase& phrase, const Words& words, std::size_t at) const {
  if (words.size() - at < phrase.size()) return false;
  const bool is_begun = is_last_begun_ && &phrase == &phrases_.back();
  for (std::size_t i = 0; i < phrase.size(); ++i) {
    const std::u16string& word = words[at + i].folded;
    const bool may_go_on = is_begun && i + 1 == phrase.size();
    if (may_go_on ? !word.starts_with(phrase[i]) : word != phrase[i]) return false;
  }
  return true;
}

template <class Words>
bool SearchWords::stands_in(const Phrase& phrase, const Words& words) const {
  for (std::size_t i = 0; i < words.size(); ++i) {
    if (stands_at(phrase, words, i)) return true;
  }
  return false;
}

bool SearchWords::are_in(std::u16string_view title, std::u16string_view body) const {
  const std::vector<Word> of_title = words_of(title);
  const std::vector<Word> of_body = words_of(body);
  return std::all_of(phrases_.begin(), phrases_.end(), [&](const Phrase& phrase) {
    return stands_in(phrase, of_title) || stands_in(phrase, of_body);
  });
}

std::vector<Part> SearchWords::parts_in(std::u16string_view visible) const {
  std::vector<Part> parts;
  const std::vector<Word> words = words_of(visible);
  for (std::size_t i = 0; i < words.size();) {
    std::size_t longest = 0;
    for (const Phrase& phrase : phrases_) {
      if (stands_at(phrase, words, i)) longest = std::max(longest, phrase.size());
    }
    if (longest > 0) {
      const Part& last = words[i + longest - 1].part;
      parts.push_back({words[i].part.start, last.start + last.length - words[i].part.start});
    }
    i += std::max<std::size_t>(longest, 1);
  }
  return parts;
}

namespace {

constexpr std::size_t words_in_snippet = 12;
constexpr std::size_t words_before = 5;
constexpr std::size_t longest_side = 120;  // of a snippet, where words are long

}  // namespace

Snippet snippet_of(std::u16string_view visible, const std::vector<Part>& parts) {
  if (parts.empty()) return {};
  const Part& part = parts.front();
  const std::size_t part_end = part.start + part.length;
  // More than enough on each side, so that a long text takes no longer.
  constexpr std::size_t reach = std::size_t{8} * longest_side;
  const std::size_t near = whole_position(visible, part.start > reach ? part.start - reach : 0);
  const std::u16string_view text = visible.substr(0, whole_position(visible, part_end + reach));
  std::vector<Word> words = words_of(text.substr(near));
  for (Word& word : words) word.part.start += near;
  const auto holder = std::find_if(words.begin(), words.end(), [&part](const Word& word) {
    return word.part.start + word.part.length > part.start;
  });
  const auto found = static_cast<std::size_t>(holder - words.begin());
  std::size_t first = found < words_before ? 0 : found - words_before;
  const std::size_t last = std::min(first + words_in_snippet, words.size());
  first = last < words_in_snippet ? 0 : std::min(first, last - words_in_snippet);
  const bool at_start = first == 0 && near == 0;
  std::size_t begin = at_start || words.empty() ? near : words[first].part.start;
  begin = std::min(begin, part.start);
  if (part.start - begin > longest_side) {
    begin = whole_position(text, part.start - longest_side);
  }
  std::size_t end =
      last == words.size() ? text.size() : words[last - 1].part.start + words[last - 1].part.length;
  end = std::max(end, part_end);
  end = whole_position(text, std::min(end, part_end + longest_side));

  Snippet snippet;
  if (begin > 0) snippet.text = u"\u2026";
  std::vector<std::size_t> places;  // in the snippet, of each unit
  for (const char16_t unit : text.substr(begin, end - begin)) {
    places.push_back(snippet.text.size());
    const bool follows_blank = snippet.text.empty() || snippet.text.back() == u' ';
    if (!is_blank(unit) || !follows_blank) snippet.text.push_back(is_blank(unit) ? u' ' : unit);
  }
  places.push_back(snippet.text.size());
  for (const Part& other : parts) {
    if (other.start < begin || other.start + other.length > end) continue;
    const std::size_t start = places[other.start - begin];
    snippet.parts.push_back({start, places[other.start + other.length - begin] - start});
  }
  if (end < visible.size()) snippet.text.push_back(u'\u2026');
  return snippet;
}

std::vector<Part> word_parts(std::u16string_view text) {
  std::vector<Part> parts;
  for (const Word& word : words_of(text)) parts.push_back(word.part);
  return parts;
}

std::u16string folded(std::u16string_view text) {
  std::u16string folded;
  for (std::size_t at = 0; at < text.size();) append_folded(folded, next_character(text, at));
  return folded;
}

std::u16string simplified(std::u16string_view text) {
  std::u16string simple;
  for (const std::u16string_view chunk : chunks_of(text)) {
    simple.append(simple.empty() ? u"" : u" ").append(chunk);
  }
  return simple;
}

}  // namespace qel::forms
