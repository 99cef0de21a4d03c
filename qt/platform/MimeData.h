#pragma once

#include <memory>
#include <optional>
#include <string>
#include <string_view>

class QMimeData;

/// Formatted text on the clipboard or in a drag, as RTF, HTML and text, where a break is a line
/// feed.
namespace qel::qt::mime {

/// HTML is made of the RTF when somebody asks for it.
std::unique_ptr<QMimeData> create(std::u16string_view text, std::u16string_view rtf);
/// Whether it has any format that a box can take.
bool has_content(const QMimeData& data);
bool has_rtf(const QMimeData& data);
bool has_html(const QMimeData& data);
/// Each is empty where the data does not have that format.
std::optional<std::u16string> rtf(const QMimeData& data);
std::optional<std::u16string> html(const QMimeData& data);
std::optional<std::u16string> text(const QMimeData& data);

/// The MIME types of RTF.
inline constexpr const char* rtf_names[] = {"text/rtf", "application/rtf"};
inline constexpr const char* html_name = "text/html";

}  // namespace qel::qt::mime
