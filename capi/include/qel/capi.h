#ifndef QEL_CAPI_H
#define QEL_CAPI_H

/**
 * QEL for C and for every language that calls C: formatted text as markup, RTF, HTML and plain
 * text.
 *
 * Texts are UTF-8 with their lengths in bytes, and may hold zero bytes; invalid bytes are read in
 * code page 1252. RTF is bytes. Conversions read byte order marks, too, and drop them; they refuse
 * binary data unless its format is named. Positions are zero-based and count the characters that a
 * reader sees (Unicode code points), without codes; a line break is one character. `QEL_ALL` as a
 * count, or a count that reaches beyond the text, means all the rest.
 *
 * Ownership: what is passed in is read during the call and stays the caller's. A `qel_string` is
 * the caller's to release by `qel_string_free`; objects are released by the function named
 * `..._free`, which accepts null.
 *
 * Errors: each function that can fail returns a status, and writes it with a message to `error`
 * where that is not null. Outputs are empty then. Broken markup, RTF and HTML are text, not errors.
 *
 * There is no global state. Any thread may call any function; an object must not be changed by one
 * thread while another uses it. `options` may be null, which means the defaults of
 * `qel_options_new`, and may serve several threads at once.
 */

#include <stddef.h>
#include <stdint.h>

#if defined(_WIN32)
#if defined(QEL_CAPI_BUILD)
#define QEL_API __declspec(dllexport)
#elif defined(QEL_CAPI_STATIC)
#define QEL_API
#else
#define QEL_API __declspec(dllimport)
#endif
#else
#define QEL_API __attribute__((visibility("default")))
#endif

