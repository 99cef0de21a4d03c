#include "postgres.h"
/* All else of PostgreSQL comes behind it. */
#include "funcapi.h"
#include "miscadmin.h"
#include "utils/builtins.h"
#include "utils/memutils.h"
#include "utils/tuplestore.h"
#include "values.h"

enum { column_count = 12 };

/** What is released when the rows are there, or an error is raised. */
typedef struct rows {
  qel_runs* runs;
} rows;

static void put_row(ReturnSetInfo* results, const qel_run* run, int64 start) {
  text* const characters = cstring_to_text_with_len(run->text.data, (int)run->text.size);
  const Datum values[column_count] = {
      Int32GetDatum((int32)start),
      Int32GetDatum((int32)run->line_breaks),
      PointerGetDatum(qelpg_in_server_encoding(characters)),
      BoolGetDatum(run->bold != 0),
      BoolGetDatum(run->italic != 0),
      BoolGetDatum(run->underline != 0),
      BoolGetDatum(run->strike != 0),
      BoolGetDatum(run->superscript != 0),
      BoolGetDatum(run->subscript != 0),
      BoolGetDatum(run->small_caps != 0),
      Int32GetDatum(run->font),
      Int32GetDatum(run->color),
  };
  bool nulls[column_count] = {false};
  tuplestore_putvalues(results->setResult, results->setDesc, (Datum*)values, nulls);
}

static void put_rows(ReturnSetInfo* results, const qel_runs* runs) {
  MemoryContext row_context =
      AllocSetContextCreate(CurrentMemoryContext, "qel_segments", ALLOCSET_DEFAULT_SIZES);
  MemoryContext outer = MemoryContextSwitchTo(row_context);
  int64 start = 1;
  for (size_t i = 0; i < qel_runs_count(runs); ++i) {
    const qel_run* const run = qel_runs_at(runs, i);
    CHECK_FOR_INTERRUPTS();
    start += run->line_breaks;
    put_row(results, run, start);
    start += (int64)qel_sql_characters(run->text);
    MemoryContextReset(row_context);
  }
  MemoryContextSwitchTo(outer);
  MemoryContextDelete(row_context);
}

PG_FUNCTION_INFO_V1(qelpg_segments);

Datum qelpg_segments(PG_FUNCTION_ARGS) {
  qelpg_site* const site = qelpg_site_of(fcinfo, NULL);
  const qel_text markup = qelpg_characters(PG_GETARG_TEXT_PP(0));
  const qel_options* const options = qelpg_options(site, PG_GETARG_TEXT_PP(1));
  InitMaterializedSRF(fcinfo, 0);
  rows* const self = palloc0(sizeof(*self));
  PG_TRY();
  {
    qel_error error;
    if (qel_runs_of(markup, options, &self->runs, &error) != QEL_OK) qelpg_raise(&error);
    put_rows((ReturnSetInfo*)fcinfo->resultinfo, self->runs);
  }
  PG_FINALLY();
  { qel_runs_free(self->runs); }
  PG_END_TRY();
  PG_RETURN_NULL();
}
