#include "qt/platform/DropData.h"

#include <algorithm>
#include <iterator>

#include "qel/convert/HtmlFragment.h"
#include "qel/richtext/DocumentReader.h"
#include "qel/richtext/RtfBytes.h"
#include "qt/platform/MimeData.h"
#include "qt/platform/Text.h"

namespace qel::qt {

using platform::html_format;
using platform::rtf_format;
using platform::text_format;

namespace {

bool is_rtf_name(const QString& name) {
  return std::any_of(std::begin(mime::rtf_names), std::end(mime::rtf_names),
                     [&](const char* rtf_name) { return name == QLatin1String(rtf_name); });
}

bool is_text_name(const QString& name) { return name.startsWith(QLatin1String("text/plain")); }

}  // namespace

bool TransferMimeData::hasFormat(const QString& name) const { return formats().contains(name); }

QStringList TransferMimeData::formats() const {
  QStringList names;
  if (data_ == nullptr) return names;
  if (data_->has(rtf_format)) {
    for (const char* name : mime::rtf_names) names.append(QLatin1String(name));
  }
  if (data_->has(rtf_format) || data_->has(html_format)) {
    names.append(QLatin1String(mime::html_name));
  }
  if (data_->has(text_format)) names.append(QStringLiteral("text/plain"));
  return names;
}

QVariant TransferMimeData::retrieveData(const QString& name, QMetaType /*type*/) const {
  if (data_ == nullptr) return {};
  if (is_rtf_name(name)) {
    const auto rtf = data_->get(rtf_format);
    if (rtf) return QByteArray::fromStdString(richtext::rtf_to_bytes(*rtf));
  } else if (name == QLatin1String(mime::html_name)) {
    // Others would take it for the code page of their system.
    constexpr auto encoding =
        "<meta http-equiv=\"content-type\" content=\"text/html; charset=utf-8\">";
    if (const auto text = offered_html()) return QByteArray(encoding) + to_qt(*text).toUtf8();
  } else if (is_text_name(name)) {
    const auto text = data_->get(text_format);
    if (text) return to_qt(*text).replace(QLatin1String("\r\n"), QLatin1String("\n"));
  }
  return {};
}

std::optional<std::u16string> TransferMimeData::offered_html() const {
  if (auto own = data_->get(html_format)) return own;
  const auto rtf = data_->get(rtf_format);
  if (!rtf) return {};
  return convert::html_fragment(richtext::read_document(*rtf, richtext::CharFormat()));
}

platform::DragData& DropData::look_at(const QMimeData& data) {
  const auto* const own = qobject_cast<const TransferMimeData*>(&data);
  if (own != nullptr && own->content() != nullptr) return *own->content();
  source_ = &data;
  foreign_.clear();
  if (mime::has_rtf(data)) foreign_.promise(rtf_format);
  if (mime::has_html(data)) foreign_.promise(html_format);
  if (data.hasText()) foreign_.promise(text_format);
  foreign_.put_supply([this](platform::DragData& promised, std::int16_t format) {
    if (!source_) return;
    const auto value = format == rtf_format    ? mime::rtf(*source_)
                       : format == html_format ? mime::html(*source_)
                                               : mime::text(*source_);
    if (value) promised.put(format, *value);
  });
  return foreign_;
}

}  // namespace qel::qt
