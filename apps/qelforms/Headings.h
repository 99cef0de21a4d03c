#pragma once

#include <string>
#include <vector>

#include "RecordStore.h"

namespace qel::forms {

/// What lists show of the records, in a table of the file, so that a list of many need not read
/// their texts. Triggers of the file note which records have changed, whichever program changed
/// them. Those are read when a list is made, until the table catches up.
class Headings {
 public:
  explicit Headings(Database& database) : database_(database) {}

  /// Whether there is something to catch up with.
  bool is_behind() const;
  /// Reads what has changed into the table.
  void catch_up();
  /// What the listing tells, in its order.
  std::vector<Heading> list(const Listing& listing) const;
  /// Fills in the tags.
  void add_tags(std::vector<Heading>& headings) const;

 private:
  void add_all_tags(std::vector<Heading>& headings) const;

  Database& database_;
};

/// A condition of SQL on `records`, which reads the key of the listing's tag as the value 1: that
/// the record whose number is `id` is in the listing.
std::string is_listed(const Listing& listing, const std::string& id);

/// The heading of a row of a query that begins with the record's number, the times when it was
/// changed, created and moved to the trash.
Heading heading_of(const Statement& row, ShownTitle title);

/// What tags are compared by.
std::u16string tag_key(std::u16string_view tag);

}  // namespace qel::forms
