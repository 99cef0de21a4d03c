/* What all of PostgreSQL begins with, postgres.h, comes before this. */
#ifndef QEL_PG_VALUES_H
#define QEL_PG_VALUES_H

#include "../functions/functions.h"
#include "fmgr.h"

/** What a call site keeps from row to row: its function and the options of the last call. */
typedef struct qelpg_site {
  const qel_sql_function* function;
  qel_options* options;
  text* json; /**< from which they were made */
  MemoryContextCallback release;
} qelpg_site;

/** The site of a call, made at its first row. The rows of segments have null as a name. */
qelpg_site* qelpg_site_of(FunctionCallInfo fcinfo, const char* name);

/** The options of a call, which are its last argument. They live until the next call. */
const qel_options* qelpg_options(qelpg_site* site, text* json);

/** The bytes of a value, without a copy. */
qel_text qelpg_bytes(const void* value);

/** The characters of a value in UTF-8: its own bytes where that is the server's encoding. */
qel_text qelpg_characters(text* value);

/** Raises the error of PostgreSQL for one of the library's. */
void qelpg_raise(const qel_error* error) pg_attribute_noreturn();

/** A text value of what the library made, which is released, also where an error is raised. */
text* qelpg_take(qel_string string);

/** A value in the server's encoding of one in UTF-8, which is released where they differ. */
text* qelpg_in_server_encoding(text* value);

#endif
