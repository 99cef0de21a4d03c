#pragma once

#include <functional>
#include <span>
#include <string>

#include "RecordStore.h"
#include "Tables.h"

namespace qel::forms {

/// What to open the window with.
struct WindowRequest {
  std::string database;      ///< the file; empty for a demo on a temporary one
  std::string demo_picture;  ///< where to write a picture of an edit that needs no user
};

/// What only a program with the window can do; empty functions where it is not built.
struct Desktop {
  /// Opens the window, and returns the exit status when it is closed.
  std::function<int(const WindowRequest&)> open_window;
  /// The records as a PDF document with this title, without a window or a display.
  std::function<std::string(std::span<const Record>, const command::Tables&, const std::u16string&)>
      make_pdf;
};

/// Does what the arguments ask for and returns the exit status. Verbs need no window; without a
/// verb, the window is opened if there is one. Raises a `UsageError` for arguments that are not
/// valid, and a `FileError` or another exception for what went wrong.
int run_verb(int argc, const char* const* argv, const Desktop& desktop = {});

}  // namespace qel::forms
