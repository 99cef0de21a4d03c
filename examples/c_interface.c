/* Converts a text and looks into it, through the C interface. */

#include <stdio.h>
#include <string.h>

#include "qel/capi.h"

static qel_text text(const char* characters) {
  const qel_text made = {characters, strlen(characters)};
  return made;
}

int main(void) {
  const qel_text note = text("Call /b1Anna/b0 on /y1Monday/y0");
  qel_error error;
  qel_string output;
  size_t position = 0;

  qel_options* const options = qel_options_new();
  if (options == NULL ||
      qel_options_set_json(options, text("{\"to\": \"html\", \"colors\": {\"1\": \"#ff0000\"}}"),
                           &error) != QEL_OK ||
      qel_convert(note, options, &output, NULL, &error) != QEL_OK) {
    fprintf(stderr, "%s\n", options == NULL ? "out of memory" : error.message);
    qel_options_free(options);
    return 1;
  }
  printf("%.*s\n", (int)output.size, output.data);
  qel_string_free(output);
  qel_options_free(options);

  if (qel_find(note, text("anna"), 0, 1, NULL, &position, &error) != QEL_OK ||
      qel_toggle(note, text("underline"), position, 4, NULL, &output, &error) != QEL_OK) {
    fprintf(stderr, "%s\n", error.message);
    return 1;
  }
  printf("%s\n", output.data);
  qel_string_free(output);
  return 0;
}
