#pragma once

#include <windows.h>

#include <cstddef>
#include <string>
#include <string_view>
#include <system_error>

/// The console, which takes and gives UTF-16 whatever its code page is.
namespace qel::command::system {

bool is_console(HANDLE handle);

/// Reads up to `size` bytes; what is typed beyond them waits in `pending`. 0 at the end, which
/// Ctrl+Z at the beginning of a line is.
std::size_t read_console(HANDLE console, std::string& pending, char* bytes, std::size_t size);

/// The part of a character at the end waits in `pending` for the rest.
std::error_code write_console(HANDLE console, std::string& pending, std::string_view bytes);

}  // namespace qel::command::system
