#include "Program.h"
#include "Verbs.h"

#ifdef QEL_FORMS_WINDOW
#include "desktop/Desktop.h"
#endif

int main(int argc, char** argv) {
  qel::forms::WindowOpener open_window;
#ifdef QEL_FORMS_WINDOW
  open_window = qel::forms::run_window;
#endif
  return qel::command::run_program("qelforms",
                                   [&] { return qel::forms::run_verb(argc, argv, open_window); });
}
