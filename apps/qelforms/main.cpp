#include "Program.h"
#include "Verbs.h"

int main(int argc, char** argv) {
  return qel::command::run_program("qelforms", [&] { return qel::forms::run_verb(argc, argv); });
}
