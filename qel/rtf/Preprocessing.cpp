#include "qel/rtf/Preprocessing.h"

#include <algorithm>
#include <array>
#include <cstddef>

#include "qel/base/Scan.h"
#include "qel/richtext/DocumentReader.h"
#include "qel/rtf/CodeTable.h"

namespace qel::rtf {
namespace {

struct Replacement {
  std::u16string_view word;
  std::u16string_view by;
  char16_t character;  ///< that the word stands for, together with the blank that ends it; or 0
};

/// No word is the beginning of another, and none occurs in what another becomes: the order in which
/// they are replaced makes no difference.
constexpr std::array<Replacement, 10> replacements = {{
    {u"\\endash", u"\\'96", u'\u2013'},
    {u"\\emdash", u"\\'97", u'\u2014'},
    {u"\\ldblquote", u"\\'93", u'\u201C'},
    {u"\\rdblquote", u"\\'94", u'\u201D'},
    {u"\\lquote", u"\\'91", u'\u2018'},
    {u"\\rquote", u"\\'92", u'\u2019'},
    {u"\\bullet", u"\\'95", u'\u2022'},
    {u"\\~", u"\\'A0", u'\u00A0'},
    {u"\\super", u"\\up4", u'\0'},
    {u"\\sub", u"\\dn4", u'\0'},
}};

const Replacement* replacement_at(std::u16string_view rtf, std::size_t backslash) {
  const std::u16string_view rest = rtf.substr(backslash);
  constexpr std::u16string_view second_characters = u"elrb~s";
  if (rest.size() < 2 || second_characters.find(rest[1]) == std::u16string_view::npos) {
    return nullptr;
  }
  for (const Replacement& replacement : replacements) {
    if (rest[1] == replacement.word[1] &&
        rest.substr(0, replacement.word.size()) == replacement.word) {
      return &replacement;
    }
  }
  return nullptr;
}

constexpr std::u16string_view escaped_backslash = u"\\'5c";

/// Collects changes of RTF, which is copied only if there are any.
class Changes {
 public:
  Changes(std::u16string_view rtf, std::u16string& storage) : rtf_(rtf), storage_(storage) {}

  void replace(std::size_t position, std::size_t length, std::u16string_view by) {
    if (!changed_) storage_.reserve(rtf_.size() + rtf_.size() / 8);
    changed_ = true;
    storage_.append(rtf_, kept_, position - kept_).append(by);
    kept_ = position + length;
  }

  std::u16string_view result() {
    if (!changed_) return rtf_;
    storage_.append(rtf_, kept_, std::u16string_view::npos);
    return storage_;
  }

 private:
  std::u16string_view rtf_;
  std::u16string& storage_;
  std::size_t kept_ = 0;
  bool changed_ = false;
};

enum class Characters { as_escapes, as_such };

/// Replaces the word at the backslash, if it is in the table, and returns where to go on.
std::size_t replace_word(std::u16string_view rtf, std::size_t backslash, Changes& changes,
                         Characters characters) {
  const Replacement* const replacement = replacement_at(rtf, backslash);
  if (replacement == nullptr) return backslash + 1;
  std::size_t length = replacement->word.size();
  const bool is_word = replacement->word.back() != u'~';
  if (replacement->character != 0 && is_word && rtf.substr(backslash + length, 1) == u" ") ++length;
  const bool as_such = characters == Characters::as_such && replacement->character != 0;
  changes.replace(backslash, length,
                  as_such ? std::u16string_view(&replacement->character, 1) : replacement->by);
  return backslash + length;
}

/// Where the binary data that the word at the backslash announces ends; `backslash` when it
/// announces none.
std::size_t end_of_binary(std::u16string_view rtf, std::size_t backslash) {
  constexpr std::u16string_view word = u"\\bin";
  std::size_t at = backslash + word.size();
  if (rtf.substr(backslash, word.size()) != word) return backslash;
  const auto is_digit_at = [&](std::size_t place) {
    return place < rtf.size() && rtf[place] >= u'0' && rtf[place] <= u'9';
  };
  if (!is_digit_at(at)) return backslash;
  std::size_t count = 0;
  for (; is_digit_at(at); ++at) {
    if (count <= rtf.size()) count = count * 10 + static_cast<std::size_t>(rtf[at] - u'0');
  }
  if (rtf.substr(at, 1) == u" ") ++at;
  return at + std::min(count, rtf.size() - at);
}

bool is_code_at(std::u16string_view rtf, std::size_t slash) {
  return rtf.substr(slash, 1) == u"/" && is_code(rtf.substr(slash, 3));
}

void protect_codes_of_text(std::u16string_view text, Changes& changes) {
  for (std::size_t at = find_any<u'/'>(text, 0); at < text.size();
       at = find_any<u'/'>(text, at + 1)) {
    if (is_code_at(text, at)) changes.replace(at, 1, u"\\\\");
  }
}

}  // namespace

std::u16string preprocess(std::u16string_view rtf) {
  std::u16string storage;
  Changes changes(rtf, storage);
  for (std::size_t at = find_any<u'\\'>(rtf, 0); at < rtf.size();) {
    at = find_any<u'\\'>(rtf, replace_word(rtf, at, changes, Characters::as_escapes));
  }
  return std::u16string(changes.result());
}

std::u16string_view prepare(std::u16string_view rtf, bool protect_codes, std::u16string& storage) {
  Changes changes(rtf, storage);
  if (!richtext::is_rtf(rtf)) {
    if (protect_codes) protect_codes_of_text(rtf, changes);
    return changes.result();
  }
  for (std::size_t at = 0; at < rtf.size();) {
    at = find_any<u'\\', u'/'>(rtf, at);
    if (at == rtf.size()) break;
    if (rtf[at] == u'/') {
      if (protect_codes && is_code_at(rtf, at)) changes.replace(at, 1, u"\\'5c\\'5c");
      ++at;
    } else if (rtf.substr(at + 1, 1) == u"\\") {
      changes.replace(at, 2, escaped_backslash);
      at += 2;
    } else if (protect_codes && is_code_at(rtf, at + 1)) {
      // This backslash pairs off with the first of the four that protect the code, which leaves the
      // last of them to begin a control word.
      changes.replace(at, 2, u"\\'5c\\'5c\\");
      at += 2;
    } else if (const std::size_t end = end_of_binary(rtf, at); end != at) {
      at = end;
    } else {
      const std::size_t next = replace_word(rtf, at, changes, Characters::as_such);
      at = next == at + 1 ? at + 2 : next;
    }
  }
  return changes.result();
}

}  // namespace qel::rtf
