#pragma once

#include <string>
#include <system_error>

#include "System.h"

/// The temporary files of this process. None stays behind, whatever ends the process, except that
/// of one that is killed the next that writes to the folder removes them.
namespace qel::command::temporaries {

/// From here on, an interrupt or a request to terminate removes the temporary files before it ends
/// the process. Must be called before any thread is started.
void remove_on_interruption();

/// Creates a file that is to replace `target`, in its folder, and sets `path`. On failure it sets
/// `error`, and the path is empty.
system::File create(const std::string& target, std::string& path, std::error_code& error);
/// Renames the file to `target`. On failure, the file is still there.
std::error_code rename_to(const std::string& path, const std::string& target);
void remove(const std::string& path);

}  // namespace qel::command::temporaries
