#include "postgres.h"
/* All else of PostgreSQL comes behind it. */
#include <string.h>

#include "lib/stringinfo.h"
#include "miscadmin.h"
#include "utils/memutils.h"
#include "values.h"

PG_MODULE_MAGIC;

/** Beyond this, a conversion is done in pieces: neither the library nor the server then has more of
 * the result than there is of it. */
enum { largest_whole = 262144 };

/** What is released when a conversion in pieces ends, in whichever way. */
typedef struct pieces {
  qel_converter* converter;
  qel_string piece;
} pieces;

static void release_piece(pieces* self) {
  qel_string_free(self->piece);
  memset(&self->piece, 0, sizeof(self->piece));
}

static void take(pieces* self, StringInfo output) {
  qel_error error;
  if (qel_converter_take(self->converter, &self->piece, &error) != QEL_OK) qelpg_raise(&error);
  if (self->piece.size > MaxAllocSize) {
    ereport(ERROR, (errcode(ERRCODE_OUT_OF_MEMORY), errmsg("the result is too large")));
  }
  if (self->piece.size > 0) {
    appendBinaryStringInfo(output, self->piece.data, (int)self->piece.size);
  }
  release_piece(self);
}

static void convert_pieces(pieces* self, const qel_sql_call* call, StringInfo output) {
  qel_text rest = call->text;
  qel_error error;
  qel_status status = qel_converter_new(call->options, &self->converter, &error);
  while (status == QEL_OK && rest.size > 0) {
    CHECK_FOR_INTERRUPTS();
    status = qel_sql_push(self->converter, &rest, call->is_characters, &error);
    if (status == QEL_OK) take(self, output);
  }
  if (status == QEL_OK) status = qel_converter_finish(self->converter, NULL, &error);
  if (status != QEL_OK) qelpg_raise(&error);
  take(self, output);
}

static text* convert_in_pieces(const qel_sql_call* call) {
  StringInfoData output;
  pieces* const self = palloc0(sizeof(*self));
  initStringInfo(&output);
  appendStringInfoSpaces(&output, VARHDRSZ);
  PG_TRY();
  { convert_pieces(self, call, &output); }
  PG_FINALLY();
  {
    release_piece(self);
    qel_converter_free(self->converter);
  }
  PG_END_TRY();
  pfree(self);
  text* const value = (text*)output.data;
  SET_VARSIZE(value, output.len);
  return value;
}

static void read_arguments(qel_sql_call* call, FunctionCallInfo fcinfo, bool is_bytes) {
  const char* const arguments = call->function->arguments;
  for (int i = 0; arguments[i] != '\0'; ++i) {
    switch (arguments[i]) {
      case 's':
        call->start = PG_GETARG_INT32(i);
        break;
      case 'c':
        call->count = PG_GETARG_INT32(i);
        break;
      case 'o':
        call->other = qelpg_characters(PG_GETARG_TEXT_PP(i));
        break;
      default:
        call->is_characters = arguments[i] == 'r' && !is_bytes;
        call->text =
            is_bytes ? qelpg_bytes(PG_GETARG_BYTEA_PP(i)) : qelpg_characters(PG_GETARG_TEXT_PP(i));
    }
  }
}

static Datum run(FunctionCallInfo fcinfo, const char* name, bool is_bytes) {
  qelpg_site* const site = qelpg_site_of(fcinfo, name);
  qel_sql_call call = {.function = site->function};
  const int own = (int)strlen(site->function->arguments);
  call.options = qelpg_options(site, PG_GETARG_TEXT_PP(own));
  read_arguments(&call, fcinfo, is_bytes);
  if (call.function->to != NULL && call.text.size > largest_whole) {
    PG_RETURN_TEXT_P(qelpg_in_server_encoding(convert_in_pieces(&call)));
  }
  qel_sql_result result = {{NULL, 0}, 0};
  qel_error error;
  if (qel_sql_run(&call, &result, &error) != QEL_OK) qelpg_raise(&error);
  if (call.function->gives_number) PG_RETURN_INT32((int32)result.number);
  PG_RETURN_TEXT_P(qelpg_in_server_encoding(qelpg_take(result.text)));
}

#define QELPG_FUNCTION(symbol, name, is_bytes) \
  PG_FUNCTION_INFO_V1(symbol);                 \
  Datum symbol(PG_FUNCTION_ARGS) { return run(fcinfo, name, is_bytes); }

QELPG_FUNCTION(qelpg_to_rtf, "qel_to_rtf", false)
QELPG_FUNCTION(qelpg_from_rtf, "qel_from_rtf", false)
QELPG_FUNCTION(qelpg_from_rtf_bytes, "qel_from_rtf", true)
QELPG_FUNCTION(qelpg_to_html, "qel_to_html", false)
QELPG_FUNCTION(qelpg_from_html, "qel_from_html", false)
QELPG_FUNCTION(qelpg_plain, "qel_plain", false)
QELPG_FUNCTION(qelpg_length, "qel_length", false)
QELPG_FUNCTION(qelpg_find, "qel_find", false)
QELPG_FUNCTION(qelpg_left, "qel_left", false)
QELPG_FUNCTION(qelpg_right, "qel_right", false)
QELPG_FUNCTION(qelpg_mid, "qel_mid", false)
QELPG_FUNCTION(qelpg_stuff, "qel_stuff", false)
QELPG_FUNCTION(qelpg_upper, "qel_upper", false)
QELPG_FUNCTION(qelpg_lower, "qel_lower", false)
QELPG_FUNCTION(qelpg_title, "qel_title", false)
QELPG_FUNCTION(qelpg_toggle, "qel_toggle", false)
QELPG_FUNCTION(qelpg_normalize, "qel_normalize", false)
