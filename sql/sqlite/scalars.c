#include <stdlib.h>
#include <string.h>

#include "qel_sqlite.h"
#include "values.h"

SQLITE_EXTENSION_INIT3

/** A function on a connection, with the options of calls that bring none. */
typedef struct scalar {
  const qel_sql_function* function;
  qel_options* defaults;
} scalar;

int qel_sqlite_text(sqlite3_value* value, qel_text* text, char** copy) {
  text->data = (const char*)sqlite3_value_text(value);
  text->size = (size_t)sqlite3_value_bytes(value);
  if (text->size == 0) return SQLITE_OK;
  if (text->data == NULL) return SQLITE_NOMEM;
  if (memchr(text->data, '\0', text->size) == NULL) return SQLITE_OK;
  *copy = sqlite3_malloc64(text->size);
  if (*copy == NULL) return SQLITE_NOMEM;
  size_t size = 0;
  for (size_t i = 0; i < text->size; ++i) {
    if (text->data[i] != '\0') (*copy)[size++] = text->data[i];
  }
  text->data = *copy;
  text->size = size;
  return SQLITE_OK;
}

static qel_text bytes_of(sqlite3_value* value) {
  const qel_text bytes = {sqlite3_value_blob(value), (size_t)sqlite3_value_bytes(value)};
  return bytes;
}

static void report(sqlite3_context* context, const qel_error* error) {
  if (error->status == QEL_NO_MEMORY) {
    sqlite3_result_error_nomem(context);
  } else {
    sqlite3_result_error(context, error->message, -1);
  }
}

static void release_text(void* data) {
  const qel_string text = {data, 0};
  qel_string_free(text);
}

static void release_options(void* options) { qel_options_free(options); }

static void give(sqlite3_context* context, const qel_sql_function* function,
                 const qel_sql_result* result) {
  if (function->gives_number) {
    sqlite3_result_int64(context, result->number);
  } else if (result->text.data == NULL) {
    sqlite3_result_text(context, "", 0, SQLITE_STATIC);
  } else {
    sqlite3_result_text64(context, result->text.data, result->text.size, release_text, SQLITE_UTF8);
  }
}

static int is_null_among(int count, sqlite3_value** values) {
  for (int i = 0; i < count; ++i) {
    if (sqlite3_value_type(values[i]) == SQLITE_NULL) return 1;
  }
  return 0;
}

/** What a call has beside its values: what is released when it ends. */
typedef struct frame {
  qel_sql_call call;
  char* copies[3]; /* of the text, of the other text, of the options */
  qel_options* options;
} frame;

static int read_value(frame* self, char argument, sqlite3_value* value) {
  qel_sql_call* const call = &self->call;
  switch (argument) {
    case 's':
      call->start = sqlite3_value_int64(value);
      return SQLITE_OK;
    case 'c':
      call->count = sqlite3_value_int64(value);
      return SQLITE_OK;
    case 'o':
      return qel_sqlite_text(value, &call->other, &self->copies[1]);
    case 'r':
      call->is_characters = sqlite3_value_type(value) != SQLITE_BLOB;
      if (call->is_characters) break;
      call->text = bytes_of(value);
      return SQLITE_OK;
  }
  return qel_sqlite_text(value, &call->text, &self->copies[0]);
}

/** Makes the options of a call that are not kept from another. */
static qel_status make_options(frame* self, sqlite3_value* json, qel_error* error) {
  qel_text text = {NULL, 0};
  if (json != NULL && qel_sqlite_text(json, &text, &self->copies[2]) != SQLITE_OK) {
    return error->status = QEL_NO_MEMORY;
  }
  const qel_status status = qel_sql_options_new(self->call.function, text, &self->options, error);
  self->call.options = self->options;
  return status;
}

static void release_frame(frame* self) {
  for (int i = 0; i < 3; ++i) sqlite3_free(self->copies[i]);
  qel_options_free(self->options);
}

static void run(sqlite3_context* context, int count, sqlite3_value** values) {
  const scalar* const self = sqlite3_user_data(context);
  const int own = (int)strlen(self->function->arguments);
  const int has_options = count > own;
  frame call = {.call.function = self->function};
  qel_sql_result result = {{NULL, 0}, 0};
  qel_error error = {QEL_OK, ""};
  if (is_null_among(count, values)) return;
  for (int i = 0; i < own && error.status == QEL_OK; ++i) {
    const int read = read_value(&call, self->function->arguments[i], values[i]);
    if (read != SQLITE_OK) error.status = QEL_NO_MEMORY;
  }
  call.call.options = has_options ? sqlite3_get_auxdata(context, own) : self->defaults;
  if (error.status == QEL_OK && call.call.options == NULL) {
    make_options(&call, has_options ? values[own] : NULL, &error);
  }
  if (error.status == QEL_OK) qel_sql_run(&call.call, &result, &error);
  if (error.status == QEL_OK) {
    give(context, self->function, &result);
  } else {
    report(context, &error);
  }
  if (has_options && call.options != NULL) {
    // SQLite keeps them for the next row where they are the same in all rows.
    sqlite3_set_auxdata(context, own, call.options, release_options);
    call.options = NULL;
  }
  release_frame(&call);
}

static void release_scalar(void* data) {
  scalar* const self = data;
  qel_options_free(self->defaults);
  free(self);
}

static int add(sqlite3* connection, const qel_sql_function* function, int arguments) {
  const int flags = SQLITE_UTF8 | SQLITE_DETERMINISTIC | SQLITE_INNOCUOUS;
  const qel_text no_json = {NULL, 0};
  qel_error error;
  scalar* const self = malloc(sizeof(*self));
  if (self == NULL) return SQLITE_NOMEM;
  self->function = function;
  // A call that finds none tries again, and tells why there are none.
  qel_sql_options_new(function, no_json, &self->defaults, &error);
  return sqlite3_create_function_v2(connection, function->name, arguments, flags, self, run, NULL,
                                    NULL, release_scalar);
}

int qel_sqlite_register(sqlite3* connection) {
  int result = qel_sqlite_register_segments(connection);
  for (const qel_sql_function* function = qel_sql_functions;
       function->name != NULL && result == SQLITE_OK; ++function) {
    const int arguments = (int)strlen(function->arguments);
    result = add(connection, function, arguments);
    if (result == SQLITE_OK) result = add(connection, function, arguments + 1);
  }
  return result;
}
