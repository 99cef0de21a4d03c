#pragma once

#include <functional>
#include <string>

namespace qel::forms {

/// What the window is to show.
struct WindowRequest {
  std::string database;      ///< its file; the user's own when empty
  std::string demo_picture;  ///< where to write a picture of an edit that needs no user
};

/// Opens the window, and returns the exit status when it was closed.
using WindowOpener = std::function<int(const WindowRequest&)>;

/// Does what the arguments ask for, and returns the exit status: the verbs without any window,
/// anything else with `open_window`, where there is one. Raises a `UsageError` for arguments that
/// do not fit, a `FileError` or an `Error` for what went wrong.
int run_verb(int argc, const char* const* argv, const WindowOpener& open_window = {});

}  // namespace qel::forms
