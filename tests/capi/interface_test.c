/* The C interface as a program in C99 uses it: each function with a table of cases. */

#include <inttypes.h>
#include <stdio.h>
#include <stdlib.h>
#include <string.h>

#include "qel/capi.h"

static int failures = 0;

static void fail(const char* test, const char* what, const char* expected, const char* got) {
  ++failures;
  fprintf(stderr, "%s(%s): expected \"%s\", got \"%s\"\n", test, what, expected, got);
}

static qel_text text_of(const char* characters) {
  qel_text text;
  text.data = characters;
  text.size = strlen(characters);
  return text;
}

/* Compares an output and releases it. */
static void expect_string(const char* test, const char* what, const char* expected,
                          qel_string output) {
  const char* const got = output.data == NULL ? "" : output.data;
  if (strlen(expected) != output.size || memcmp(expected, got, output.size) != 0)
    fail(test, what, expected, got);
  if (output.data != NULL && output.data[output.size] != '\0')
    fail(test, what, "a zero behind the end", "none");
  qel_string_free(output);
}

static void expect_number(const char* test, const char* what, size_t expected, size_t got) {
  char numbers[2][24];
  if (expected == got) return;
  snprintf(numbers[0], sizeof(numbers[0]), "%" PRIu64, (uint64_t)expected);
  snprintf(numbers[1], sizeof(numbers[1]), "%" PRIu64, (uint64_t)got);
  fail(test, what, numbers[0], numbers[1]);
}

static void expect_status(const char* test, const char* what, qel_status expected, qel_status got) {
  expect_number(test, what, (size_t)expected, (size_t)got);
}

static void expect_error(const char* test, const char* what, qel_status expected, qel_status got,
                         const qel_error* error, const char* message) {
  expect_status(test, what, expected, got);
  expect_status(test, what, expected, error->status);
  if (strstr(error->message, message) == NULL || (message[0] == '\0' && error->message[0] != '\0'))
    fail(test, what, message, error->message);
}

static qel_options* options_from(const char* json) {
  qel_error error;
  qel_options* const options = qel_options_new();
  if (options == NULL || qel_options_set_json(options, text_of(json), &error) != QEL_OK) {
    fail("options", json, "no error", options == NULL ? "no options" : error.message);
    exit(1);
  }
  return options;
}

static void test_conversions(void) {
  static const struct {
    const char* json;
    const char* input;
    const char* output;
  } cases[] = {
      {"{\"to\": \"html\"}", "Hello /b1world/b0", "Hello <b>world</b>"},
      {"{}", "{\\rtf1 Hello {\\b world}}", "Hello /b1world/b0"},
      {"{\"to\": \"text\"}", "{\\rtf1 a\\u0?b\\par c}", "ab\nc"},
      {"{\"from\": \"text\"}", "/b1", "~/b1"},
      {"{\"to\": \"text\"}", "caf\xC3\xA9 \xE9 \xF0\x9F\x98\x80/nl\n",
       "caf\xC3\xA9 \xC3\xA9 \xF0\x9F\x98\x80\n\n"},
      {"{\"to\": \"text\", \"recognize-crlf\": false}", "a/nlb", "ab"},
      {"{\"to\": \"rtf-body\"}", "/f1/y2x", "\\cf2 \\f1 x\\f0 \\cf0 "},
      {"{\"to\": \"html\", \"fonts\": {\"1\": \"Mine\"}, \"colors\": [null, \"#0000fF\"]}",
       "/f1/y1x",
       "<span style=\"color:#0000ff\"><span style=\"font-family:'Mine'\">x</span></span>"},
      {"{\"normalize\": true}", "/b1/b0/b1x/b0", "/b1x/b0"},
      {"{\"lossless\": false}", "{\\rtf1 a\\line b}", "a/nlb"},
      {"{\"to\": \"html\", \"from\": \"qel\"}", "{\\rtf1 a}", "{\\rtf1 a}"},
  };
  for (size_t i = 0; i < sizeof(cases) / sizeof(cases[0]); ++i) {
    qel_options* const options = options_from(cases[i].json);
    qel_string output = {NULL, 0};
    qel_error error;
    qel_report report;
    const qel_status status =
        qel_convert(text_of(cases[i].input), options, &output, &report, &error);
    expect_error("convert", cases[i].input, QEL_OK, status, &error, "");
    expect_number("report", cases[i].input, strlen(cases[i].input), (size_t)report.bytes_in);
    expect_string("convert", cases[i].input, cases[i].output, output);
    qel_options_free(options);
  }
}

