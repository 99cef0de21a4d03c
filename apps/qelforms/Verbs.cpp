#include "Verbs.h"

#include <CLI/CLI.hpp>
#include <filesystem>
#include <memory>
#include <stdexcept>

#include "HelpFormat.h"
#include "Program.h"
#include "Usage.h"
#include "UsualDatabase.h"
#include "VerbSet.h"
#include "qel/base/Error.h"
#include "qel/version.h"

namespace qel::forms {
namespace {

constexpr const char* examples = R"(Examples:
  qelforms notes.db
  qelforms add --title '/b1Tea/b0' --body-file tea.qel
  qelforms add --database notes.db --files *.rtf
  qelforms edit 1 --title 'Green tea'
  qelforms find tea --tag recipes
  qelforms export --database notes.db -o notes.pdf --title Notes

A text from a file is markup or RTF; its line breaks become line codes.
Exit status: 0, 1 when something failed or nothing was found, 2 for arguments
that do not fit.)";

/// A bare word that is not the name of a file is more likely a misspelt verb than the name of a new
/// file.
void refuse_misspelt_verb(const std::string& word) {
  if (word.empty() || word.find_first_of("./") != std::string::npos) return;
  if (std::filesystem::exists(word)) return;
  throw command::UsageError("'" + word + "' is not a command (see 'qelforms --help')");
}

/// The arguments that open the window, without a verb.
void add_window(CLI::App& app, WindowRequest& request) {
  app.add_option("FILE", request.database,
                 "Opens a window on this file of records; on the user's own\n"
                 "where no file and no command is given")
      ->type_name("");
  app.add_option("-d,--database", request.database, "The same")->type_name("FILE");
  app.add_option("--demo", request.demo_picture,
                 "Type a record in the window without a user, and write pictures of it")
      ->type_name("PICTURE");
}

int open_window(WindowRequest request, const Desktop& desktop) {
  refuse_misspelt_verb(request.database);
  const bool is_demo = !request.demo_picture.empty();
  if (request.database.empty() && !is_demo) request.database = usual_database();
  return desktop.open_window(request);
}

}  // namespace

int run_verb(int argc, const char* const* argv, const Desktop& desktop) {
  CLI::App app("Keeps records with formatted titles and bodies in a database.", "qelforms");
  app.formatter(std::make_shared<command::HelpFormat>());
  app.set_version_flag("--version", std::string("qelforms ") + version);
  app.require_subcommand(desktop.open_window ? 0 : 1, 1);
  app.footer(examples);
  VerbSet verbs(app);
  add_reading_verbs(verbs, desktop);
  add_writing_verbs(verbs);
  WindowRequest request;
  if (desktop.open_window) add_window(app, request);
  try {
    app.parse(argc, argv);
  } catch (const CLI::CallForHelp&) {
    command::print(app.help());
    return command::success;
  } catch (const CLI::CallForVersion& call) {
    command::print(std::string(call.what()) + "\n");
    return command::success;
  } catch (const CLI::ParseError& error) {
    throw command::usage_error(app, argc, argv, error);
  }
  try {
    return app.get_subcommands().empty() ? open_window(request, desktop) : verbs.run();
  } catch (const Error& error) {
    throw std::runtime_error(error.description());
  }
}

}  // namespace qel::forms
