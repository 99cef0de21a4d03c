#include "Program.h"
#include "Verbs.h"

#ifdef QEL_FORMS_WINDOW
#include "desktop/Desktop.h"
#include "desktop/RecordPdf.h"
#endif

int main(int argc, char** argv) {
  qel::forms::Desktop desktop;
#ifdef QEL_FORMS_WINDOW
  desktop = {qel::forms::run_window, qel::forms::pdf_without_window};
#endif
  return qel::command::run_program("qelforms",
                                   [&] { return qel::forms::run_verb(argc, argv, desktop); });
}
