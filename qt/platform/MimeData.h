#pragma once

#include <memory>
#include <optional>
#include <string>
#include <string_view>

class QMimeData;

/// Text and RTF on the clipboard or in a drag, where a break is a line feed.
namespace qel::qt::mime {

std::unique_ptr<QMimeData> create(std::u16string_view text, std::u16string_view rtf);
bool has_rtf(const QMimeData& data);
/// Each is empty where the data does not have that format.
std::optional<std::u16string> rtf(const QMimeData& data);
std::optional<std::u16string> text(const QMimeData& data);

/// The MIME types of RTF.
inline constexpr const char* rtf_names[] = {"text/rtf", "application/rtf"};

}  // namespace qel::qt::mime
