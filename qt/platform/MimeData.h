#pragma once

#include <memory>
#include <optional>
#include <string>
#include <string_view>

class QMimeData;

/// Text and RTF as they lie on the clipboard or are dragged. Breaks are a line feed there.
namespace qel::qt::mime {

std::unique_ptr<QMimeData> create(std::u16string_view text, std::u16string_view rtf);
bool has_rtf(const QMimeData& data);
/// Each gives nothing where the data has no such form.
std::optional<std::u16string> rtf(const QMimeData& data);
std::optional<std::u16string> text(const QMimeData& data);

/// Names of the forms of RTF.
inline constexpr const char* rtf_names[] = {"text/rtf", "application/rtf"};

}  // namespace qel::qt::mime
