#pragma once

#include <string>
#include <string_view>
#include <system_error>

/// Names of files and texts on their way to Windows, which has them in UTF-16, and back.
namespace qel::command::system {

std::wstring to_wide(std::string_view text);
std::string to_narrow(std::wstring_view text);

/// What Windows would not take as it is written: a name that stands for a device, characters that
/// no name has, a dot or a blank that would be dropped at the end of a name. A path that begins
/// with "\\?\" or "\\.\" is left to the system.
std::error_code fault_of(const std::string& path);

/// The name in the spelling in which its length has no limit.
std::wstring native(const std::string& path);

/// The reason why the last call of the system failed, in the words of all systems where it has a
/// counterpart there.
std::error_code last_error();

}  // namespace qel::command::system
