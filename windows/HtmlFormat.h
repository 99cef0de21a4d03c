#pragma once

#include <optional>
#include <string>
#include <string_view>

#include "qel/platform/DragData.h"

/// HTML as the clipboard and data objects hold it: in UTF-8, behind a header that says at which
/// bytes the page and the fragment that was copied begin and end.
namespace qel::windows {

/// A page with that fragment, behind its header.
std::string html_to_bytes(std::u16string_view fragment);

/// The page in such bytes, in which comments mark the fragment. Where the header is missing or does
/// not fit what follows, it is all from the first tag on.
std::u16string html_from_bytes(std::string_view bytes);

/// What the data says as HTML: its own, else what its RTF says; empty where it has neither.
std::optional<std::u16string> offered_html(platform::DragData& data);

}  // namespace qel::windows
