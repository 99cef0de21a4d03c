#pragma once

#include <string>

namespace qel::forms {

/// The file of the user's own records, which the window and the verbs use when none is named:
/// qelforms/records.db where the user's data are kept, by $XDG_DATA_HOME or in ~/.local/share.
/// Creates the folder. Raises a `std::runtime_error` where that fails.
std::string usual_database();

}  // namespace qel::forms
