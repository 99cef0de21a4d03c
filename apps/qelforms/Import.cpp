#include "Import.h"

#include <algorithm>
#include <cctype>
#include <filesystem>
#include <optional>
#include <stdexcept>
#include <string_view>

#include "Markup.h"
#include "SearchWords.h"
#include "qel/base/Utf8.h"
#include "qel/convert/Convert.h"

#if defined(QEL_HAS_HTML)
#include "qel/html/HtmlReader.h"
#endif

namespace qel::forms {
namespace {

using convert::InputFormat;

std::string lower(std::string_view text) {
  std::string lower(text);
  std::transform(lower.begin(), lower.end(), lower.begin(),
                 [](unsigned char c) { return static_cast<char>(std::tolower(c)); });
  return lower;
}

bool begins_as_html([[maybe_unused]] const std::string& bytes) {
#if defined(QEL_HAS_HTML)
  return html::is_html(bytes);
#else
  return false;
#endif
}

InputFormat format_of(const std::string& bytes, const std::string& name) {
  if (convert::is_rtf(bytes)) return InputFormat::rtf;
  const std::optional<InputFormat> named = convert::input_format_of_file(name);
  if (named && *named != InputFormat::rtf) return *named;
  return begins_as_html(bytes) ? InputFormat::html : InputFormat::text;
}

std::string converted(const std::string& bytes, InputFormat from, convert::OutputFormat to) {
  convert::Options options;
  options.from = from;
  options.to = to;
#if defined(QEL_HAS_HTML)
  options.html_reader = html::reader();
#endif
  return convert::convert(bytes, options);
}

std::u16string text_of(const std::string& bytes, InputFormat from) {
  const std::string text = converted(bytes, from, convert::OutputFormat::text);
  return simplified(convert::decode_text(text));
}

/// From `at` to the brace that closes the group; empty when none does.
std::string_view group_at(std::string_view rtf, std::size_t at) {
  int depth = 1;
  for (std::size_t i = at; i < rtf.size(); ++i) {
    if (rtf[i] == '\\') {
      ++i;
    } else if (rtf[i] == '{') {
      ++depth;
    } else if (rtf[i] == '}' && --depth == 0) {
      return rtf.substr(at, i - at);
    }
  }
  return {};
}

/// The title among the document's properties, in the code page of the document.
std::u16string title_of_rtf(const std::string& rtf) {
  constexpr std::string_view properties = "{\\info";
  constexpr std::string_view title = "{\\title";
  const std::size_t info = rtf.find(properties);
  if (info == std::string::npos) return {};
  const std::string_view group = group_at(rtf, info + properties.size());
  const std::size_t found = group.find(title);
  if (found == std::string_view::npos) return {};
  const std::string_view text = group_at(group, found + title.size());
  constexpr std::string_view code_page = "\\ansicpg";
  const std::size_t page = rtf.find(code_page);
  const std::size_t end = rtf.find_first_not_of("0123456789", page + code_page.size());
  const std::string head = page < info ? rtf.substr(page, end - page) : std::string();
  return text_of("{\\rtf1\\ansi" + head + " " + std::string(text) + "}", InputFormat::rtf);
}

/// The title element, read with the encoding that the document declares.
std::u16string title_of_html(const std::string& html) {
  const std::string source = lower(html);
  const std::size_t begin = source.find("<title");
  if (begin == std::string::npos || begin > source.find("<body")) return {};
  const std::size_t text = source.find('>', begin);
  const std::size_t end = source.find("</title", begin);
  if (text >= end || end == std::string::npos) return {};
  std::string declarations;
  for (std::size_t at = source.find("<meta"); at != std::string::npos && at < source.size();
       at = source.find("<meta", at + 1)) {
    if (at < source.find("<body")) {
      declarations.append(html, at, source.find('>', at) - at).append(">");
    }
  }
  return text_of(declarations + "<p>" + html.substr(text + 1, end - text - 1), InputFormat::html);
}

std::u16string title_of(const std::string& bytes, InputFormat format, const std::string& name) {
  std::u16string title;
  if (format == InputFormat::rtf) title = title_of_rtf(bytes);
  if (format == InputFormat::html) title = title_of_html(bytes);
  if (title.empty()) title = convert::decode_text(std::filesystem::path(name).stem().string());
  return convert::markup_from_text(title);
}

/// The text of a file, without the line break at its end.
std::u16string lines_of(const std::string& bytes) {
  std::u16string text = convert::decode_text(bytes);
  if (text.ends_with(u'\n')) text.pop_back();
  if (text.ends_with(u'\r')) text.pop_back();
  return text;
}

}  // namespace

std::vector<std::string> import_endings() {
  std::vector<std::string> endings = {"rtf", "txt", "qel"};
#if defined(QEL_HAS_HTML)
  endings.insert(endings.begin() + 1, {"html", "htm"});
#endif
  return endings;
}

std::u16string markup_of_file(const std::string& bytes) { return with_line_codes(lines_of(bytes)); }

Record imported(const std::string& bytes, const std::string& name) {
  const InputFormat format = format_of(bytes, name);
  if (format != InputFormat::rtf && convert::is_binary(bytes)) {
    throw std::runtime_error("cannot import " + name + ": it is not text");
  }
#if !defined(QEL_HAS_HTML)
  if (format == InputFormat::html) {
    throw std::runtime_error("cannot import " + name + ": HTML cannot be read here");
  }
#endif
  Record record;
  record.title = title_of(bytes, format, name);
  if (format == InputFormat::qel) {
    record.body = markup_of_file(bytes);
  } else if (format == InputFormat::text) {
    record.body = convert::markup_from_text(lines_of(bytes));
  } else {
    record.body = convert::decode_text(converted(bytes, format, convert::OutputFormat::qel));
  }
  return record;
}

}  // namespace qel::forms
