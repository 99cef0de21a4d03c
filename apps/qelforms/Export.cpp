#include "Export.h"

#include "Markup.h"
#include "Picture.h"
#include "qel/base/Utf8.h"
#include "qel/convert/Convert.h"

namespace qel::forms {
namespace {

constexpr std::u16string_view line_code = u"/nl";

void append_line(std::u16string& document, const std::u16string& markup) {
  if (markup.empty()) return;
  document.append(with_closed_codes(markup)).append(line_code);
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
  convert::Options options;
  tables.use_in(options);
  const std::string markup = to_utf8(document);
  return format == ExportFormat::rtf ? convert::rtf_from_markup(markup, options)
                                     : convert::text_from_markup(markup, options);
}

}  // namespace qel::forms
