#pragma once

#include <CLI/CLI.hpp>
#include <optional>
#include <string>
#include <vector>

#include "Batch.h"
#include "Records.h"
#include "SwitchOptions.h"
#include "TableOptions.h"
#include "qel/model/QELCode.h"

namespace qel::command {

/// What `qel convert` is to do.
struct Conversions {
  std::vector<InputPath> files;       ///< "-" is standard input
  std::string output = "-";           ///< where to write the one file, unless there is a folder
  std::optional<std::string> folder;  ///< where to write each file under its own name
  BatchOptions options;
  std::optional<RecordOptions> records;  ///< fields of the one file's records, and not the file
};

/// Does it. Returns whether all went well; raises a `UsageError` or a `FileError`.
bool run(const Conversions& conversions);

/// `qel convert`: files to other formats.
class ConvertCommand {
 public:
  /// Adds the options to `app`; they refer to this object.
  explicit ConvertCommand(CLI::App& app);
  ConvertCommand(const ConvertCommand&) = delete;
  ConvertCommand& operator=(const ConvertCommand&) = delete;

  bool is_asked_for() const { return app_.parsed(); }
  /// What the parsed arguments ask for. Raises a `UsageError` for arguments that are not valid, a
  /// `FileError` for a list, a folder or a file of tables that cannot be read, and a `TableError`.
  Conversions values(Way way) const;

 private:
  void add_files();
  void add_formats();
  void add_contents();
  void add_outputs();
  void add_records();

  std::vector<std::string> names() const;
  std::vector<InputPath> files() const;
  convert::Options conversion(Way way) const;
  void check_fit(const convert::Options& options) const;
  bool has_records() const { return json_->count() > 0 || csv_->count() > 0; }
  RecordOptions records(const BatchOptions& options) const;

  CLI::App& app_;
  std::vector<std::string> files_;
  std::string list_path_;
  bool is_recursive_ = false;
  std::optional<std::string> from_;
  std::optional<std::string> to_;
  bool normalizes_ = false;
  convert::HtmlOptions html_;
  richtext::RtfExtras extras_;
  std::string report_;
  std::string output_path_;
  std::string folder_path_;
  bool skips_newer_ = false;
  int jobs_ = 0;
  std::vector<std::string> fields_;
  std::string on_error_ = "stop";
  std::vector<CLI::Option*> for_rtf_;   // what else of it is kept
  std::vector<CLI::Option*> for_html_;  // how it is written
  CLI::Option* normalize_ = nullptr;
  CLI::Option* line_list_ = nullptr;
  CLI::Option* zero_list_ = nullptr;
  CLI::Option* output_ = nullptr;
  CLI::Option* folder_ = nullptr;
  CLI::Option* skip_ = nullptr;
  CLI::Option* reports_ = nullptr;
  CLI::Option* json_ = nullptr;
  CLI::Option* csv_ = nullptr;
  SwitchOptions switches_;
  TableOptions tables_;
};

}  // namespace qel::command
