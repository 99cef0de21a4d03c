#pragma once

#include "RecordStore.h"
#include "Tables.h"

namespace qel::forms {

/// The fonts and colours of the store's form, or the defaults if none were saved.
command::Tables load_tables(const RecordStore& store);
/// Saves them as their record texts.
void save_tables(RecordStore& store, const command::Tables& tables);

}  // namespace qel::forms
