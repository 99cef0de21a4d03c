#pragma once

#include <QTreeWidget>
#include <cstdint>
#include <vector>

#include "RecordStore.h"

namespace qel::forms {

/// The records as a list, those that were searched with the words that were found.
class RecordList : public QTreeWidget {
 public:
  explicit RecordList(QWidget* parent = nullptr);

  /// Shows these records in this order; those that were selected stay selected. No signal is sent.
  void show_headings(const std::vector<Heading>& headings);
  /// The numbers of the selected records, from top to bottom.
  std::vector<std::int64_t> selected() const;
  /// Selects this record only, or none if it is not shown. No signal is sent.
  void select(std::int64_t id);
  /// The number of the record on top; 0 when there is none.
  std::int64_t first() const;
};

}  // namespace qel::forms
