#include "qt/platform/Clipboard.h"

#include <QClipboard>
#include <QGuiApplication>
#include <QMimeData>

#include "qt/platform/MimeData.h"

namespace qel::qt {

std::optional<std::u16string> Clipboard::rtf() const {
  const QMimeData* data = QGuiApplication::clipboard()->mimeData();
  return data == nullptr ? std::nullopt : mime::rtf(*data);
}

std::optional<std::u16string> Clipboard::text() const {
  const QMimeData* data = QGuiApplication::clipboard()->mimeData();
  return data == nullptr ? std::nullopt : mime::text(*data);
}

void Clipboard::put(std::u16string_view text, std::u16string_view rtf) {
  QGuiApplication::clipboard()->setMimeData(mime::create(text, rtf).release());
}

}  // namespace qel::qt
