#include "qel/rtf/CodeTable.h"

#include <algorithm>
#include <cstddef>
#include <cstdint>

#include "qel/base/Ascii.h"
#include "qel/base/Scan.h"
#include "qel/base/Utf8.h"
#include "qel/richtext/RtfBytes.h"

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

  /// Null for a code that is not in the table.
  constexpr const CodeRow* find(char16_t letter, char16_t digit) const {
    if (letter >= 0x80 || digit >= 0x80) return nullptr;
    const std::uint8_t row = rows_[slot(letter, digit)];
    return row == 0 ? nullptr : &code_table[row - 1U];
  }

 private:
  static constexpr std::size_t slot(char16_t letter, char16_t digit) {
    return (static_cast<std::size_t>(letter) << 7U) | digit;
  }

  std::array<std::uint8_t, std::size_t{128}* 128> rows_ = {};
};

constexpr CodeIndex code_index;

template <class Char>
std::basic_string_view<Char> rtf_of(Char character) {
  switch (character) {
    case '{':
      return ascii<Char, "\\{">;
    case '}':
      return ascii<Char, "\\}">;
    case '\t':
      return ascii<Char, "\\tab ">;
    default:
      return ascii<Char, "\\\\">;
  }
}

/// Position of the first byte at or after `from` that does not stand for itself in RTF.
std::size_t find_escaped(std::string_view text, std::size_t from) {
  const auto is_escaped = [](char c) {
    return static_cast<unsigned char>(c) >= 0x80 || c == '\\' || c == '{' || c == '}' || c == '\t';
  };
#if defined(__SSE2__)
  return find_byte(text, from, is_escaped, [](__m128i packed) {
    // Of what is not ASCII, the highest bit says so.
    return _mm_or_si128(packed, AreAny<u'\\', u'{', u'}', u'\t'>()(packed));
  });
#else
  while (from < text.size() && !is_escaped(text[from])) ++from;
  return from;
#endif
}

}  // namespace

bool is_code_tail(char16_t letter, char16_t digit) {
  if (letter == u'f' || letter == u'y') return digit >= u'0' && digit <= u'9';
  constexpr std::u16string_view toggles = u"biupsckrl";
  return (digit == u'0' || digit == u'1') && toggles.find(letter) != std::u16string_view::npos;
}

bool is_code(std::u16string_view code) {
  return code.size() == code_length && code[0] == u'/' && is_code_tail(code[1], code[2]);
}

bool append_body(std::u16string& out, std::u16string_view markup) {
  out.reserve(out.size() + markup.size() + markup.size() / 8);
  bool two_backslashes = false;
  for (std::size_t at = 0; at < markup.size();) {
    const std::size_t special = find_any<u'/', u'\\', u'{', u'}', u'\t'>(markup, at);
    out.append(markup, at, special - at);
    if (special == markup.size()) break;
    at = special + 1;
    if (markup[special] != u'/') {
      two_backslashes = two_backslashes || markup.substr(special, 2) == u"\\\\";
      out.append(rtf_of(markup[special]));
      continue;
    }
    const CodeRow* const row = special + code_length <= markup.size()
                                   ? code_index.find(markup[special + 1], markup[special + 2])
                                   : nullptr;
    if (row == nullptr) {
      out.push_back(u'/');
    } else {
      out.append(row->rtf);
      at = special + code_length;
    }
  }
  return two_backslashes;
}

void append_text(std::u16string& out, std::u16string_view text) {
  for (std::size_t at = 0; at < text.size(); ++at) {
    const std::size_t special = find_any<u'\\', u'{', u'}', u'\t'>(text, at);
    out.append(text, at, special - at);
    if (special < text.size()) out.append(rtf_of(text[special]));
    at = special;
  }
}

void append_text(std::string& out, std::string_view text) {
  for (std::size_t at = 0; at < text.size();) {
    const std::size_t special = find_escaped(text, at);
    out.append(text, at, special - at);
    if (special == text.size()) return;
    at = special;
    if (static_cast<unsigned char>(text[special]) >= 0x80) {
      richtext::append_rtf_character(out, next_character(text, at));
    } else {
      out.append(rtf_of(text[special]));
      ++at;
    }
  }
}

void restore_literal_codes(std::u16string& text, std::size_t from) {
  // The text only gets shorter, so it can be rewritten in place.
  std::size_t written = from;
  std::size_t kept = from;
  const auto keep_up_to = [&](std::size_t end) {
    std::copy(text.begin() + static_cast<std::ptrdiff_t>(kept),
              text.begin() + static_cast<std::ptrdiff_t>(end),
              text.begin() + static_cast<std::ptrdiff_t>(written));
    written += end - kept;
  };
  for (std::size_t run = text.find(four_backslashes, from); run != std::u16string::npos;) {
    const std::size_t tail = run + four_backslashes.size();
    if (tail + 2 <= text.size() && is_code_tail(text[tail], text[tail + 1])) {
      keep_up_to(run);
      text[written++] = u'/';
      kept = tail;
    }
    run = text.find(four_backslashes, std::max(run + 1, kept));
  }
  keep_up_to(text.size());
  text.resize(written);
}

}  // namespace qel::rtf
