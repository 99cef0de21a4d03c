#include <stdlib.h>
#include <string.h>

#include "values.h"

SQLITE_EXTENSION_INIT3

/* The columns of qel_segments, in the order in which they are declared. */
enum {
  start_column,
  line_breaks_column,
  text_column,
  bold_column,
  italic_column,
  underline_column,
  strike_column,
  superscript_column,
  subscript_column,
  small_caps_column,
  font_column,
  color_column,
  markup_column, /* the first argument */
  options_column
};

static const char declaration[] =
    "CREATE TABLE qel_segments(start INTEGER, line_breaks INTEGER, text TEXT, bold INTEGER,"
    " italic INTEGER, underline INTEGER, strike INTEGER, superscript INTEGER, subscript INTEGER,"
    " small_caps INTEGER, font INTEGER, color INTEGER, markup HIDDEN, options HIDDEN)";

typedef struct cursor {
  sqlite3_vtab_cursor base;
  qel_runs* runs;
  size_t at;
  int64_t start; /* of the text, line breaks not counted */
} cursor;

static int connect(sqlite3* connection, void* data, int count, const char* const* arguments,
                   sqlite3_vtab** table, char** message) {
  (void)data, (void)count, (void)arguments, (void)message;
  const int result = sqlite3_declare_vtab(connection, declaration);
  if (result != SQLITE_OK) return result;
  *table = calloc(1, sizeof(**table));
  if (*table == NULL) return SQLITE_NOMEM;
  return sqlite3_vtab_config(connection, SQLITE_VTAB_INNOCUOUS);
}

static int disconnect(sqlite3_vtab* table) {
  free(table);
  return SQLITE_OK;
}

/** Asks for the arguments' values; bit 0 of the plan stands for the markup, bit 1 for options. */
static int best_index(sqlite3_vtab* table, sqlite3_index_info* info) {
  (void)table;
  int places[2] = {-1, -1};
  for (int i = 0; i < info->nConstraint; ++i) {
    const int argument = info->aConstraint[i].iColumn - markup_column;
    if (argument < 0 || info->aConstraint[i].op != SQLITE_INDEX_CONSTRAINT_EQ) continue;
    if (!info->aConstraint[i].usable) return SQLITE_CONSTRAINT;
    places[argument] = i;
  }
  int taken = 0;
  for (int argument = 0; argument < 2; ++argument) {
    if (places[argument] < 0) continue;
    info->aConstraintUsage[places[argument]].argvIndex = ++taken;
    info->aConstraintUsage[places[argument]].omit = 1;
    info->idxNum |= 1 << argument;
  }
  const double few = 10;
  info->estimatedCost = few;
  info->estimatedRows = (sqlite3_int64)few;
  return SQLITE_OK;
}

static int open_cursor(sqlite3_vtab* table, sqlite3_vtab_cursor** opened) {
  (void)table;
  cursor* const made = calloc(1, sizeof(*made));
  if (made == NULL) return SQLITE_NOMEM;
  *opened = &made->base;
  return SQLITE_OK;
}

static void clear(cursor* self) {
  qel_runs_free(self->runs);
  self->runs = NULL;
  self->at = 0;
  self->start = 1;
}

static int close_cursor(sqlite3_vtab_cursor* base) {
  cursor* const self = (cursor*)base;
  clear(self);
  free(self);
  return SQLITE_OK;
}

static const qel_run* run_of(const cursor* self) { return qel_runs_at(self->runs, self->at); }

static int at_end(sqlite3_vtab_cursor* base) {
  const cursor* const self = (cursor*)base;
  return self->runs == NULL || self->at >= qel_runs_count(self->runs);
}

/** Where the text of the next run starts, behind its line breaks. */
static void count_breaks(cursor* self) {
  if (!at_end(&self->base)) self->start += run_of(self)->line_breaks;
}

static int next(sqlite3_vtab_cursor* base) {
  cursor* const self = (cursor*)base;
  self->start += (int64_t)qel_sql_characters(run_of(self)->text);
  ++self->at;
  count_breaks(self);
  return SQLITE_OK;
}

static int fail(cursor* self, const qel_error* error) {
  if (error->status == QEL_NO_MEMORY) return SQLITE_NOMEM;
  sqlite3_free(self->base.pVtab->zErrMsg);
  self->base.pVtab->zErrMsg = sqlite3_mprintf("%s", error->message);
  return SQLITE_ERROR;
}

static qel_status read_runs(cursor* self, qel_text markup, qel_text json, qel_error* error) {
  qel_options* options = NULL;
  qel_status status = qel_sql_options_new(NULL, json, &options, error);
  if (status == QEL_OK) status = qel_runs_of(markup, options, &self->runs, error);
  qel_options_free(options);
  return status;
}

static int filter(sqlite3_vtab_cursor* base, int plan, const char* name, int count,
                  sqlite3_value** values) {
  (void)name;
  cursor* const self = (cursor*)base;
  qel_text texts[2] = {{NULL, 0}, {NULL, 0}};
  char* copies[2] = {NULL, NULL};
  qel_error error = {QEL_OK, ""};
  clear(self);
  if ((plan & 1) == 0) return SQLITE_OK;
  for (int i = 0; i < count; ++i) {
    if (sqlite3_value_type(values[i]) == SQLITE_NULL) return SQLITE_OK;
  }
  for (int i = 0; i < count; ++i) {
    if (qel_sqlite_text(values[i], &texts[i], &copies[i]) != SQLITE_OK)
      error.status = QEL_NO_MEMORY;
  }
  if (error.status == QEL_OK) read_runs(self, texts[0], texts[1], &error);
  sqlite3_free(copies[0]);
  sqlite3_free(copies[1]);
  if (error.status != QEL_OK) return fail(self, &error);
  count_breaks(self);
  return SQLITE_OK;
}

static int format_of(const qel_run* run, int column) {
  const int formats[] = {run->bold,       run->italic,      run->underline,
                         run->strike,     run->superscript, run->subscript,
                         run->small_caps, run->font,        run->color};
  return formats[column - bold_column];
}

static int column(sqlite3_vtab_cursor* base, sqlite3_context* context, int number) {
  const cursor* const self = (cursor*)base;
  const qel_run* const run = run_of(self);
  if (number == start_column) {
    sqlite3_result_int64(context, self->start);
  } else if (number == line_breaks_column) {
    sqlite3_result_int64(context, run->line_breaks);
  } else if (number == text_column) {
    const char* const text = run->text.data == NULL ? "" : run->text.data;
    sqlite3_result_text64(context, text, run->text.size, SQLITE_TRANSIENT, SQLITE_UTF8);
  } else if (number < markup_column) {
    sqlite3_result_int(context, format_of(run, number));
  }
  return SQLITE_OK;
}

static int row_number(sqlite3_vtab_cursor* base, sqlite3_int64* number) {
  *number = (sqlite3_int64)((cursor*)base)->at + 1;
  return SQLITE_OK;
}

/* Without a function that creates tables it is there in every schema, and only called. */
static const sqlite3_module module = {.xConnect = connect,
                                      .xBestIndex = best_index,
                                      .xDisconnect = disconnect,
                                      .xOpen = open_cursor,
                                      .xClose = close_cursor,
                                      .xFilter = filter,
                                      .xNext = next,
                                      .xEof = at_end,
                                      .xColumn = column,
                                      .xRowid = row_number};

int qel_sqlite_register_segments(sqlite3* connection) {
  return sqlite3_create_module_v2(connection, "qel_segments", &module, NULL, NULL);
}
