#pragma once

#include <QString>
#include <string>
#include <string_view>

/// Passes text between the library and Qt: both are UTF-16, so nothing is converted.
namespace qel::qt {

inline QString to_qt(std::u16string_view text) {
  return QStringView(text.data(), static_cast<qsizetype>(text.size())).toString();
}

/// Valid as long as `text`.
inline std::u16string_view view_of(QStringView text) {
  return {text.utf16(), static_cast<std::size_t>(text.size())};
}

inline std::u16string from_qt(const QString& text) { return std::u16string(view_of(text)); }

}  // namespace qel::qt
