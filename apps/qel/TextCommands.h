#pragma once

#include <CLI/CLI.hpp>
#include <cstdint>
#include <list>
#include <memory>
#include <string>
#include <vector>

#include "TableOptions.h"
#include "TextSource.h"
#include "TextTask.h"
#include "qel/model/QELCode.h"

namespace qel::command {

/// `qel text`: string functions, case, toggles and word wrap.
class TextCommands {
 public:
  /// Adds the verbs to `app`; they refer to this object.
  explicit TextCommands(CLI::App& app);
  TextCommands(const TextCommands&) = delete;
  TextCommands& operator=(const TextCommands&) = delete;

  bool is_asked_for() const { return app_.parsed(); }
  /// What the parsed arguments ask for. Raises a `UsageError` for arguments that are not valid.
  TextTask values(Way way) const;

 private:
  using Texts = std::vector<std::u16string>;

  /// The arguments of whichever verb is asked for.
  struct Arguments {
    std::string search;
    std::string replacement;
    std::string name;
    std::string ignored_words;
    std::string style;
    std::int64_t start = 1;
    std::int64_t length = -1;
    std::int64_t count = 0;
    float width = 0;
    float indent = 0;
    bool last = false;
    bool ignore_case = false;
    bool style_from_text = false;
    bool count_only = false;
    bool columns = false;
    std::shared_ptr<const Tables> tables;
    Way way = Way::lossless;
  };
  using Run = TaskResult (*)(const Arguments& given, const Texts& texts);

  static TaskResult find(const Arguments& given, const Texts& texts);
  static TaskResult stuff(const Arguments& given, const Texts& texts);
  static TaskResult change_case(const Arguments& given, const Texts& texts);
  static TaskResult toggle(const Arguments& given, const Texts& texts);
  static TaskResult compare(const Arguments& given, const Texts& texts);
  static TaskResult wrap(const Arguments& given, const Texts& texts);

  CLI::App& add_verb(const std::string& name, const std::string& meaning, Run run);
  void read_text(CLI::App& verb);

  void add_counting();
  void add_cutting();
  void add_joining();
  void add_styling();
  void add_wrapping();
  void add_span_options(CLI::App& verb);

  struct Verb {
    CLI::App* app;
    Run run;
  };

  CLI::App& app_;
  std::list<Verb> verbs_;
  std::unique_ptr<TableOptions> tables_;

  TextSource source_;
  std::string other_file_;
  std::string output_ = "-";
  Arguments given_;
};

}  // namespace qel::command
