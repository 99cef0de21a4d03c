#pragma once

#include <CLI/CLI.hpp>
#include <string>
#include <vector>

#include "Tables.h"

namespace qel::command {

/// The options of fonts and colours.
class TableOptions {
 public:
  /// Adds the options to `app`; they refer to this object.
  explicit TableOptions(CLI::App& app);
  TableOptions(const TableOptions&) = delete;
  TableOptions& operator=(const TableOptions&) = delete;

  /// The tables that the parsed options ask for. Raises a `UsageError` for a value that is not
  /// valid, and a `FileError` or a `TableError` for the file of the tables.
  Tables values() const;

 private:
  void read_file_into(Tables& tables) const;

  std::vector<std::string> fonts_;
  std::vector<std::string> colors_;
  float font_size_ = 0;
  std::string path_;
  CLI::Option* size_ = nullptr;
  CLI::Option* file_ = nullptr;
};

}  // namespace qel::command
