#include "windows/HtmlFormat.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <cstddef>
#include <cstdint>
#include <cstdio>

#include "qel/base/Utf8.h"
#include "qel/convert/HtmlFragment.h"
#include "qel/richtext/CodePage.h"
#include "qel/richtext/DocumentReader.h"

namespace qel::windows {
namespace {

constexpr std::string_view begin_mark = "<!--StartFragment-->";
constexpr std::string_view end_mark = "<!--EndFragment-->";

/// The header for a page of which so many bytes stand before and behind the fragment.
std::string header(std::size_t before, std::size_t fragment, std::size_t behind) {
  // Every number has ten digits, so the header is always as long as this.
  constexpr std::size_t size = 105;
  std::array<char, size + 1> text = {};
  std::snprintf(text.data(), text.size(),
                "Version:0.9\r\nStartHTML:%010zu\r\nEndHTML:%010zu\r\nStartFragment:%010zu\r\n"
                "EndFragment:%010zu\r\n",
                size, size + before + fragment + behind, size + before, size + before + fragment);
  return {text.data(), size};
}

/// The number in the header's line of that name.
std::optional<std::size_t> number(std::string_view header, std::string_view name) {
  const std::size_t line = header.find(name);
  if (line == header.npos) return {};
  const char* const digits = header.data() + line + name.size();
  std::size_t value = 0;
  const auto read = std::from_chars(digits, header.data() + header.size(), value);
  return read.ec == std::errc() ? std::optional(value) : std::nullopt;
}

/// Whether something can be put there: not in the middle of a character or a tag.
bool is_between(std::string_view text, std::size_t at) {
  const bool cuts_character = at < text.size() && (static_cast<std::uint8_t>(text[at]) >> 6U) == 2U;
  const std::size_t last = at == 0 ? text.npos : text.find_last_of("<>", at - 1);
  return !cuts_character && (last == text.npos || text[last] == '>');
}

/// The page with marks around the fragment that the header names.
std::string marked(std::string_view bytes, std::size_t page) {
  const std::string_view header = bytes.substr(0, page);
  const auto begin = number(header, "StartFragment:");
  const auto end = number(header, "EndFragment:");
  std::string text(bytes.substr(page));
  const bool fits = begin && end && page <= *begin && *begin <= *end && *end <= bytes.size() &&
                    is_between(text, *begin - page) && is_between(text, *end - page);
  if (!fits) return text;
  text.insert(*end - page, end_mark);
  return text.insert(*begin - page, begin_mark);
}

}  // namespace

std::string html_to_bytes(std::u16string_view fragment) {
  const std::string before = std::string("<html><body>\r\n").append(begin_mark);
  const std::string behind = std::string(end_mark).append("\r\n</body></html>");
  const std::string text = to_utf8(fragment);
  return header(before.size(), text.size(), behind.size()) + before + text + behind;
}

std::u16string html_from_bytes(std::string_view bytes) {
  constexpr std::string_view first_line = "Version:";
  const bool has_header = bytes.starts_with(first_line);
  const std::size_t page = has_header ? std::min(bytes.find('<'), bytes.size()) : 0;
  const std::string_view text = bytes.substr(page);
  const bool is_marked = text.find("<!--StartFragment") != text.npos;
  return from_utf8(is_marked || !has_header ? std::string(text) : marked(bytes, page),
                   richtext::decode_western);
}

std::optional<std::u16string> offered_html(platform::DragData& data) {
  if (auto own = data.get(platform::html_format)) return own;
  const auto rtf = data.get(platform::rtf_format);
  if (!rtf) return {};
  return convert::html_fragment(richtext::read_document(*rtf, richtext::CharFormat()));
}

}  // namespace qel::windows
