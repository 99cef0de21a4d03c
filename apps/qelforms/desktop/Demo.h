#pragma once

#include <QString>

#include "RecordStore.h"

namespace qel::forms {

class MainWindow;

/// Puts a few records into a store that has none.
void add_samples(RecordStore& store);

/// Plays a user in the window, which is shown: types a record with formatted text and saves it.
void play(MainWindow& window);

/// Writes a picture of the window to the file and, with "-dark" in its name, one in dark colours
/// beside it.
void take_pictures(MainWindow& window, const QString& file);

}  // namespace qel::forms
