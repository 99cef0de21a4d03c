#include <sqlite3ext.h>

#include "qel_sqlite.h"

SQLITE_EXTENSION_INIT1

/* SQLite looks for this name in a file named qel. */
int sqlite3_qel_init(sqlite3* connection, char** message, const sqlite3_api_routines* api);

int sqlite3_qel_init(sqlite3* connection, char** message, const sqlite3_api_routines* api) {
  (void)message;
  SQLITE_EXTENSION_INIT2(api)
  return qel_sqlite_register(connection);
}
