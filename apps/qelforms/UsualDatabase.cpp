#include "UsualDatabase.h"

#include <cstdlib>
#include <filesystem>
#include <stdexcept>
#include <system_error>

namespace qel::forms {

std::string usual_database() {
  namespace fs = std::filesystem;
  const auto folder_in = [](const char* variable) {
    const char* const value = std::getenv(variable);
    return fs::path(value == nullptr ? "" : value);
  };
  fs::path data = folder_in("XDG_DATA_HOME");
  // A relative path there is to be ignored.
  if (!data.is_absolute()) data = folder_in("HOME") / ".local" / "share";
  const fs::path folder = data / "qelforms";
  std::error_code error;
  fs::create_directories(folder, error);
  if (error) {
    throw std::runtime_error("cannot create the folder " + folder.string() + ": " +
                             error.message());
  }
  return folder / "records.db";
}

}  // namespace qel::forms
