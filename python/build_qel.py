"""Makes the module qel._qel: the C interface, linked from the archives of a CMake build.

QEL_BUILD names that build, QEL_SOURCE the sources, QEL_HTML whether it reads HTML.
"""

import os
import re

from cffi import FFI

HERE = os.path.dirname(os.path.abspath(__file__))
SOURCE = os.environ.get("QEL_SOURCE") or os.path.dirname(HERE)
BUILD = os.environ.get("QEL_BUILD") or os.path.join(SOURCE, "build", "release")
HEADER = os.path.join(SOURCE, "capi", "include", "qel", "capi.h")

# A batch in one crossing: texts and outputs each lie one after the other.
BATCH = """
typedef struct py_batch {
  char* output;
  size_t* sizes;       // of the outputs
  size_t bad;          // the first text that could not be converted, or count
  qel_error error;     // of that text
  qel_report report;
} py_batch;
"""
FUNCTIONS = """
qel_status py_convert(const char* bytes, const size_t* sizes, size_t count,
                      const qel_options* options, unsigned threads, py_batch* batch,
                      qel_error* error);
void py_release(py_batch* batch);
"""
IMPLEMENTATION = r"""
#include <stdlib.h>
#include <string.h>

#include "qel/capi.h"
""" + BATCH + r"""
static void py_release(py_batch* batch) {
  free(batch->output);
  free(batch->sizes);
}

static qel_status py_no_memory(qel_error* error) {
  error->status = QEL_NO_MEMORY;
  strcpy(error->message, "out of memory");
  return QEL_NO_MEMORY;
}

static int py_take(const qel_results* results, size_t count, py_batch* batch) {
  char* end = NULL;
  batch->report = *qel_results_report(results);
  batch->sizes = malloc((count + 1) * sizeof(size_t));
  batch->output = malloc((size_t)batch->report.bytes_out + 1);
  if (batch->sizes == NULL || batch->output == NULL) return 0;
  end = batch->output;
  for (size_t i = 0; i < count; ++i) {
    const qel_text text = qel_results_text(results, i);
    if (text.size > 0) memcpy(end, text.data, text.size);
    end += text.size;
    batch->sizes[i] = text.size;
    if (batch->bad == count && qel_results_error(results, i)->status != QEL_OK) {
      batch->bad = i;
      batch->error = *qel_results_error(results, i);
    }
    if (qel_results_error(results, i)->status != QEL_OK) batch->sizes[i] = SIZE_MAX;
  }
  return 1;
}

static qel_status py_convert(const char* bytes, const size_t* sizes, size_t count,
                             const qel_options* options, unsigned threads, py_batch* batch,
                             qel_error* error) {
  qel_results* results = NULL;
  qel_text* const texts = malloc((count + 1) * sizeof(qel_text));
  qel_status status = QEL_OK;
  if (texts == NULL) return py_no_memory(error);
  batch->bad = count;
  for (size_t i = 0; i < count; bytes += sizes[i++]) {
    texts[i].data = bytes;
    texts[i].size = sizes[i];
  }
  status = qel_convert_batch(texts, count, options, threads, &results, error);
  free(texts);
  if (status == QEL_OK && !py_take(results, count, batch)) status = py_no_memory(error);
  qel_results_free(results);
  return status;
}
"""


def declarations():
    """The header without comments and directives, which cffi does not read."""
    if not os.path.exists(HEADER):
        raise SystemExit("QEL_SOURCE has to name the sources of QEL, and QEL_BUILD their build")
    with open(HEADER) as file:
        text = re.sub(r"/\*.*?\*/", "", file.read(), flags=re.DOTALL)
    text = re.sub(r'#ifdef __cplusplus\n.*?#endif', "", text, flags=re.DOTALL)
    text = re.sub(r"^#.*$", "", text, flags=re.MULTILINE).replace("QEL_API ", "")
    return text + "\n#define QEL_ALL ...\n#define QEL_NOT_FOUND ...\n"


def archives():
    names = ["capi/libqel_capi_static.a", "html/libqel_html.a", "qel/libqel.a"]
    return [path for path in (os.path.join(BUILD, name) for name in names) if os.path.exists(path)]


def libraries():
    return [] if not os.path.exists(os.path.join(BUILD, "html/libqel_html.a")) else ["-lgumbo"]


builder = FFI()
builder.cdef(declarations())
builder.cdef(re.sub(r"//.*", "", BATCH) + FUNCTIONS)
builder.set_source(
    "qel._qel",
    IMPLEMENTATION,
    py_limited_api=True,
    define_macros=[("QEL_CAPI_STATIC", None)],
    include_dirs=[os.path.join(SOURCE, "capi", "include")],
    extra_compile_args=["-std=c99", "-O2"],
    extra_link_args=[
        *archives(),
        *libraries(),
        "-l:libstdc++.a",
        "-static-libgcc",
        "-Wl,--version-script=" + os.path.join(HERE, "module.map"),
    ],
)

if __name__ == "__main__":
    builder.compile(verbose=True)
