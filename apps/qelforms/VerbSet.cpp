#include "VerbSet.h"

#include <limits>

#include "Program.h"
#include "UsualDatabase.h"

namespace qel::forms {

CLI::App& VerbSet::add(const std::string& name, const std::string& meaning, Work work) {
  CLI::App& verb = *app_.add_subcommand(name, meaning);
  verb.add_option("-d,--database", database_, "File that holds the records; else the user's own")
      ->type_name("FILE");
  verbs_.emplace_back(&verb, std::move(work));
  return verb;
}

CLI::Option* VerbSet::add_ids(CLI::App& verb, const std::string& meaning) {
  return verb.add_option("ID", ids_, meaning)->type_name("");
}

int VerbSet::run() const {
  for (const auto& [verb, work] : verbs_) {
    if (verb->parsed()) return work();
  }
  return command::success;
}

RecordStore VerbSet::open(bool creates) const {
  RecordStore::Options options;
  options.creates = creates || database_.empty();
  options.reach = std::numeric_limits<std::size_t>::max();
  return RecordStore(database_.empty() ? usual_database() : database_, options);
}

CLI::Option* add_repeated(CLI::App& verb, const std::string& name, std::vector<std::string>& values,
                          const std::string& meaning) {
  return verb.add_option(name, values, meaning)->type_size(1)->allow_extra_args(false);
}

}  // namespace qel::forms
