#ifndef QEL_SQLITE_H
#define QEL_SQLITE_H

/** The functions in a program that links them, without an extension that is loaded. */

#ifdef __cplusplus
extern "C" {
#endif

struct sqlite3;

/** Adds all functions, the rows of `qel_segments` among them, to a connection. Returns a result
 * code of SQLite. */
int qel_sqlite_register(struct sqlite3* connection);

#ifdef __cplusplus
}
#endif

#endif
