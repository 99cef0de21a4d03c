#include "qel/capi.h"

int main(void) {
  const qel_text markup = {"plain and /b1bold/b0", 20};
  size_t length = 0;
  return qel_length(markup, NULL, &length, NULL) == QEL_OK && length == 14 ? 0 : 1;
}
