#include "RecordPdf.h"

#include <QGuiApplication>
#include <stdexcept>

#include "Heading.h"

namespace qel::forms {

std::vector<qt::PrintSection> print_sections(std::span<const Record> records) {
  std::vector<qt::PrintSection> sections;
  for (const Record& record : records) {
    sections.push_back(
        {QString::fromStdU16String(record.title), QString::fromStdU16String(record.body)});
  }
  return sections;
}

qt::PrintOptions print_options(const command::Tables& tables, const std::u16string& title) {
  qt::PrintOptions options;
  options.title = QString::fromStdU16String(title);
  options.fonts = tables.fonts;
  options.colors = tables.colors;
  return options;
}

std::string pdf_without_window(std::span<const Record> records, const command::Tables& tables,
                               const std::u16string& title) {
  int argc = 3;
  char name[] = "qelforms";
  char option[] = "-platform";
  char platform[] = "offscreen";
  char* arguments[] = {name, option, platform, nullptr};
  const QGuiApplication application(argc, arguments);
  const QByteArray pdf = qt::pdf_of(print_sections(records), print_options(tables, title));
  if (pdf.isEmpty()) throw std::runtime_error("no PDF can be made");
  return pdf.toStdString();
}

}  // namespace qel::forms
