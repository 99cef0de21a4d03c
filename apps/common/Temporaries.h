#pragma once

#include <sys/types.h>

#include <string>

/// The temporary files of this process. None stays behind, whatever ends the process, except that
/// of one that is killed the next that writes to the folder removes them.
namespace qel::command::temporaries {

/// From here on, an interrupt, a request to terminate or a hang-up removes the temporary files and
/// ends the process with 128 plus the signal's number. Must be called before any thread is started.
void remove_on_signals();

/// Creates a file in `folder` and opens it for writing; returns its descriptor and sets `path`. On
/// failure it returns -1, and errno says why.
int create(const std::string& folder, mode_t mode, std::string& path);
/// Renames the file to `target`. On failure it returns false, errno says why, and the file is still
/// there.
bool rename_to(const std::string& path, const std::string& target);
void remove(const std::string& path);

}  // namespace qel::command::temporaries
