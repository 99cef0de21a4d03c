#pragma once

#include <functional>
#include <string>

namespace qel::forms {

/// What to open the window with.
struct WindowRequest {
  std::string database;      ///< the file; the user's own when empty
  std::string demo_picture;  ///< where to write a picture of an edit that needs no user
};

/// Opens the window, and returns the exit status when it is closed.
using WindowOpener = std::function<int(const WindowRequest&)>;

/// Does what the arguments ask for and returns the exit status. Verbs need no window; without a
/// verb, `open_window` is called if there is one. Raises a `UsageError` for arguments that are not
/// valid, and a `FileError` or another exception for what went wrong.
int run_verb(int argc, const char* const* argv, const WindowOpener& open_window = {});

}  // namespace qel::forms
