#pragma once

#include <QTreeWidget>
#include <cstdint>
#include <vector>

#include "RecordStore.h"

namespace qel::forms {

/// The records as a list, the one that was changed last on top.
class RecordList : public QTreeWidget {
 public:
  explicit RecordList(QWidget* parent = nullptr);

  /// Shows these; those that were selected stay so. Nobody is told.
  void show_headings(std::vector<Heading> headings);
  /// The numbers of the selected records, from top to bottom.
  std::vector<std::int64_t> selected() const;
  /// Selects the record and no other; none when it is not shown. Nobody is told.
  void select(std::int64_t id);
  /// The number of the record on top, 0 for none.
  std::int64_t first() const;
};

}  // namespace qel::forms
