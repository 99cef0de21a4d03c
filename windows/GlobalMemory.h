#pragma once

#include <windows.h>

#include <string>
#include <string_view>

/// Text, RTF and HTML as the blocks of memory in which the clipboard and data objects hold them.
namespace qel::windows {

/// The system's number for the clipboard format of RTF, which all programs share.
UINT rtf_clipboard_format();
/// The same for HTML.
UINT html_clipboard_format();

/// A new block with `value` in that format: CF_UNICODETEXT, CF_TEXT, RTF or a fragment of
/// HTML. The caller frees it. Null when memory runs out.
HGLOBAL block_of(std::u16string_view value, UINT clipboard_format);

/// The content of a block in that format, of HTML the page. It ends at the first NUL, or where the
/// block does.
std::u16string read_block(HGLOBAL block, UINT clipboard_format);

}  // namespace qel::windows
