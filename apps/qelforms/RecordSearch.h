#pragma once

#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

#include "Headings.h"
#include "RecordStore.h"
#include "WordIndex.h"

namespace qel::forms {

/// Searches records by the index of words and, where that does not know them, by their texts.
class RecordSearch {
 public:
  explicit RecordSearch(Database& database) : database_(database), index_(database) {}

  bool is_behind() const { return index_.is_behind(); }
  void catch_up(std::size_t most) { index_.catch_up(most); }
  /// What `RecordStore::find` finds, without tags. About as many characters as `reach` are
  /// looked through for text as it is written and, where there is an index, a quarter of them for
  /// words that it does not know.
  std::vector<Heading> find(std::u16string_view text, const Listing& listing, std::size_t most,
                            std::size_t reach);

 private:
  std::vector<Heading> read(const SearchWords& words, const Listing& listing, std::size_t most,
                            std::size_t reach);
  std::vector<Heading> find_as_written(std::u16string_view text, const Listing& listing,
                                       std::size_t most, std::size_t reach) const;

  Database& database_;
  WordIndex index_;
};

}  // namespace qel::forms