/* What differs by whether the library was built with a reader of HTML. */
static void test_html(void) {
  qel_options* const options = qel_options_new();
  qel_error error;
  qel_string output;
  const qel_status status = qel_options_set_from(options, text_of("html"), &error);
  if (status == QEL_OK) {
    expect_status("html", "from", QEL_OK,
                  qel_convert(text_of("<p>a<p><b>b</b>"), options, &output, NULL, &error));
    expect_string("html", "from", "a/nl/b1b/b0", output);
    qel_options_set_from(options, text_of(""), NULL);
    qel_convert(text_of("<b>b</b>"), options, &output, NULL, NULL);
    expect_string("html", "recognised", "/b1b/b0", output);
  } else {
    expect_error("html", "from", QEL_BAD_ARGUMENT, status, &error, "'html'");
  }
  qel_options_free(options);
}

/* An emoji is one character, a line break is one, an escaped code is three. */
static const char text[] = "a/nl\xF0\x9F\x98\x80/b1bc/b0~/b1\nd";

static void test_texts(void) {
  static const struct {
    size_t start, count;
    const char *mid, *stuffed, *toggled, *upper;
  } cases[] = {
      {0, 2, "a/nl", "/i1X/i0\xF0\x9F\x98\x80/b1bc/b0~/b1/nld",
       "/b1a/b0/nl\xF0\x9F\x98\x80/b1bc/b0~/b1/nld", "A/nl\xF0\x9F\x98\x80/b1bc/b0~/b1/nld"},
      {2, 2, "\xF0\x9F\x98\x80/b1b/b0", "a/nl/i1X/i0/b1c/b0~/b1/nld",
       "a/nl/b1\xF0\x9F\x98\x80"
       "bc/b0~/b1/nld",
       "a/nl\xF0\x9F\x98\x80/b1Bc/b0~/b1/nld"},
      {3, 1, "/b1b/b0", "a/nl\xF0\x9F\x98\x80/i1X/i0/b1c/b0~/b1/nld",
       "a/nl\xF0\x9F\x98\x80"
       "b/b1c/b0~/b1/nld",
       "a/nl\xF0\x9F\x98\x80/b1Bc/b0~/b1/nld"},
      {5, 3, "~/b1", "a/nl\xF0\x9F\x98\x80/b1bc/b0/i1X/i0/nld",
       "a/nl\xF0\x9F\x98\x80/b1bc~/b1/b0/nld", "a/nl\xF0\x9F\x98\x80/b1bc/b0~/b1/nld"},
      {8, QEL_ALL, "/nld", "a/nl\xF0\x9F\x98\x80/b1bc/b0~/b1/i1X/i0",
       "a/nl\xF0\x9F\x98\x80/b1bc/b0~/b1/nl/b1d/b0", "a/nl\xF0\x9F\x98\x80/b1bc/b0~/b1/nlD"},
      {10, 0, "", "a/nl\xF0\x9F\x98\x80/b1bc/b0~/b1/nld/i1X/i0",
       "a/nl\xF0\x9F\x98\x80/b1bc/b0~/b1/nld", "a/nl\xF0\x9F\x98\x80/b1bc/b0~/b1/nld"},
      {99, 1, "", "a/nl\xF0\x9F\x98\x80/b1bc/b0~/b1/nld/i1X/i0",
       "a/nl\xF0\x9F\x98\x80/b1bc/b0~/b1/nld", "a/nl\xF0\x9F\x98\x80/b1bc/b0~/b1/nld"},
  };
  const qel_text markup = text_of(text);
  qel_string output;
  qel_error error;
  for (size_t i = 0; i < sizeof(cases) / sizeof(cases[0]); ++i) {
    const size_t start = cases[i].start;
    const size_t count = cases[i].count;
    char what[48];
    snprintf(what, sizeof(what), "%u, %d", (unsigned)start, (int)count);
    qel_mid(markup, start, count, NULL, &output, &error);
    expect_string("mid", what, cases[i].mid, output);
    qel_stuff(markup, start, count, text_of("/i1X"), NULL, &output, &error);
    expect_string("stuff", what, cases[i].stuffed, output);
    qel_toggle(markup, text_of("bold"), start, count, NULL, &output, &error);
    expect_string("toggle", what, cases[i].toggled, output);
    qel_change_case(markup, text_of("upper"), start, count, NULL, &output, &error);
    expect_string("upper", what, cases[i].upper, output);
  }
}

