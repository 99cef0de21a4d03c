#pragma once

#include <CLI/CLI.hpp>
#include <string>

#include "TextTask.h"
#include "UsageError.h"

namespace qel::command {

/// The arguments that say which markup to work on.
class TextSource {
 public:
  /// Adds the arguments to `app`: a file, or a text in its place. They refer to this object. Must
  /// be called after the other positional arguments are added: the file is the last one.
  void add_to(CLI::App& app) {
    app.add_option("FILE", file_, "Markup to read; standard input when none is named, or for '-'")
        ->type_name("");
    app.add_option("-t,--text", text_, "Markup in place of a file")->type_name("TEXT");
  }

  /// Puts into `task` what `app` was given. Raises a `UsageError` if that is both a file and a
  /// text.
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
