#pragma once

#include <QString>
#include <functional>

namespace qel::forms {

/// What surrounds a window.
struct WindowOptions {
  QString settings;  ///< the file in which it remembers its look; empty to remember nothing
  QString drafts;    ///< the folder for drafts that the records' file cannot take; empty for none
  /// Opens another window on a file of records. Raises an error where that is not possible.
  std::function<void(const QString& path)> open = {};
};

}  // namespace qel::forms
