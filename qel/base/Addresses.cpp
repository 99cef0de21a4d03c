#include "qel/base/Addresses.h"

#include <algorithm>
#include <array>

namespace qel {

namespace {

using Text = std::u16string_view;
constexpr std::size_t npos = Text::npos;

/// Signs that quote or end a sentence in scripts that set no blank beside them.
constexpr Text foreign_signs =
    u"\u00A0\u00AB\u00BB\u1680\u2018\u201A\u201B\u201C\u201D\u201E\u201F\u2026\u2039\u203A\u205F"
    u"\u3000\u3001\u3002\u3008\u3009\u300A\u300B\u300C\u300D\u300E\u300F\u3010\u3011\u3014\u3015"
    u"\uFEFF\uFF01\uFF08\uFF09\uFF0C\uFF1A\uFF1B\uFF1E\uFF1F\uFFFC";

/// Whether no address goes on across the character.
bool is_boundary(char16_t unit) {
  constexpr char16_t delete_sign = 0x7F;
  if (unit <= u' ' || unit == delete_sign) return true;
  constexpr Text signs = u"<>\"`\\^|";
  if (unit < delete_sign) return signs.find(unit) != npos;
  constexpr char16_t first_space = 0x2000;
  constexpr char16_t last_space = 0x200B;
  constexpr char16_t line_separator = 0x2028;
  constexpr char16_t narrow_space = 0x202F;
  return (unit >= first_space && unit <= last_space) ||
         (unit >= line_separator && unit <= narrow_space) || foreign_signs.find(unit) != npos;
}

bool is_digit(char16_t unit) { return unit >= u'0' && unit <= u'9'; }

char16_t lower(char16_t unit) {
  return unit >= u'A' && unit <= u'Z' ? static_cast<char16_t>(unit - u'A' + u'a') : unit;
}

bool is_ascii_alphanumeric(char16_t unit) {
  return is_digit(unit) || (lower(unit) >= u'a' && lower(unit) <= u'z');
}

bool is_alphanumeric(char16_t unit) {
  constexpr char16_t first_foreign = 0x80;
  return is_ascii_alphanumeric(unit) || (unit >= first_foreign && !is_boundary(unit));
}

bool begins_with(Text text, Text prefix) {
  return text.size() >= prefix.size() &&
         std::equal(prefix.begin(), prefix.end(), text.begin(),
                    [](char16_t low, char16_t unit) { return low == lower(unit); });
}

/// Without the punctuation at the end, and without brackets there that are not opened.
Text trimmed(Text text) {
  constexpr Text signs = u".,;:!?'*_~\u2019";
  constexpr Text opening = u"([{";
  constexpr Text closing = u")]}";
  std::array<std::ptrdiff_t, opening.size()> unopened = {};
  for (const char16_t unit : text) {
    if (const std::size_t pair = opening.find(unit); pair != npos) --unopened.at(pair);
    if (const std::size_t pair = closing.find(unit); pair != npos) ++unopened.at(pair);
  }
  while (!text.empty()) {
    const char16_t last = text.back();
    const std::size_t opens = opening.find(last);
    const std::size_t closes = closing.find(last);
    const bool is_unopened = closes != npos && unopened.at(closes) > 0;
    if (!is_unopened && opens == npos && signs.find(last) == npos) break;
    if (opens != npos) ++unopened.at(opens);
    if (closes != npos) --unopened.at(closes);
    text.remove_suffix(1);
  }
  return text;
}

/// The length of a domain at the beginning, which has at least two labels; 0 for none.
std::size_t domain_length(Text text) {
  std::size_t end = 0;
  while (end < text.size() && (is_alphanumeric(text[end]) || text[end] == u'-' ||
                               (text[end] == u'.' && end > 0 && text[end - 1] != u'.'))) {
    ++end;
  }
  while (end > 0 && !is_alphanumeric(text[end - 1])) --end;
  const Text domain = text.substr(0, end);
  const std::size_t dot = domain.rfind(u'.');
  if (dot == npos || !is_alphanumeric(domain.front())) return 0;
  const Text top = domain.substr(dot + 1);
  const bool is_number = std::all_of(top.begin(), top.end(), is_digit);
  return top.size() < 2 || is_number ? 0 : end;
}

struct Scheme {
  Text written;
  Text added;
  bool has_host;
};

constexpr std::array schemes = {Scheme{u"http://", {}, true}, Scheme{u"https://", {}, true},
                                Scheme{u"ftp://", {}, true}, Scheme{u"mailto:", {}, false},
                                Scheme{u"www.", u"http://", true}};

/// The scheme at the beginning; null for none.
const Scheme* scheme_of(Text text) {
  const auto* const found =
      std::find_if(schemes.begin(), schemes.end(),
                   [text](const Scheme& scheme) { return begins_with(text, scheme.written); });
  return found == schemes.end() ? nullptr : found;
}

/// Whether what follows the scheme can be reached.
bool leads_somewhere(const Scheme& scheme, Text rest) {
  if (rest.empty()) return false;
  if (!scheme.has_host) {
    const std::size_t at = rest.find(u'@');
    return at != npos && at > 0 && at + 1 < rest.size() && is_alphanumeric(rest[at + 1]);
  }
  if (!scheme.added.empty()) return domain_length(rest) != 0;
  return is_alphanumeric(rest.front()) || rest.front() == u'[';
}

/// Where another address begins that only a comma or semicolon parts from the first; the length of
/// the text for none.
std::size_t next_address(Text text) {
  for (std::size_t at = text.find_first_of(u",;"); at != npos;
       at = text.find_first_of(u",;", at + 1)) {
    if (scheme_of(text.substr(at + 1)) != nullptr) return at;
  }
  return text.size();
}

/// The address at a place with a scheme.
std::optional<Address> page_at(Text text, std::size_t at) {
  // "xhttp:" is no scheme, and neither is "www." within a name.
  if (at > 0 && is_ascii_alphanumeric(text[at - 1])) return {};
  const Text rest = text.substr(at);
  const Scheme* const scheme = scheme_of(rest);
  if (scheme == nullptr) return {};
  constexpr Text within_name = u".-_/@";
  const bool is_name = !scheme->added.empty();
  if (is_name && at > 0 && within_name.find(text[at - 1]) != npos) return {};
  const Text found = trimmed(rest.substr(0, next_address(rest)));
  if (found.size() <= scheme->written.size()) return {};
  if (!leads_somewhere(*scheme, found.substr(scheme->written.size()))) return {};
  return Address{at, at + found.size(), std::u16string(scheme->added).append(found)};
}

/// The address of e-mail around a sign "@", none of which stands before `from`.
std::optional<Address> mailbox_at(Text text, std::size_t from, std::size_t at) {
  constexpr Text signs = u"._%+-'&";
  std::size_t start = at;
  while (start > from &&
         (is_alphanumeric(text[start - 1]) || signs.find(text[start - 1]) != npos)) {
    --start;
  }
  const bool is_part = start > from && (text[start - 1] == u'@' || text[start - 1] == u'/');
  while (start < at && !is_alphanumeric(text[start]) && text[start] != u'_') ++start;
  const Text name = text.substr(start, at - start);
  const std::size_t length = domain_length(text.substr(at + 1));
  const std::size_t end = at + 1 + length;
  if (is_part || name.empty() || name.back() == u'.' || name.find(u"..") != npos) return {};
  if (length == 0 || (end < text.size() && text[end] == u'@')) return {};
  return Address{start, end, std::u16string(u"mailto:").append(text.substr(start, end - start))};
}

/// The address that contains the character at a position of a text without boundaries.
std::optional<Address> address_in_piece(Text text, std::size_t position) {
  std::size_t from = 0;
  for (std::size_t at = 0; at < text.size(); ++at) {
    const std::optional<Address> address =
        text[at] == u'@' ? mailbox_at(text, from, at) : page_at(text, at);
    if (!address) continue;
    if (position < address->end) return position < address->start ? std::nullopt : address;
    from = address->end;
    at = from - 1;
  }
  return {};
}

}  // namespace

std::optional<Address> address_at(Text text, std::size_t position) {
  if (position >= text.size()) return {};
  constexpr std::size_t longest = 2048;
  std::size_t start = position;
  while (start > 0 && position - start < longest && !is_boundary(text[start - 1])) --start;
  std::size_t end = position;
  while (end < text.size() && end - position < longest && !is_boundary(text[end])) ++end;
  auto address = address_in_piece(text.substr(start, end - start), position - start);
  if (address) {
    address->start += start;
    address->end += start;
  }
  return address;
}

}  // namespace qel