/* What is cut in two and put together again is the same text. */
static void test_parts(void) {
  const qel_text markup = text_of(text);
  const size_t length_of_text = 10;
  qel_string output;
  qel_error error;
  qel_string whole;
  qel_left(markup, QEL_ALL, NULL, &whole, &error);
  for (size_t at = 0; at <= length_of_text + 1; ++at) {
    qel_string left, right, rest;
    char joined[2 * sizeof(text)];
    qel_left(markup, at, NULL, &left, &error);
    qel_mid(markup, at, QEL_ALL, NULL, &rest, &error);
    snprintf(joined, sizeof(joined), "%s%s", left.data == NULL ? "" : left.data,
             rest.data == NULL ? "" : rest.data);
    qel_normalize(text_of(joined), NULL, &output, &error);
    expect_string("joined", joined, whole.data, output);
    qel_right(markup, at < length_of_text ? length_of_text - at : 0, NULL, &right, &error);
    expect_string("right", joined, rest.data == NULL ? "" : rest.data, right);
    qel_string_free(left);
    qel_string_free(rest);
  }
  qel_string_free(whole);
}

static void test_names(void) {
  static const struct {
    const char *change, *output;
  } changes[] = {{"lower", "the /b1end of/b0 it"},       {"swap", "THE /b1eND OF/b0 IT"},
                 {"title", "The /b1End of/b0 It"},       {"initial", "The /b1end of/b0 it"},
                 {"first-upper", "The /b1End of/b0 it"}, {"first-lower", "the /b1End of/b0 it"}};
  static const struct {
    const char *attribute, *output;
  } attributes[] = {{"italic", "/i1x/i0"},      {"underline", "/u1x/u0"}, {"strike", "/k1x/k0"},
                    {"superscript", "/p1x/p0"}, {"subscript", "/s1x/s0"}, {"small-caps", "/c1x/c0"},
                    {"font9", "/f9x/f0"},       {"color1", "/y1x/y0"}};
  qel_string output;
  qel_error error;
  for (size_t i = 0; i < sizeof(changes) / sizeof(changes[0]); ++i) {
    qel_change_case(text_of("the /b1End of/b0 it"), text_of(changes[i].change), 0, QEL_ALL, NULL,
                    &output, &error);
    expect_string("case", changes[i].change, changes[i].output, output);
  }
  for (size_t i = 0; i < sizeof(attributes) / sizeof(attributes[0]); ++i) {
    qel_toggle(text_of("x"), text_of(attributes[i].attribute), 0, 1, NULL, &output, &error);
    expect_string("toggle", attributes[i].attribute, attributes[i].output, output);
    qel_toggle(text_of(attributes[i].output), text_of("plain"), 0, 1, NULL, &output, &error);
    expect_string("plain", attributes[i].output, "x", output);
  }
}

static void test_counting(void) {
  static const struct {
    const char* search;
    size_t start;
    int ignores_case;
    size_t position;
  } cases[] = {{"bc", 0, 0, 3},
               {"b", 4, 0, 6},
               {"BC", 0, 0, QEL_NOT_FOUND},
               {"BC", 0, 1, 3},
               {"/i1b/i0c", 0, 0, 3},
               {"/nl\xF0\x9F\x98\x80", 0, 0, 1},
               {"", 10, 0, 10},
               {"", 11, 0, QEL_NOT_FOUND},
               {"a", 1, 0, QEL_NOT_FOUND},
               {"d", 99, 0, QEL_NOT_FOUND}};
  const qel_text markup = text_of("a/nl\xF0\x9F\x98\x80/b1bc/b0~/b1\nd");
  size_t number = 0;
  qel_string output;
  qel_length(markup, NULL, &number, NULL);
  expect_number("length", markup.data, 10, number);
  qel_plain(markup, NULL, &output, NULL);
  expect_string("plain", markup.data,
                "a\n\xF0\x9F\x98\x80"
                "bc/b1\nd",
                output);
  for (size_t i = 0; i < sizeof(cases) / sizeof(cases[0]); ++i) {
    qel_find(markup, text_of(cases[i].search), cases[i].start, cases[i].ignores_case, NULL, &number,
             NULL);
    expect_number("find", cases[i].search, cases[i].position, number);
  }
}

