#include "postgres.h"
/* All else of PostgreSQL comes behind it. */
#include <string.h>

#include "mb/pg_wchar.h"
#include "miscadmin.h"
#include "utils/builtins.h"
#include "utils/memutils.h"
#include "values.h"

/** Whether what came up ends the statement. Questions that it survives can wait. */
static int is_cancelled(void* data) {
  (void)data;
  return INTERRUPTS_PENDING_CONDITION() && (QueryCancelPending || ProcDiePending) &&
         INTERRUPTS_CAN_BE_PROCESSED();
}

static void release_site(void* data) {
  qelpg_site* const site = data;
  qel_options_free(site->options);
  site->options = NULL;
}

qelpg_site* qelpg_site_of(FunctionCallInfo fcinfo, const char* name) {
  FmgrInfo* const info = fcinfo->flinfo;
  if (info->fn_extra == NULL) {
    qelpg_site* const site = MemoryContextAllocZero(info->fn_mcxt, sizeof(*site));
    if (name != NULL) site->function = qel_sql_function_named(name);
    site->release.func = release_site;
    site->release.arg = site;
    MemoryContextRegisterResetCallback(info->fn_mcxt, &site->release);
    info->fn_extra = site;
  }
  return info->fn_extra;
}

static bool is_same(text* a, text* b) {
  return VARSIZE_ANY_EXHDR(a) == VARSIZE_ANY_EXHDR(b) &&
         memcmp(VARDATA_ANY(a), VARDATA_ANY(b), VARSIZE_ANY_EXHDR(a)) == 0;
}

const qel_options* qelpg_options(qelpg_site* site, text* json) {
  if (site->options != NULL && is_same(site->json, json)) return site->options;
  release_site(site);
  MemoryContext kept = GetMemoryChunkContext(site);
  text* const copy = MemoryContextAlloc(kept, VARSIZE_ANY(json));
  memcpy(copy, json, VARSIZE_ANY(json));
  if (site->json != NULL) pfree(site->json);
  site->json = copy;
  const qel_text characters = qelpg_characters(copy);
  qel_error error;
  if (qel_sql_options_new(site->function, characters, &site->options, &error) != QEL_OK) {
    qelpg_raise(&error);
  }
  qel_options_set_stop(site->options, is_cancelled, NULL);
  return site->options;
}

qel_text qelpg_bytes(const void* value) {
  const qel_text bytes = {VARDATA_ANY(value), VARSIZE_ANY_EXHDR(value)};
  return bytes;
}

qel_text qelpg_characters(text* value) {
  qel_text text = qelpg_bytes(value);
  char* const converted = pg_server_to_any(text.data, (int)text.size, PG_UTF8);
  if (converted != text.data) text = qel_sql_text(converted);
  return text;
}

void qelpg_raise(const qel_error* error) {
  const char* const message =
      pg_any_to_server(error->message, (int)strlen(error->message), PG_UTF8);
  switch (error->status) {
    case QEL_NO_MEMORY:
      ereport(ERROR, (errcode(ERRCODE_OUT_OF_MEMORY), errmsg("%s", message)));
    case QEL_BAD_ARGUMENT:
      ereport(ERROR, (errcode(ERRCODE_INVALID_PARAMETER_VALUE), errmsg("%s", message)));
    case QEL_BAD_INPUT:
      ereport(ERROR, (errcode(ERRCODE_DATA_EXCEPTION), errmsg("%s", message)));
    case QEL_STOPPED:
      CHECK_FOR_INTERRUPTS();
    default:
      ereport(ERROR, (errcode(ERRCODE_EXTERNAL_ROUTINE_EXCEPTION), errmsg("%s", message)));
  }
}

text* qelpg_take(qel_string string) {
  const Size size = VARHDRSZ + string.size;
  text* const value = AllocSizeIsValid(size) ? palloc_extended(size, MCXT_ALLOC_NO_OOM) : NULL;
  if (value != NULL) {
    SET_VARSIZE(value, size);
    if (string.size > 0) memcpy(VARDATA(value), string.data, string.size);
  }
  qel_string_free(string);
  if (value == NULL) {
    ereport(ERROR, (errcode(ERRCODE_OUT_OF_MEMORY), errmsg("the result is too large")));
  }
  return value;
}

text* qelpg_in_server_encoding(text* value) {
  const int size = (int)VARSIZE_ANY_EXHDR(value);
  char* const converted = pg_any_to_server(VARDATA_ANY(value), size, PG_UTF8);
  if (converted == VARDATA_ANY(value)) return value;
  text* const result = cstring_to_text(converted);
  pfree(converted);
  pfree(value);
  return result;
}
