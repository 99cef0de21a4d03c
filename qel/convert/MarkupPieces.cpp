#include "qel/convert/MarkupPieces.h"

#include <algorithm>

#include "qel/base/Scan.h"

namespace qel::convert {
namespace {

constexpr std::size_t code_length = 3;

bool is_letter(char16_t c) { return (c >= u'a' && c <= u'z') || (c >= u'A' && c <= u'Z'); }
bool is_digit(char16_t c) { return c >= u'0' && c <= u'9'; }

Piece::Kind kind_at(std::u16string_view rest, Way way) {
  using Kind = Piece::Kind;
  if (rest.front() == u'~') return begins_with_escaped_code(rest) ? Kind::escaped_code : Kind::text;
  if (line_break_length(rest, way) > 0) return Kind::line_break;
  const std::u16string_view code = rest.substr(0, code_length);
  if (code.size() < code_length || code.front() != u'/') return Kind::text;
  if (IsQELCode(code)) return Kind::code;
  if (is_code_of_any_reader(code[1], code[2])) return Kind::code_of_rtf;
  return is_letter(code[1]) && is_digit(code[2]) ? Kind::unknown_code : Kind::text;
}

std::size_t next_special(std::u16string_view text, std::size_t from) {
  return find_any<u'/', u'~', u'\r', u'\n'>(text, from);
}

std::size_t length_of(Piece::Kind kind, std::u16string_view rest, Way way) {
  if (kind == Piece::Kind::line_break) return line_break_length(rest, way);
  if (kind == Piece::Kind::escaped_code) return code_length + 1;
  if (kind != Piece::Kind::text) return code_length;
  std::size_t end = next_special(rest, 1);
  while (end < rest.size() && kind_at(rest.substr(end), way) == Piece::Kind::text) {
    end = next_special(rest, end + 1);
  }
  return end;
}

}  // namespace

Piece piece_at(std::u16string_view markup, std::size_t at, Way way) {
  const std::u16string_view rest = markup.substr(at);
  const Piece::Kind kind = kind_at(rest, way);
  return {kind, rest.substr(0, length_of(kind, rest, way))};
}

std::size_t meet_as_code(std::u16string_view text, std::u16string_view following) {
  const std::size_t size = text.size();
  if (size >= 1 && following.size() >= 2 && text[size - 1] == u'/' &&
      is_code_of_any_reader(following[0], following[1])) {
    return 1;
  }
  const bool meet = size >= 2 && !following.empty() && text[size - 2] == u'/' &&
                    is_code_of_any_reader(text[size - 1], following[0]);
  return meet ? 2 : 0;
}

std::size_t Formats::slot_of(char16_t letter) {
  const auto found = std::find(letters.begin(), letters.end(), letter);
  return static_cast<std::size_t>(found - letters.begin());
}

void Formats::apply(const Piece& code) {
  const char16_t letter = code.characters[1];
  const auto index = static_cast<std::uint8_t>(code.characters[2] - u'0');
  if (code.kind == Piece::Kind::code_of_rtf) {
    values_[letter == u'r' ? raised : lowered].of_rtf = index;
    return;
  }
  const std::size_t slot = slot_of(letter);
  if (slot == count) return;
  // Indexes add up, and the highest counts, until 0 switches all of them off.
  const std::uint8_t value = index == 0 ? std::uint8_t{0} : std::max(index, values_[slot].of_text);
  values_[slot] = {value, value};
}

}  // namespace qel::convert
