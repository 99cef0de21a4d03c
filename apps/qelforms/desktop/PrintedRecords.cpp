#include "PrintedRecords.h"

#include <QCoreApplication>
#include <stdexcept>

#include "Markup.h"

namespace qel::forms {
namespace {

QString from_u16(const std::u16string& text) { return QString::fromStdU16String(text); }

}  // namespace

std::vector<qt::PrintSection> sections_of(std::span<const Record> records) {
  std::vector<qt::PrintSection> sections;
  for (const Record& record : records) {
    sections.push_back({from_u16(record.title), from_u16(record.body)});
  }
  return sections;
}

qt::PrintOptions print_options(std::span<const Record> records, const command::Tables& tables) {
  qt::PrintOptions options;
  options.title = records.size() == 1
                      ? from_u16(visible_text(records.front().title))
                      : QCoreApplication::translate("qel::forms::PrintedRecords", "Records");
  options.heads_pages = records.size() > 1;
  options.fonts = tables.fonts;
  options.colors = tables.colors;
  return options;
}

std::string pdf_of(std::span<const Record> records, const command::Tables& tables) {
  const QByteArray pdf = qt::pdf_of(sections_of(records), print_options(records, tables));
  if (pdf.isEmpty()) throw std::runtime_error("no PDF can be made");
  return pdf.toStdString();
}

}  // namespace qel::forms