#ifdef __cplusplus
extern "C" {
#endif

typedef enum qel_status {
  QEL_OK = 0,
  QEL_NO_MEMORY = 1,
  QEL_BAD_ARGUMENT = 2, /**< the message names it */
  QEL_BAD_INPUT = 3,    /**< the input is neither text nor RTF nor HTML */
  QEL_STOPPED = 4,      /**< the stop question was answered with yes */
  QEL_FAILED = 5
} qel_status;

typedef struct qel_error {
  qel_status status;
  char message[252]; /**< one line, in UTF-8, with a zero at its end; empty where all went well */
} qel_error;

/** A text of the caller's. `data` may be null where `size` is 0. */
typedef struct qel_text {
  const char* data;
  size_t size; /**< in bytes */
} qel_text;

/** A text that the library made. */
typedef struct qel_string {
  char* data;  /**< with a zero behind its end, which `size` does not count; null where empty */
  size_t size; /**< in bytes */
} qel_string;

#define QEL_ALL SIZE_MAX
#define QEL_NOT_FOUND SIZE_MAX

QEL_API const char* qel_version(void);
QEL_API void qel_string_free(qel_string string);

/* Options */

typedef struct qel_options qel_options;

/** Lossless, the usual tables of fonts and colours, breaks and tabs kept, input recognised by how
 * it begins, output in markup. Null where memory is short. */
QEL_API qel_options* qel_options_new(void);
QEL_API void qel_options_free(qel_options* options);

/** "qel", "rtf", "text", "html"; empty recognises it. */
QEL_API qel_status qel_options_set_from(qel_options* options, qel_text format, qel_error* error);
/** "qel", "qelv6", "rtf", "rtf-body", "simple-rtf", "text", "segments" or "html". */
QEL_API qel_status qel_options_set_to(qel_options* options, qel_text format, qel_error* error);
/** Font `index`, 0 to 9. */
QEL_API qel_status qel_options_set_font(qel_options* options, int index, qel_text name,
                                        qel_error* error);
/** The size of all text in points. */
QEL_API qel_status qel_options_set_font_size(qel_options* options, double points, qel_error* error);
/** Colour `index`, 0 to 9, as 0xRRGGBB. */
QEL_API qel_status qel_options_set_color(qel_options* options, int index, uint32_t rgb,
                                         qel_error* error);
/** The tables as the records in which `qel convert --tables` reads them. */
QEL_API qel_status qel_options_set_tables(qel_options* options, qel_text records, qel_error* error);
/**
 * A switch by its name: "lossless", "convert-nl-to-space", "convert-tabs-to-space",
 * "recognize-crlf", "recognize-tabs", "normalize"; of RTF "notes", "headers", "links",
 * "alternative-texts"; of HTML "html-document", "html-paragraphs", "html-classes".
 */
QEL_API qel_status qel_options_set_switch(qel_options* options, qel_text name, int is_on,
                                          qel_error* error);
/**
 * Any of these from a JSON object:
 *   {"from": "rtf", "to": "html", "fonts": {"1": "Courier New"}, "fontSize": 10,
 *    "colors": {"1": "#ff0000"}, "tables": "...", "lossless": true, "notes": true}
 * Fonts and colours may be arrays as well, whose first item has index 0; null in them skips one.
 * An unknown name or a value that does not fit is an error that names it.
 */
QEL_API qel_status qel_options_set_json(qel_options* options, qel_text json, qel_error* error);
/** A question asked every few thousand bytes, with `data`; when it returns other than 0, the call
 * ends with `QEL_STOPPED`. Null takes it away. Batches ask it from their threads, from one at a
 * time. */
QEL_API void qel_options_set_stop(qel_options* options, int (*stop)(void* data), void* data);

/* Conversions */

/** What the output lacks of the input: how many of each. */
typedef struct qel_report {
  uint64_t bytes_in, bytes_out;
  uint64_t pictures, objects, cells, rows, notes, headers, links, hidden, deleted, unknown;
  uint64_t fonts, colors, sizes, formats;
  int is_broken_off; /**< the last brace of the RTF never came */
} qel_report;

/** Converts a text. `report` may be null. */
QEL_API qel_status qel_convert(qel_text input, const qel_options* options, qel_string* output,
                               qel_report* report, qel_error* error);

/** The results of a batch. */
typedef struct qel_results qel_results;

/**
 * Converts `count` texts on up to `threads` threads (0: as many as the machine has). A text that
 * cannot be converted does not stop the others. The results are null where the whole call fails.
 */
QEL_API qel_status qel_convert_batch(const qel_text* inputs, size_t count,
                                     const qel_options* options, unsigned threads,
                                     qel_results** results, qel_error* error);
QEL_API size_t qel_results_count(const qel_results* results);
/** The output of the text at `index`, which lives as long as the results. */
QEL_API qel_text qel_results_text(const qel_results* results, size_t index);
/** Its error, with `QEL_OK` where all went well. */
QEL_API const qel_error* qel_results_error(const qel_results* results, size_t index);
/** The sums of all reports. */
QEL_API const qel_report* qel_results_report(const qel_results* results);
QEL_API void qel_results_free(qel_results* results);

/** A conversion in pieces, cut anywhere. Copies the options. */
typedef struct qel_converter qel_converter;

QEL_API qel_status qel_converter_new(const qel_options* options, qel_converter** converter,
                                     qel_error* error);
/** After an error, the converter can only be released. */
QEL_API qel_status qel_converter_push(qel_converter* converter, qel_text piece, qel_error* error);
/** Ends the input. `report` may be null. */
QEL_API qel_status qel_converter_finish(qel_converter* converter, qel_report* report,
                                        qel_error* error);
/** Takes what was written since the last time; empty where there is nothing yet. */
QEL_API qel_status qel_converter_take(qel_converter* converter, qel_string* piece,
                                      qel_error* error);
QEL_API void qel_converter_free(qel_converter* converter);

/* Texts as markup. Of the options they read the stop question and "lossless". Without that, the
 * letter of the markup's rules counts: line breaks are no characters, and are lost in what is
 * written; an escaped code is four characters. */

/** The text that a reader sees. */
QEL_API qel_status qel_plain(qel_text markup, const qel_options* options, qel_string* output,
                             qel_error* error);
QEL_API qel_status qel_length(qel_text markup, const qel_options* options, size_t* length,
                              qel_error* error);
/** The position of the first `search` (markup, too, whose codes do not matter) from `start` on;
 * `QEL_NOT_FOUND` where there is none. */
QEL_API qel_status qel_find(qel_text markup, qel_text search, size_t start, int ignores_case,
                            const qel_options* options, size_t* position, qel_error* error);
QEL_API qel_status qel_left(qel_text markup, size_t count, const qel_options* options,
                            qel_string* output, qel_error* error);
QEL_API qel_status qel_right(qel_text markup, size_t count, const qel_options* options,
                             qel_string* output, qel_error* error);
QEL_API qel_status qel_mid(qel_text markup, size_t start, size_t count, const qel_options* options,
                           qel_string* output, qel_error* error);
/** `replacement`, markup whose formats end with it, in place of `count` characters. */
QEL_API qel_status qel_stuff(qel_text markup, size_t start, size_t count, qel_text replacement,
                             const qel_options* options, qel_string* output, qel_error* error);
/** `change`: "upper", "lower", "swap", "title", "initial", "first-upper", "first-lower". */
QEL_API qel_status qel_change_case(qel_text markup, qel_text change, size_t start, size_t count,
                                   const qel_options* options, qel_string* output,
                                   qel_error* error);
/**
 * Sets an attribute, or clears it where the first of the characters has it: "bold", "italic",
 * "underline", "strike", "superscript", "subscript", "small-caps", "font1" to "font9", "color1" to
 * "color9", "plain".
 */
QEL_API qel_status qel_toggle(qel_text markup, qel_text attribute, size_t start, size_t count,
                              const qel_options* options, qel_string* output, qel_error* error);
/** The shortest markup of the same text in the same formats, always lossless. */
QEL_API qel_status qel_normalize(qel_text markup, const qel_options* options, qel_string* output,
                                 qel_error* error);

/** A part of a text in one format. */
typedef struct qel_run {
  qel_text text;
  uint32_t line_breaks; /**< before the text */
  uint8_t bold, italic, underline, strike, superscript, subscript, small_caps;
  uint8_t font, color; /**< 0 to 9 */
} qel_run;

typedef struct qel_runs qel_runs;

/** Line breaks behind the last run stand before an empty one. */
QEL_API qel_status qel_runs_of(qel_text markup, const qel_options* options, qel_runs** runs,
                               qel_error* error);
QEL_API size_t qel_runs_count(const qel_runs* runs);
/** The run at `index`, which lives as long as the runs. */
QEL_API const qel_run* qel_runs_at(const qel_runs* runs, size_t index);
QEL_API void qel_runs_free(qel_runs* runs);

#ifdef __cplusplus
}
#endif

#endif
