#ifndef QEL_SQLITE_VALUES_H
#define QEL_SQLITE_VALUES_H

#include <sqlite3ext.h>

#include "../functions/functions.h"

/** The text of a value that is not null, without NUL, which would end it for SQLite. `copy` is for
 * one that has some, and released by `sqlite3_free`. Returns a result code of SQLite. */
int qel_sqlite_text(sqlite3_value* value, qel_text* text, char** copy);

/** Adds the table-valued function `qel_segments`. Returns a result code of SQLite. */
int qel_sqlite_register_segments(sqlite3* connection);

#endif
