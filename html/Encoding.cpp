#include "Encoding.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <cstddef>
#include <cstdint>
#include <optional>
#include <utility>

#include "Ascii.h"
#include "qel/base/Utf8.h"
#include "qel/convert/Convert.h"
#include "qel/richtext/CodePage.h"

namespace qel::html {
namespace {

using richtext::CodePage;

constexpr int utf8 = 65001;

/// Names of encodings, with the code pages in which browsers read them.
constexpr std::array<std::pair<std::string_view, int>, 38> encodings = {{
    {"utf-8", utf8},
    {"utf8", utf8},
    {"us-ascii", 1252},
    {"ascii", 1252},
    {"iso-8859-1", 1252},
    {"latin1", 1252},
    {"iso-8859-2", 28592},
    {"latin2", 28592},
    {"iso-8859-3", 28593},
    {"iso-8859-4", 28594},
    {"iso-8859-5", 28595},
    {"iso-8859-6", 28596},
    {"iso-8859-7", 28597},
    {"iso-8859-8", 28598},
    {"iso-8859-8-i", 28598},
    {"iso-8859-9", 1254},
    {"latin5", 1254},
    {"iso-8859-10", 28600},
    {"iso-8859-11", 874},
    {"iso-8859-13", 28603},
    {"iso-8859-14", 28604},
    {"iso-8859-15", 28605},
    {"iso-8859-16", 28606},
    {"tis-620", 874},
    {"koi8-r", 20866},
    {"koi8-u", 21866},
    {"macintosh", 10000},
    {"x-mac-cyrillic", 10007},
    {"shift_jis", 932},
    {"shift-jis", 932},
    {"sjis", 932},
    {"gb2312", 936},
    {"gbk", 936},
    {"gb18030", 54936},
    {"big5", 950},
    {"euc-kr", 949},
    {"ks_c_5601-1987", 949},
    {"ibm866", 866},
}};

/// The code page of a name; names such as "windows-1251" and "cp1251" have its number.
std::optional<int> code_page_named(std::string_view name) {
  for (const auto& [known, code_page] : encodings) {
    if (equals(name, known)) return code_page;
  }
  for (const std::string_view prefix : {"windows-", "cp", "x-cp"}) {
    if (!begins_with(name, prefix)) continue;
    const std::string_view digits = name.substr(prefix.size());
    int number = 0;
    const auto end = digits.data() + digits.size();
    if (std::from_chars(digits.data(), end, number).ptr == end && number < utf8) return number;
  }
  return {};
}

/// What stands behind "charset=" in a meta element at the beginning.
std::optional<int> declared_code_page(std::string_view bytes) {
  constexpr std::size_t searched = 4096;
  const std::string_view head = bytes.substr(0, searched);
  for (std::size_t at = find(head, "<meta", 0); at < head.size();
       at = find(head, "<meta", at + 1)) {
    const std::string_view tag = head.substr(at, head.find('>', at) - at);
    std::string_view rest = tag.substr(find(tag, "charset", 0));
    rest.remove_prefix(std::min(rest.find('='), rest.size()));
    rest.remove_prefix(std::min(rest.find_first_not_of("= \t\r\n\"'"), rest.size()));
    const auto code_page = code_page_named(rest.substr(0, rest.find_first_of(" \t\r\n\"';/>")));
    if (code_page) return code_page;
  }
  return {};
}

std::u16string from_code_page(std::string_view bytes, int number) {
  const CodePage code_page(number);
  std::u16string text;
  text.reserve(bytes.size());
  for (std::size_t at = 0; at < bytes.size();) {
    const auto first = static_cast<std::uint8_t>(bytes[at]);
    const std::size_t length = code_page.length_from(bytes.substr(at, 2));
    const bool has_all = length > 1 && length <= bytes.size() - at;
    const std::u16string several =
        has_all ? code_page.decode(bytes.substr(at, length)) : std::u16string();
    if (several.empty()) {
      text.push_back(code_page.decode_single(first));
      ++at;
    } else {
      text.append(several);
      at += length;
    }
  }
  return text;
}

}  // namespace

std::string to_valid_utf8(std::string_view bytes) {
  const bool is_marked = bytes.starts_with("\xFF\xFE") || bytes.starts_with("\xFE\xFF") ||
                         bytes.starts_with("\xEF\xBB\xBF");
  const int code_page = is_marked ? utf8 : declared_code_page(bytes).value_or(utf8);
  if (code_page != utf8) return to_utf8(from_code_page(bytes, code_page));
  return to_utf8(convert::decode_text(bytes));
}

}  // namespace qel::html
