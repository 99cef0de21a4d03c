#include "Export.h"

#include "Conversion.h"
#include "Markup.h"
#include "Picture.h"
#include "qel/base/Utf8.h"

namespace qel::forms {
namespace {

constexpr std::u16string_view line_code = u"/nl";

void append_line(std::u16string& document, const std::u16string& markup) {
  if (markup.empty()) return;
  const std::u16string line = with_line_codes(markup);
  // After the line code, the last characters of the text cannot turn the closing codes into text.
  document.append(line).append(line_code).append(codes_to_close(line));
}

}  // namespace

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
                     const command::Tables& tables) {
  const std::u16string document = document_of(records);
  if (format == ExportFormat::qel) return to_utf8(document);
  if (format == ExportFormat::svg) return command::drawn(command::Picture(), tables, document);
  command::ConversionOptions options;
  options.from = command::InputFormat::qel;
  options.to =
      format == ExportFormat::rtf ? command::OutputFormat::rtf : command::OutputFormat::text;
  options.tables = tables;
  return command::convert(to_utf8(document), options);
}

}  // namespace qel::forms
