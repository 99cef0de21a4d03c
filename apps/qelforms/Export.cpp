#include "Export.h"

#include <algorithm>
#include <array>
#include <cctype>
#include <filesystem>
#include <stdexcept>

#include "Markup.h"
#include "Picture.h"
#include "qel/base/Utf8.h"
#include "qel/convert/Convert.h"

namespace qel::forms {
namespace {

constexpr std::u16string_view line_code = u"/nl";

constexpr std::array formats = {
    ExportFormatName{ExportFormat::rtf, "rtf", "rtf"},
    ExportFormatName{ExportFormat::html, "html", "html"},
    ExportFormatName{ExportFormat::text, "text", "txt"},
    ExportFormatName{ExportFormat::pdf, "pdf", "pdf"},
    ExportFormatName{ExportFormat::svg, "svg", "svg"},
    ExportFormatName{ExportFormat::qel, "qel", "qel"},
};

void append_line(std::u16string& document, const std::u16string& markup) {
  if (markup.empty()) return;
  document.append(with_closed_codes(markup)).append(line_code);
}

std::string escaped(const std::string& text) {
  std::string escaped;
  for (const char c : text) {
    if (c == '&') {
      escaped.append("&amp;");
    } else if (c == '<') {
      escaped.append("&lt;");
    } else {
      escaped.push_back(c);
    }
  }
  return escaped;
}

std::u16string document_name(std::span<const Record> records, const std::u16string& name) {
  if (!name.empty() || records.empty()) return name;
  return shown_title(records[0].title, records[0].body).text;
}

/// The records within the document that an empty text is written as.
std::string html_of(std::span<const Record> records, convert::Options options,
                    const std::u16string& name) {
  options.html.paragraphs = true;
  std::string content;
  for (const Record& record : records) {
    convert::Options heading = options;
    heading.html.paragraphs = false;
    const std::string title = convert::html_from_markup(to_utf8(record.title), heading);
    if (!title.empty()) content.append("\n<h1>").append(title).append("</h1>");
    content.append("\n").append(convert::html_from_markup(to_utf8(record.body), options));
  }
  options.html.whole_document = true;
  std::string html = convert::html_from_markup(std::string(), options);
  html.insert(html.find("</head>"), "<title>" + escaped(to_utf8(name)) + "</title>\n");
  return html.insert(html.find("</body>"), content + "\n");
}

std::string known_endings() {
  std::string endings;
  for (const ExportFormatName& format : formats) {
    endings.append(endings.empty() ? "." : ", .").append(format.ending);
  }
  return endings;
}

}  // namespace

std::span<const ExportFormatName> export_formats() { return formats; }

ExportFormat format_of_file(const std::string& path) {
  std::string ending = std::filesystem::path(path).extension().string();
  std::transform(ending.begin(), ending.end(), ending.begin(),
                 [](unsigned char c) { return static_cast<char>(std::tolower(c)); });
  if (ending == ".htm") return ExportFormat::html;
  for (const ExportFormatName& format : formats) {
    if (ending == std::string(".") + format.ending) return format.format;
  }
  throw std::runtime_error("cannot tell the format of " + path + ": its name ends in none of " +
                           known_endings());
}

std::u16string document_of(std::span<const Record> records) {
  std::u16string document;
  for (const Record& record : records) {
    if (!document.empty()) document.append(line_code);
    append_line(document, record.title);
    append_line(document, record.body);
  }
  return document;
}

std::string exported(std::span<const Record> records, ExportFormat format,
                     const command::Tables& tables, const std::u16string& name) {
  const std::u16string document = document_of(records);
  std::string markup = to_utf8(document);
  convert::Options options;
  tables.use_in(options);
  switch (format) {
    case ExportFormat::qel:
      return markup;
    case ExportFormat::rtf:
      return convert::rtf_from_markup(markup, options);
    case ExportFormat::html:
      return html_of(records, options, document_name(records, name));
    case ExportFormat::text:
      return convert::text_from_markup(markup, options);
    case ExportFormat::svg:
      return command::drawn(command::Picture(), tables, document);
    case ExportFormat::pdf:
      break;
  }
  throw std::runtime_error("PDF is made by what draws pages");
}

}  // namespace qel::forms
