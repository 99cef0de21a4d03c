#pragma once

#include <string>
#include <string_view>

namespace qel::command {

/// The text of a file: UTF-16 after its byte order mark, else UTF-8, in which each invalid byte is
/// read in code page 1252. A byte order mark is dropped. The bytes are freed.
std::u16string decode_text(std::string&& bytes);

/// Whether the bytes of a file are an RTF document.
bool is_rtf(std::string_view bytes);

/// The RTF of such a file. The bytes are freed.
std::u16string decode_rtf(std::string&& bytes);

}  // namespace qel::command
