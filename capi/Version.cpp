#include "qel/version.h"

#include <cstdlib>

#include "qel/capi.h"

const char* qel_version(void) { return qel::version; }

void qel_string_free(qel_string string) { std::free(string.data); }
