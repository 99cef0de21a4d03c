#pragma once

#include <QString>

#include "RecordStore.h"

namespace qel::forms {

class MainWindow;

/// Puts a few records into a store that has none.
void add_samples(RecordStore& store);

/// Plays a user in the window, which is shown: types a record with formatted text and saves it.
/// Then writes a picture of the window to a file.
void play(MainWindow& window, const QString& picture);

}  // namespace qel::forms
