#include "qt/platform/Clipboard.h"

#include <QClipboard>
#include <QGuiApplication>
#include <QMimeData>

#include "qt/platform/HtmlReading.h"
#include "qt/platform/MimeData.h"

namespace qel::qt {

std::optional<std::u16string> Clipboard::rtf() const {
  const QMimeData* data = QGuiApplication::clipboard()->mimeData();
  return data == nullptr ? std::nullopt : mime::rtf(*data);
}

std::optional<std::u16string> Clipboard::html() const {
  const QMimeData* data = QGuiApplication::clipboard()->mimeData();
  return data == nullptr ? std::nullopt : mime::html(*data);
}

std::optional<std::u16string> Clipboard::text() const {
  const QMimeData* data = QGuiApplication::clipboard()->mimeData();
  return data == nullptr ? std::nullopt : mime::text(*data);
}

void Clipboard::put(std::u16string_view text, std::u16string_view rtf) {
  QGuiApplication::clipboard()->setMimeData(mime::create(text, rtf).release());
}

std::optional<richtext::Document> Clipboard::read_html(std::u16string_view html,
                                                       const richtext::CharFormat& base) const {
  return qt::read_html(html, base);
}

}  // namespace qel::qt