static void test_stated(void) {
  const qel_text markup = text_of("a/nl\xF0\x9F\x98\x80~/b1/b1b");
  qel_options* const options = options_from("{\"lossless\": false}");
  qel_string output;
  qel_runs* runs = NULL;
  size_t number = 0;
  qel_length(markup, options, &number, NULL);
  expect_number("stated", "length", 7, number);
  qel_find(markup, text_of("B"), 3, 1, options, &number, NULL);
  expect_number("stated", "find", 4, number);
  qel_plain(markup, options, &output, NULL);
  expect_string("stated", "plain", "a\xF0\x9F\x98\x80~/b1b", output);
  qel_mid(markup, 1, 2, options, &output, NULL);
  expect_string("stated", "mid", "\xF0\x9F\x98\x80~", output);
  qel_stuff(markup, 1, 5, text_of("x"), options, &output, NULL);
  expect_string("stated", "stuff", "ax/b1b/b0", output);
  qel_toggle(markup, text_of("bold"), 0, 1, options, &output, NULL);
  expect_string("stated", "toggle", "/b1a/b0\xF0\x9F\x98\x80~/b1/b1b/b0", output);
  qel_change_case(markup, text_of("upper"), 6, 1, options, &output, NULL);
  expect_string("stated", "upper", "a\xF0\x9F\x98\x80~/b1/b1B/b0", output);
  qel_runs_of(markup, options, &runs, NULL);
  expect_number("stated", "runs", 3, qel_runs_count(runs));
  expect_number("stated", "breaks", 1, qel_runs_at(runs, 1)->line_breaks);
  qel_runs_free(runs);
  qel_options_free(options);
}

static void test_runs(void) {
  qel_runs* runs = NULL;
  const qel_run* run = NULL;
  qel_runs_of(text_of("a/b1/i1/u1/k1/p1/s1/c1/f2/y3b~/b1/b0/nl/nl"), NULL, &runs, NULL);
  expect_number("runs", "count", 3, qel_runs_count(runs));
  run = qel_runs_at(runs, 0);
  expect_number("runs", "plain", 0, (size_t)(run->bold + run->font + run->color));
  run = qel_runs_at(runs, 1);
  if (run->text.size != 4 || memcmp(run->text.data, "b/b1", 4) != 0)
    fail("runs", "text", "b/b1", "another");
  expect_number("runs", "attributes", 7,
                (size_t)(run->bold + run->italic + run->underline + run->strike + run->superscript +
                         run->subscript + run->small_caps));
  expect_number("runs", "font", 2, run->font);
  expect_number("runs", "color", 3, run->color);
  run = qel_runs_at(runs, 2);
  expect_number("runs", "breaks at the end", 2, run->line_breaks);
  expect_number("runs", "text at the end", 0, run->text.size);
  if (qel_runs_at(runs, 3) != NULL) fail("runs", "beyond", "null", "a run");
  qel_runs_free(runs);
}

