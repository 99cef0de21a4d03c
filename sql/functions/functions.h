#ifndef QEL_SQL_FUNCTIONS_H
#define QEL_SQL_FUNCTIONS_H

/**
 * The functions that every engine offers under the same names: what they take, and what they call
 * of the C interface. An engine passes values in and results out, and knows nothing else of them.
 *
 * Positions count from 1, as in SQL; all else is as in the C interface.
 */

#include <stdint.h>

#include "qel/capi.h"

struct qel_sql_function;

/** A call, with those values that the `arguments` of its function name. */
typedef struct qel_sql_call {
  const struct qel_sql_function* function;
  const qel_options* options; /**< made for the function by `qel_sql_options_new` */
  qel_text text;
  qel_text other;
  int64_t start; /**< from 1 */
  int64_t count;
  int is_characters; /**< whether RTF comes as characters in UTF-8, not as bytes */
} qel_sql_call;

typedef struct qel_sql_result {
  qel_string text; /**< the caller's to release */
  int64_t number;
} qel_sql_result;

typedef struct qel_sql_function {
  const char* name; /**< null behind the last function */
  /**
   * A letter for each: `t` the text, `r` the text as RTF, which may also be bytes, `o` the other
   * text, `s` the start, `c` the count. Each function takes options as one more.
   */
  const char* arguments;
  int gives_number;
  qel_status (*work)(const qel_sql_call* call, qel_sql_result* result, qel_error* error);
  const char* from;   /**< the formats of a conversion, else null */
  const char* to;     /**< the same */
  const char* change; /**< of case, else null */
} qel_sql_function;

extern const qel_sql_function qel_sql_functions[];

/** The function of a name; null where there is none. */
const qel_sql_function* qel_sql_function_named(const char* name);

/** Options for calls of a function: its own, then those of a JSON object, which may be empty. The
 * rows of segments are null as a function. */
qel_status qel_sql_options_new(const qel_sql_function* function, qel_text json,
                               qel_options** options, qel_error* error);

qel_status qel_sql_run(const qel_sql_call* call, qel_sql_result* result, qel_error* error);

/**
 * Pushes a part of what is left of a text, and takes it off. `is_characters` as in `qel_sql_call`:
 * RTF has no characters but those of ASCII, so all others become control words.
 */
qel_status qel_sql_push(qel_converter* converter, qel_text* rest, int is_characters,
                        qel_error* error);

/** How many characters a text in UTF-8 has. */
size_t qel_sql_characters(qel_text text);

/** A text up to its zero. */
qel_text qel_sql_text(const char* characters);

#endif
