/* Each allocation fails in turn: every function then says so or gives its usual output, and the
 * next call works. */

#include <stdio.h>
#include <string.h>

#include "qel/capi.h"

extern void* __libc_malloc(size_t size);
extern void* __libc_realloc(void* data, size_t size);

static long until_failure = -1; /* allocations, -1: none fails */

static int fails(void) { return until_failure >= 0 && until_failure-- == 0; }

void* malloc(size_t size) { return fails() ? NULL : __libc_malloc(size); }

void* realloc(void* data, size_t size) { return fails() ? NULL : __libc_realloc(data, size); }

static qel_text text_of(const char* characters) {
  qel_text text;
  text.data = characters;
  text.size = strlen(characters);
  return text;
}

static const char long_name[] =
    "A name of a font that is too long for any string to hold in itself";
static char note[2000];

static qel_string output;
static qel_error error;

#define TRY(call)                        \
  do {                                   \
    const qel_status status = (call);    \
    bytes += output.size;                \
    qel_string_free(output);             \
    output.data = NULL;                  \
    output.size = 0;                     \
    if (status != QEL_OK) return status; \
  } while (0)

static size_t bytes; /* of all outputs */

static qel_status convert_batch(const qel_options* options) {
  enum { count = 300 };
  static qel_text notes[count];
  qel_results* results = NULL;
  qel_status status = QEL_OK;
  for (size_t i = 0; i < count; ++i) notes[i] = text_of(i % 50 == 0 ? note : "/b1a/b0 note");
  status = qel_convert_batch(notes, count, options, 1, &results, &error);
  for (size_t i = 0; i < qel_results_count(results); ++i) {
    const qel_status one = qel_results_error(results, i)->status;
    if (one != QEL_OK) status = one;
    bytes += qel_results_text(results, i).size;
  }
  qel_results_free(results);
  return status;
}

static qel_status convert_pieces(qel_converter* converter) {
  TRY(qel_converter_push(converter, text_of(note), &error));
  TRY(qel_converter_finish(converter, NULL, &error));
  TRY(qel_converter_take(converter, &output, &error));
  return QEL_OK;
}

static qel_status convert_all(qel_options* options) {
  qel_converter* converter = NULL;
  qel_status in_pieces = QEL_OK;
  char json[256];
  snprintf(json, sizeof(json),
           "{\"to\": \"rtf\", \"fonts\": [\"%s\"], \"colors\": {\"1\": 255}, \"tables\": \"%s\"}",
           long_name, "a\\tb<Fonts:Rec>12");
  TRY(qel_options_set_json(options, text_of(json), &error));
  TRY(qel_convert(text_of(note), options, &output, NULL, &error));
  TRY(convert_batch(options));
  TRY(qel_converter_new(options, &converter, &error));
  in_pieces = convert_pieces(converter);
  qel_converter_free(converter);
  TRY(in_pieces);
  TRY(qel_options_set_to(options, text_of("html"), &error));
  TRY(qel_convert(text_of("{\\rtf1{\\fonttbl{\\f0 Symbol;}}a\\par{\\b b}\\'e9}"), options, &output,
                  NULL, &error));
  TRY(qel_convert(text_of(note), options, &output, NULL, &error));
  TRY(qel_options_set_switch(options, text_of("lossless"), 0, &error));
  TRY(qel_mid(text_of(note), 3, 1000, options, &output, &error));
  TRY(qel_convert(text_of(note), options, &output, NULL, &error));
  return QEL_OK;
}

static qel_status change_texts(void) {
  size_t position = 0;
  qel_runs* runs = NULL;
  TRY(qel_plain(text_of(note), NULL, &output, &error));
  TRY(qel_find(text_of(note), text_of("B 3"), 1, 1, NULL, &position, &error));
  TRY(qel_left(text_of(note), 500, NULL, &output, &error));
  TRY(qel_stuff(text_of(note), 5, 3, text_of("/nl/b1x"), NULL, &output, &error));
  TRY(qel_change_case(text_of(note), text_of("title"), 0, QEL_ALL, NULL, &output, &error));
  TRY(qel_toggle(text_of(note), text_of("font3"), 10, 700, NULL, &output, &error));
  TRY(qel_normalize(text_of(note), NULL, &output, &error));
  TRY(qel_runs_of(text_of(note), NULL, &runs, &error));
  bytes += qel_runs_count(runs) + position;
  qel_runs_free(runs);
  return QEL_OK;
}

/* Does a bit of everything, and returns the first status that is not well. */
static qel_status do_all(void) {
  qel_options* const options = qel_options_new();
  qel_status status = QEL_NO_MEMORY;
  bytes = 0;
  if (options != NULL) status = convert_all(options);
  qel_options_free(options);
  return status == QEL_OK ? change_texts() : status;
}

int main(void) {
  size_t expected = 0;
  long failed = 0;
  long absorbed = 0;
  for (size_t i = 0; strlen(note) + 40 < sizeof(note); ++i)
    sprintf(note + strlen(note), "a /b1b %u/b0/nl/f1/y2c/f0/y0", (unsigned)i);
  const qel_status usual = do_all();
  expected = bytes;
  if (usual != QEL_OK || expected == 0) {
    fprintf(stderr, "it does not even work with memory\n");
    return 1;
  }
  for (;;) {
    qel_status status = QEL_OK;
    until_failure = failed + absorbed;
    status = do_all();
    if (until_failure >= 0) break; /* there are no more allocations than that */
    until_failure = -1;
    if (status == QEL_OK ? bytes != expected : status != QEL_NO_MEMORY) {
      fprintf(stderr, "allocation %ld: status %d, %lu bytes\n", failed + absorbed, (int)status,
              (unsigned long)bytes);
      return 1;
    }
    status == QEL_OK ? ++absorbed : ++failed;
  }
  until_failure = -1;
  printf("%ld failures were reported, %ld made no difference\n", failed, absorbed);
  return failed > 500 ? 0 : 1;
}
