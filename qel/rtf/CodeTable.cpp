#include "qel/rtf/CodeTable.h"

#include <cstddef>
#include <cstdint>
#include <utility>

#include "qel/base/Scan.h"

namespace qel::rtf {
namespace {

constexpr std::size_t code_length = 3;
constexpr std::u16string_view four_backslashes = u"\\\\\\\\";

/// Finds the row of a slash code by its second and third character.
class CodeIndex {
 public:
  constexpr CodeIndex() {
    for (std::size_t row = 0; row < code_table.size(); ++row) {
      const std::u16string_view code = code_table[row].qel;
      if (code.size() == code_length) {
        rows_[slot(code[1], code[2])] = static_cast<std::uint8_t>(row + 1);
      }
    }
  }

  /// Null for what is no code of the table.
  constexpr const CodeRow* find(char16_t letter, char16_t digit) const {
    if (letter >= 0x80 || digit >= 0x80) return nullptr;
    const std::uint8_t row = rows_[slot(letter, digit)];
    return row == 0 ? nullptr : &code_table[row - 1U];
  }

 private:
  static constexpr std::size_t slot(char16_t letter, char16_t digit) {
    return (static_cast<std::size_t>(letter) << 7U) | digit;
  }

  std::array<std::uint8_t, 128 * 128> rows_ = {};
};

constexpr CodeIndex code_index;

/// Both characters of a code behind its slash, however that is written.
bool is_code_tail(char16_t letter, char16_t digit) {
  if (letter == u'f' || letter == u'y') return digit >= u'0' && digit <= u'9';
  constexpr std::u16string_view toggles = u"biupsckrl";
  return (digit == u'0' || digit == u'1') && toggles.find(letter) != std::u16string_view::npos;
}

std::u16string_view rtf_of(char16_t character) {
  switch (character) {
    case u'{':
      return code_table[0].rtf;
    case u'}':
      return code_table[1].rtf;
    case u'\t':
      return u"\\tab ";
    default:
      return u"\\\\";
  }
}

}  // namespace

bool is_code(std::u16string_view code) {
  return code.size() == code_length && code[0] == u'/' && is_code_tail(code[1], code[2]);
}

std::u16string body_from_markup(std::u16string_view markup) {
  std::u16string body;
  body.reserve(markup.size() + markup.size() / 4);
  for (std::size_t at = 0; at < markup.size();) {
    const std::size_t special = find_any<u'/', u'\\', u'{', u'}', u'\t'>(markup, at);
    body.append(markup, at, special - at);
    if (special == markup.size()) break;
    at = special + 1;
    if (markup[special] != u'/') {
      body.append(rtf_of(markup[special]));
      continue;
    }
    const CodeRow* const row = special + code_length <= markup.size()
                                   ? code_index.find(markup[special + 1], markup[special + 2])
                                   : nullptr;
    if (row == nullptr) {
      body.push_back(u'/');
    } else {
      body.append(row->rtf);
      at = special + code_length;
    }
  }
  return body;
}

std::u16string restore_literal_codes(std::u16string body) {
  std::size_t run = body.find(four_backslashes);
  if (run == std::u16string::npos) return body;
  std::u16string restored;
  restored.reserve(body.size());
  std::size_t kept = 0;
  for (; run != std::u16string::npos; run = body.find(four_backslashes, run + 1)) {
    const std::size_t tail = run + four_backslashes.size();
    if (tail + 2 > body.size() || !is_code_tail(body[tail], body[tail + 1])) continue;
    restored.append(body, kept, run - kept).push_back(u'/');
    kept = tail;
    run = tail - 1;
  }
  return restored.append(body, kept, std::u16string::npos);
}

}  // namespace qel::rtf
