#pragma once

#include "Verbs.h"

namespace qel::forms {

/// Opens the window of the records, and returns the exit status when it is closed.
int run_window(const WindowRequest& request);

}  // namespace qel::forms
