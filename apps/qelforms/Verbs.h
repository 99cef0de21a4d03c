#pragma once

namespace qel::forms {

/// Does what the arguments ask for, without any window, and returns the exit status. Raises a
/// `UsageError` for arguments that do not fit, a `FileError` or an `Error` for what went wrong.
int run_verb(int argc, const char* const* argv);

}  // namespace qel::forms
