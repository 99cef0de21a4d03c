#include "qt/platform/MimeData.h"

#include <QByteArray>
#include <QMimeData>
#include <algorithm>
#include <iterator>
#include <utility>

#include "qel/richtext/RtfBytes.h"
#include "qt/platform/DropData.h"
#include "qt/platform/HtmlReading.h"
#include "qt/platform/Text.h"

namespace qel::qt::mime {

std::unique_ptr<QMimeData> create(std::u16string_view text, std::u16string_view rtf) {
  platform::DragData data;
  data.put(platform::text_format, text);
  data.put(platform::rtf_format, rtf);
  return std::make_unique<TransferMimeData>(std::move(data));
}

bool has_content(const QMimeData& data) {
  return has_rtf(data) || has_html(data) || data.hasText();
}

bool has_html(const QMimeData& data) { return data.hasFormat(QLatin1String(html_name)); }

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

std::optional<std::u16string> html(const QMimeData& data) {
  if (!has_html(data)) return {};
  return decode_html(data.data(QLatin1String(html_name)));
}

std::optional<std::u16string> text(const QMimeData& data) {
  if (!data.hasText()) return {};
  QString text = data.text();
  text.replace(QLatin1String("\r\n"), QLatin1String("\n"));
  return from_qt(text.replace(QLatin1Char('\n'), QLatin1String("\r\n")));
}

}  // namespace qel::qt::mime
