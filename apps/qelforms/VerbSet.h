#pragma once

#include <CLI/CLI.hpp>
#include <cstdint>
#include <functional>
#include <string>
#include <utility>
#include <vector>

#include "RecordStore.h"

namespace qel::forms {

struct Desktop;

/// The verbs of the command line, with what they share: the file of records, and their numbers.
class VerbSet {
 public:
  /// Returns the exit status.
  using Work = std::function<int()>;

  explicit VerbSet(CLI::App& app) : app_(app) {}
  VerbSet(const VerbSet&) = delete;
  VerbSet& operator=(const VerbSet&) = delete;

  /// Adds a verb. Its work is done by `run`, once the arguments are known.
  CLI::App& add(const std::string& name, const std::string& meaning, Work work);
  CLI::Option* add_ids(CLI::App& verb, const std::string& meaning);
  /// Does the work of the verb that was called.
  int run() const;

  const std::vector<std::int64_t>& ids() const { return ids_; }
  /// The file that was named, which has to exist unless the verb `creates` it, or the user's own.
  RecordStore open(bool creates = false) const;

 private:
  CLI::App& app_;
  std::vector<std::pair<CLI::App*, Work>> verbs_;
  std::string database_;
  std::vector<std::int64_t> ids_;
};

/// Adds an option that is given once for each value.
CLI::Option* add_repeated(CLI::App& verb, const std::string& name, std::vector<std::string>& values,
                          const std::string& meaning);

/// list, find, trash, show and export.
void add_reading_verbs(VerbSet& verbs, const Desktop& desktop);
/// add, edit, duplicate, tag, remove, restore and empty-trash.
void add_writing_verbs(VerbSet& verbs);

}  // namespace qel::forms
