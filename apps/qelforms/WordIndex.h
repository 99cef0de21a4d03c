#pragma once

#include <cstddef>
#include <string_view>
#include <vector>

#include "Heading.h"

namespace qel::forms {

class Database;

/// The full-text index of the records: the words of what a reader sees of them.
///
/// Triggers of the file note which records have changed, whichever program changed them; the index
/// catches up before it is asked. A file that is write-protected has its index in memory.
/// Without the SQL functions there is no index, and it finds nothing.
class WordIndex {
 public:
  explicit WordIndex(Database& database);

  /// Reads what has changed.
  void catch_up();
  /// The records with all of these words, in any order, the last one perhaps only begun; the best
  /// first, and no more than `most`. Finds nothing where the text has no words.
  std::vector<Heading> find(std::u16string_view text, std::size_t most);

 private:
  void catch_up_in_file();
  void catch_up_in_memory();

  Database& database_;
  std::int64_t seen_ = 0;  // the version of a write-protected file that the index has
};

}  // namespace qel::forms