static void test_wrong_options(void) {
  static const struct {
    const char *json, *message;
  } cases[] = {{"{\"form\": \"rtf\"}", "'form' is no option"},
               {"{\"form\": 1}", "'form' is no option"},
               {"{\"form\": null}", "'form' is no option"},
               {"{\"form\": true}", "'form' is no option"},
               {"{\"from\": true}", "'from' cannot be true"},
               {"{\"from\": [\"rtf\"]}", "'from' cannot be a list"},
               {"{\"colors\": {\"1\": 16777216}}", "'colors'"},
               {"{\"from\": \"pdf\"}", "'pdf'"},
               {"{\"fontSize\": -1}", "font size"},
               {"{\"lossless\": 1}", "'lossless'"},
               {"{\"colors\": {\"12\": \"#000000\"}}", "'12'"},
               {"{\"colors\": [\"red\"]}", "'red'"},
               {"{\"fonts\": \"Arial\"}", "'fonts'"},
               {"{\"tables\": \"x\"}", "'x'"},
               {"{\"loss", "is not JSON"},
               {"[]", "object"},
               {"null", "object"},
               {"true", "object"}};
  qel_options* const options = qel_options_new();
  qel_error error;
  for (size_t i = 0; i < sizeof(cases) / sizeof(cases[0]); ++i) {
    const qel_status status = qel_options_set_json(options, text_of(cases[i].json), &error);
    expect_error("json", cases[i].json, QEL_BAD_ARGUMENT, status, &error, cases[i].message);
  }
  expect_error("font", "10", QEL_BAD_ARGUMENT,
               qel_options_set_font(options, 10, text_of("Arial"), &error), &error, "index");
  expect_error("color", "too large", QEL_BAD_ARGUMENT,
               qel_options_set_color(options, 1, 0x1000000, &error), &error, "colour");
  qel_options_free(options);
}

static void test_wrong_arguments(void) {
  static const char characters[] = {'\x7F', 'E', 'L', 'F', 0, 0};
  const qel_text binary = {characters, sizeof(characters)};
  const qel_text no_data = {NULL, 1};
  qel_converter* converter = NULL;
  qel_string output;
  qel_error error;
  expect_error("convert", "binary", QEL_BAD_INPUT, qel_convert(binary, NULL, &output, NULL, &error),
               &error, "binary");
  expect_error("plain", "no data", QEL_BAD_ARGUMENT, qel_plain(no_data, NULL, &output, &error),
               &error, "null");
  expect_error("plain", "no output", QEL_BAD_ARGUMENT, qel_plain(binary, NULL, NULL, &error),
               &error, "null");
  expect_error("toggle", "bald", QEL_BAD_ARGUMENT,
               qel_toggle(binary, text_of("bald"), 0, 1, NULL, &output, &error), &error, "'bald'");
  expect_error("case", "camel", QEL_BAD_ARGUMENT,
               qel_change_case(binary, text_of("camel"), 0, 1, NULL, &output, &error), &error,
               "'camel'");
  expect_error("converter", "no output", QEL_BAD_ARGUMENT, qel_converter_new(NULL, NULL, &error),
               &error, "null");
  qel_converter_new(NULL, &converter, NULL);
  qel_converter_push(converter, text_of("a"), NULL);
  qel_converter_finish(converter, NULL, NULL);
  expect_error("take", "no output", QEL_BAD_ARGUMENT, qel_converter_take(converter, NULL, &error),
               &error, "null");
  qel_converter_take(converter, &output, NULL);
  expect_string("take", "after that", "a", output);
  qel_converter_free(converter);
  qel_converter_new(NULL, &converter, NULL);
  expect_error("push", "binary", QEL_OK, qel_converter_push(converter, binary, &error), &error, "");
  expect_error("finish", "binary", QEL_BAD_INPUT, qel_converter_finish(converter, NULL, &error),
               &error, "binary");
  expect_error("finish", "again", QEL_BAD_ARGUMENT, qel_converter_finish(converter, NULL, &error),
               &error, "ended");
  qel_converter_free(converter);
}

static int answer(void* data) { return --*(int*)data < 0; }

enum { function_count = 13 };

static qel_status call(int function, qel_text markup, const qel_options* options,
                       qel_string* output, qel_error* error) {
  size_t number = 0;
  qel_runs* runs = NULL;
  qel_results* results = NULL;
  switch (function) {
    case 0:
      return qel_convert(markup, options, output, NULL, error);
    case 1:
      return qel_convert_batch(&markup, 1, options, 2, &results, error);
    case 2:
      return qel_plain(markup, options, output, error);
    case 3:
      return qel_length(markup, options, &number, error);
    case 4:
      return qel_find(markup, text_of("b"), 0, 0, options, &number, error);
    case 5:
      return qel_left(markup, QEL_ALL, options, output, error);
    case 6:
      return qel_right(markup, 9, options, output, error);
    case 7:
      return qel_stuff(markup, 9, 9, text_of("b"), options, output, error);
    case 8:
      return qel_change_case(markup, text_of("upper"), 0, QEL_ALL, options, output, error);
    case 9:
      return qel_change_case(markup, text_of("title"), 0, QEL_ALL, options, output, error);
    case 10:
      return qel_toggle(markup, text_of("bold"), 0, QEL_ALL, options, output, error);
    case 11:
      return qel_normalize(markup, options, output, error);
    default:
      return qel_runs_of(markup, options, &runs, error);
  }
}

