#pragma once

#include <cstddef>
#include <vector>

#include "RecordStore.h"
#include "SearchWords.h"

namespace qel::forms {

/// The full-text index of the records: the words of what a reader sees of them.
///
/// Triggers of the file note which records have changed, whichever program changed them; the index
/// does not answer for those until it has caught up. Without the SQL functions there is no index:
/// it is never behind, and finds nothing.
class WordIndex {
 public:
  explicit WordIndex(Database& database);

  /// Whether there is an index in the file that knows some of the records.
  bool exists() const;
  /// Whether there is something to catch up with.
  bool is_behind() const;
  /// Reads what has changed, of no more records than `most`, the newest first.
  void catch_up(std::size_t most);
  /// The records of the listing with all of the words, no more than `most`: the best first where
  /// they are some thousand at the most, else those with the words in their titles first, and the
  /// newest before others.
  std::vector<Heading> find(const SearchWords& words, const Listing& listing, std::size_t most);

 private:
  [[maybe_unused]] Database& database_;  // by builds without an index
};

}  // namespace qel::forms
