#pragma once

#include <QString>
#include <vector>

#include "RecordStore.h"

namespace qel::forms {

/// Drafts in a folder of the user's, for as long as the file of records cannot take them. Each
/// window has one at the most.
class SpareDrafts {
 public:
  /// For the records in the file `database`. Nothing is kept where the folder's name is empty.
  SpareDrafts(QString folder, const QString& database);

  /// Keeps the draft in place of the one that was kept before. Raises a `std::runtime_error` where
  /// that is not possible.
  void keep(const Draft& draft);
  void drop();
  /// Moves the drafts that windows have left into the store. One that it does not take stays.
  void move_into(RecordStore& store);

 private:
  QString folder_;
  QString prefix_;  // of the names of the drafts of this database
  QString own_;
};

}  // namespace qel::forms