/* Every function asks, at the beginning and in the midst of a text. */
static void test_stopping(void) {
  const qel_text large = {malloc(1000000), 1000000};
  qel_options* const options = qel_options_new();
  memset((char*)large.data, 'a', large.size);
  for (int i = 0; i < 2 * function_count; ++i) {
    int answers = i % 2 == 0 ? 0 : 2;
    char what[16];
    qel_string output;
    qel_error error;
    qel_options_set_stop(options, answer, &answers);
    snprintf(what, sizeof(what), "%d", i / 2);
    expect_error("stop", what, QEL_STOPPED, call(i / 2, large, options, &output, &error), &error,
                 "stopped");
  }
  qel_options_free(options);
  free((char*)large.data);
}

/* A text in pieces gives what it gives as a whole, alone and in a batch on several threads. */
static void test_pieces_and_batches(void) {
  enum { count = 1000 };
  static char texts[count][64];
  static qel_text inputs[count];
  static const char binary[2] = {0, 0};
  qel_options* const options = options_from("{\"to\": \"rtf\", \"fontSize\": 12}");
  qel_results* results = NULL;
  qel_error error;
  for (int i = 0; i < count; ++i) {
    snprintf(texts[i], sizeof(texts[i]), "note %d: /b1bold \xF0\x9F\x98\x80/b0/nl/y%dcolour", i,
             i % 10);
    inputs[i] = text_of(texts[i]);
  }
  inputs[7].data = binary;
  inputs[7].size = 2;
  inputs[8].data = NULL;
  inputs[8].size = 0;
  expect_status("batch", "all", QEL_OK,
                qel_convert_batch(inputs, count, options, 4, &results, &error));
  expect_number("batch", "count", count, qel_results_count(results));
  for (int i = 0; i < count; ++i) {
    const qel_text one = qel_results_text(results, (size_t)i);
    qel_converter* converter = NULL;
    qel_string whole, piece;
    size_t taken = 0;
    const qel_status status = qel_convert(inputs[i], options, &whole, NULL, &error);
    expect_status("batch", texts[i], status, qel_results_error(results, (size_t)i)->status);
    if (one.size != whole.size || (one.size > 0 && memcmp(one.data, whole.data, one.size) != 0))
      fail("batch", texts[i], whole.data == NULL ? "" : whole.data, "another");
    qel_converter_new(options, &converter, NULL);
    for (size_t at = 0; status == QEL_OK && at < inputs[i].size; ++at) {
      qel_text byte = inputs[i];
      byte.data += at;
      byte.size = 1;
      qel_converter_push(converter, byte, NULL);
    }
    if (status == QEL_OK) qel_converter_finish(converter, NULL, NULL);
    for (;;) {
      qel_converter_take(converter, &piece, NULL);
      if (piece.size == 0) break;
      if (piece.size > whole.size - taken ||
          memcmp(piece.data, whole.data + taken, piece.size) != 0)
        fail("pieces", texts[i], whole.data + taken, piece.data);
      taken += piece.size;
      qel_string_free(piece);
    }
    expect_number("pieces", texts[i], whole.size, taken);
    qel_converter_free(converter);
    qel_string_free(whole);
  }
  expect_error("batch", "binary", QEL_BAD_INPUT, qel_results_error(results, 7)->status,
               qel_results_error(results, 7), "binary");
  qel_results_free(results);
  qel_options_free(options);
}

int main(void) {
  test_conversions();
  test_html();
  test_texts();
  test_parts();
  test_names();
  test_counting();
  test_stated();
  test_runs();
  test_wrong_options();
  test_wrong_arguments();
  test_stopping();
  test_pieces_and_batches();
  if (failures == 0) printf("the C interface %s holds\n", qel_version());
  return failures == 0 ? 0 : 1;
}
