#pragma once

#include <windows.h>

#include <string>
#include <string_view>

/// Text and RTF as blocks of memory, in which the clipboard and data objects pass them on.
namespace qel::windows {

/// The system's number for RTF, by which other programs know it.
UINT rtf_clipboard_format();

/// A new block with `value` in that form: CF_UNICODETEXT, CF_TEXT or RTF. The caller frees it.
/// Null when there is no memory.
HGLOBAL block_of(std::u16string_view value, UINT clipboard_format);

/// What lies in a block of that form. It ends at its first NUL, or where the block does.
std::u16string read_block(HGLOBAL block, UINT clipboard_format);

}  // namespace qel::windows
