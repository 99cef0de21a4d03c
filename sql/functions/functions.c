#include "functions.h"

#include <stdio.h>
#include <string.h>

qel_text qel_sql_text(const char* characters) {
  const qel_text text = {characters, strlen(characters)};
  return text;
}

size_t qel_sql_characters(qel_text text) {
  size_t count = 0;
  for (size_t i = 0; i < text.size; ++i) count += ((unsigned char)text.data[i] & 0xC0) != 0x80;
  return count;
}

/* What the functions call. */

static size_t start_of(const qel_sql_call* call) { return (size_t)call->start - 1; }
static size_t count_of(const qel_sql_call* call) { return (size_t)call->count; }

static int is_ascii(qel_text text) {
  unsigned char bits = 0;
  for (size_t i = 0; i < text.size; ++i) bits |= (unsigned char)text.data[i];
  return bits < 0x80;
}

static qel_status convert_characters(const qel_sql_call* call, qel_string* output,
                                     qel_error* error) {
  qel_converter* converter = NULL;
  qel_text rest = call->text;
  qel_status status = qel_converter_new(call->options, &converter, error);
  while (status == QEL_OK && rest.size > 0) status = qel_sql_push(converter, &rest, 1, error);
  if (status == QEL_OK) status = qel_converter_finish(converter, NULL, error);
  if (status == QEL_OK) status = qel_converter_take(converter, output, error);
  qel_converter_free(converter);
  return status;
}

static qel_status convert(const qel_sql_call* call, qel_sql_result* result, qel_error* error) {
  if (call->is_characters && !is_ascii(call->text)) {
    return convert_characters(call, &result->text, error);
  }
  return qel_convert(call->text, call->options, &result->text, NULL, error);
}

static qel_status plain(const qel_sql_call* call, qel_sql_result* result, qel_error* error) {
  return qel_plain(call->text, call->options, &result->text, error);
}

static qel_status length(const qel_sql_call* call, qel_sql_result* result, qel_error* error) {
  size_t count = 0;
  const qel_status status = qel_length(call->text, call->options, &count, error);
  result->number = (int64_t)count;
  return status;
}

static qel_status find(const qel_sql_call* call, qel_sql_result* result, qel_error* error) {
  size_t position = QEL_NOT_FOUND;
  const qel_status status =
      qel_find(call->text, call->other, 0, 0, call->options, &position, error);
  result->number = position == QEL_NOT_FOUND ? 0 : (int64_t)position + 1;
  return status;
}

static qel_status left(const qel_sql_call* call, qel_sql_result* result, qel_error* error) {
  return qel_left(call->text, count_of(call), call->options, &result->text, error);
}

static qel_status right(const qel_sql_call* call, qel_sql_result* result, qel_error* error) {
  return qel_right(call->text, count_of(call), call->options, &result->text, error);
}

static qel_status mid(const qel_sql_call* call, qel_sql_result* result, qel_error* error) {
  return qel_mid(call->text, start_of(call), count_of(call), call->options, &result->text, error);
}

static qel_status stuff(const qel_sql_call* call, qel_sql_result* result, qel_error* error) {
  return qel_stuff(call->text, start_of(call), count_of(call), call->other, call->options,
                   &result->text, error);
}

static qel_status change_case(const qel_sql_call* call, qel_sql_result* result, qel_error* error) {
  return qel_change_case(call->text, qel_sql_text(call->function->change), 0, QEL_ALL,
                         call->options, &result->text, error);
}

static qel_status toggle(const qel_sql_call* call, qel_sql_result* result, qel_error* error) {
  return qel_toggle(call->text, call->other, start_of(call), count_of(call), call->options,
                    &result->text, error);
}

const qel_sql_function qel_sql_functions[] = {
    {.name = "qel_to_rtf", .arguments = "t", .work = convert, .from = "qel", .to = "rtf"},
    {.name = "qel_from_rtf", .arguments = "r", .work = convert, .from = "rtf", .to = "qel"},
    {.name = "qel_to_html", .arguments = "t", .work = convert, .from = "qel", .to = "html"},
    {.name = "qel_from_html", .arguments = "t", .work = convert, .from = "html", .to = "qel"},
    {.name = "qel_plain", .arguments = "t", .work = plain},
    {.name = "qel_length", .arguments = "t", .gives_number = 1, .work = length},
    {.name = "qel_find", .arguments = "to", .gives_number = 1, .work = find},
    {.name = "qel_left", .arguments = "tc", .work = left},
    {.name = "qel_right", .arguments = "tc", .work = right},
    {.name = "qel_mid", .arguments = "tsc", .work = mid},
    {.name = "qel_stuff", .arguments = "tsco", .work = stuff},
    {.name = "qel_upper", .arguments = "t", .work = change_case, .change = "upper"},
    {.name = "qel_lower", .arguments = "t", .work = change_case, .change = "lower"},
    {.name = "qel_title", .arguments = "t", .work = change_case, .change = "title"},
    {.name = "qel_toggle", .arguments = "tosc", .work = toggle},
    {.name = "qel_normalize", .arguments = "t", .work = convert, .from = "qel", .to = "qel"},
    {.name = NULL}};

const qel_sql_function* qel_sql_function_named(const char* name) {
  const qel_sql_function* function = qel_sql_functions;
  while (function->name != NULL && strcmp(function->name, name) != 0) ++function;
  return function->name == NULL ? NULL : function;
}

static qel_status refuse(qel_error* error, const char* message) {
  error->status = QEL_BAD_ARGUMENT;
  snprintf(error->message, sizeof(error->message), "%s", message);
  return error->status;
}

static qel_status set_formats(const qel_sql_function* function, qel_options* options,
                              qel_error* error) {
  qel_status status = QEL_OK;
  if (function == NULL) return status;
  if (function->from != NULL) {
    status = qel_options_set_from(options, qel_sql_text(function->from), error);
  }
  if (status == QEL_OK && function->to != NULL) {
    status = qel_options_set_to(options, qel_sql_text(function->to), error);
  }
  if (status == QEL_OK && strcmp(function->name, "qel_normalize") == 0) {
    status = qel_options_set_switch(options, qel_sql_text("normalize"), 1, error);
  }
  return status;
}

qel_status qel_sql_options_new(const qel_sql_function* function, qel_text json,
                               qel_options** options, qel_error* error) {
  qel_options* made = qel_options_new();
  *options = NULL;
  if (made == NULL) {
    refuse(error, "out of memory");
    return error->status = QEL_NO_MEMORY;
  }
  qel_status status = set_formats(function, made, error);
  if (status == QEL_OK && json.size > 0) status = qel_options_set_json(made, json, error);
  if (status == QEL_OK) {
    *options = made;
  } else {
    qel_options_free(made);
  }
  return status;
}

qel_status qel_sql_run(const qel_sql_call* call, qel_sql_result* result, qel_error* error) {
  const char* const arguments = call->function->arguments;
  if (strchr(arguments, 's') != NULL && call->start < 1) {
    return refuse(error, "the start is less than 1");
  }
  if (strchr(arguments, 'c') != NULL && call->count < 0) {
    return refuse(error, "the count is less than 0");
  }
  return call->function->work(call, result, error);
}
