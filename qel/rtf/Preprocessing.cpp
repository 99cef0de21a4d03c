#include "qel/rtf/Preprocessing.h"

#include <array>
#include <cstddef>

#include "qel/base/Scan.h"
#include "qel/rtf/CodeTable.h"

namespace qel::rtf {
namespace {

struct Replacement {
  std::u16string_view word;
  std::u16string_view by;
  bool takes_blank;  ///< the blank that ends the word goes with it
};

/// No word is the beginning of another, and none occurs in what another becomes: the order in which
/// they are replaced makes no difference.
constexpr std::array<Replacement, 10> replacements = {{
    {u"\\endash", u"\\'96", true},
    {u"\\emdash", u"\\'97", true},
    {u"\\ldblquote", u"\\'93", true},
    {u"\\rdblquote", u"\\'94", true},
    {u"\\lquote", u"\\'91", true},
    {u"\\rquote", u"\\'92", true},
    {u"\\bullet", u"\\'95", true},
    {u"\\~", u"\\'A0", false},
    {u"\\super", u"\\up4", false},
    {u"\\sub", u"\\dn4", false},
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

/// Copies RTF from the first change on.
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

/// Replaces the word at the backslash, if it is one of the table's, and returns where to go on.
std::size_t replace_word(std::u16string_view rtf, std::size_t backslash, Changes& changes) {
  const Replacement* const replacement = replacement_at(rtf, backslash);
  if (replacement == nullptr) return backslash + 1;
  std::size_t length = replacement->word.size();
  if (replacement->takes_blank && rtf.substr(backslash + length, 1) == u" ") ++length;
  changes.replace(backslash, length, replacement->by);
  return backslash + length;
}

bool is_code_at(std::u16string_view rtf, std::size_t slash) {
  return rtf.substr(slash, 1) == u"/" && is_code(rtf.substr(slash, 3));
}

}  // namespace

std::u16string preprocess(std::u16string_view rtf) {
  std::u16string storage;
  Changes changes(rtf, storage);
  for (std::size_t at = find_any<u'\\'>(rtf, 0); at < rtf.size();) {
    at = find_any<u'\\'>(rtf, replace_word(rtf, at, changes));
  }
  return std::u16string(changes.result());
}

std::u16string_view prepare(std::u16string_view rtf, bool protect_codes, std::u16string& storage) {
  Changes changes(rtf, storage);
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
      // The backslash pairs off with the first of the four that protect the code, and the last of
      // them is left to begin a control word.
      changes.replace(at, 2, u"\\'5c\\'5c\\");
      at += 2;
    } else {
      const std::size_t next = replace_word(rtf, at, changes);
      at = next == at + 1 ? at + 2 : next;
    }
  }
  return changes.result();
}

}  // namespace qel::rtf
