#pragma once

#include <QString>
#include <QStringList>
#include <cstdint>
#include <vector>

#include "RecordStore.h"

class QWidget;

namespace qel::forms {

/// What became of files that were to be imported.
struct ImportResult {
  std::vector<std::int64_t> ids;  ///< of the new records
  QStringList errors;             ///< of the files that could not be imported
  int left_out = 0;               ///< files that were not read, as the user has cancelled
};

/// The files that can be imported among these and in these folders, in the order of their names. A
/// file that is named itself counts whatever its ending.
QStringList importable_files(const QStringList& paths);

/// Adds a record for each of the files. Shows the progress to the user, who can cancel: what was
/// imported until then stays.
ImportResult import_files(const QStringList& files, RecordStore& store, QWidget& window);

}  // namespace qel::forms
