#include "qt/platform/MimeData.h"

#include <QByteArray>
#include <QMimeData>
#include <algorithm>
#include <iterator>

#include "qel/richtext/RtfBytes.h"
#include "qt/platform/Text.h"

namespace qel::qt::mime {

std::unique_ptr<QMimeData> create(std::u16string_view text, std::u16string_view rtf) {
  auto data = std::make_unique<QMimeData>();
  const QByteArray bytes = QByteArray::fromStdString(richtext::rtf_to_bytes(rtf));
  for (const char* name : rtf_names) data->setData(QLatin1String(name), bytes);
  data->setText(to_qt(text).replace(QLatin1String("\r\n"), QLatin1String("\n")));
  return data;
}

bool has_rtf(const QMimeData& data) {
  return std::any_of(std::begin(rtf_names), std::end(rtf_names),
                     [&](const char* name) { return data.hasFormat(QLatin1String(name)); });
}

std::optional<std::u16string> rtf(const QMimeData& data) {
  for (const char* name : rtf_names) {
    if (!data.hasFormat(QLatin1String(name))) continue;
    const QByteArray bytes = data.data(QLatin1String(name));
    return richtext::rtf_from_bytes({bytes.data(), static_cast<std::size_t>(bytes.size())});
  }
  return {};
}

std::optional<std::u16string> text(const QMimeData& data) {
  if (!data.hasText()) return {};
  QString text = data.text();
  text.replace(QLatin1String("\r\n"), QLatin1String("\n"));
  return from_qt(text.replace(QLatin1Char('\n'), QLatin1String("\r\n")));
}

}  // namespace qel::qt::mime
