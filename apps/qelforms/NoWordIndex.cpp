// Where the SQL functions are not built.

#include "WordIndex.h"

namespace qel::forms {

WordIndex::WordIndex(Database& database) : database_(database) {}

bool WordIndex::exists() const { return false; }

bool WordIndex::is_behind() const { return false; }

void WordIndex::catch_up(std::size_t /*most*/) {}

std::vector<Heading> WordIndex::find(const SearchWords& /*words*/, const Listing& /*listing*/,
                                     std::size_t /*most*/) {
  return {};
}

}  // namespace qel::forms
