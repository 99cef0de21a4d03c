#pragma once

#include <CLI/CLI.hpp>
#include <string>

#include "TextTask.h"
#include "UsageError.h"

namespace qel::command {

/// The arguments that say where the markup to work on comes from.
class TextSource {
 public:
  /// Adds them to `app`, which refer to this object then: a file, or a text in its place. To be
  /// called when the app has its other positional arguments: the file is the last.
  void add_to(CLI::App& app) {
    app.add_option("FILE", file_, "Markup to read; standard input when none is named, or for '-'")
        ->type_name("");
    app.add_option("-t,--text", text_, "Markup in place of a file")->type_name("TEXT");
  }

  /// What `app` was given. Raises a `UsageError` for both a file and a text.
  void fill(TextTask& task, const CLI::App& app) const {
    task.files = {file_};
    if (app.get_option("--text")->count() == 0) return;
    if (app.get_option("FILE")->count() > 0) {
      throw UsageError("--text and a file exclude each other");
    }
    task.text = text_;
  }

 private:
  std::string file_ = "-";
  std::string text_;
};

}  // namespace qel::command
