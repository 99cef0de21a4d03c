#include "Usage.h"

#include <algorithm>
#include <string>

namespace qel::command {
namespace {

/// Null when there is none.
const CLI::App* subcommand_named(const CLI::App& app, const std::string& name) {
  const auto found =
      app.get_subcommands([&name](const CLI::App* command) { return command->get_name() == name; });
  return found.empty() ? nullptr : found.front();
}

/// The word given in place of a command, or of a verb of `text`; empty when the words are right.
std::string unknown_command(const CLI::App& app, int argc, const char* const* argv) {
  const auto is_positional = [](const CLI::Option* option) { return option->get_positional(); };
  if (!app.get_options(is_positional).empty()) return {};
  const CLI::App* within = &app;
  for (int i = 1; i < argc && !within->get_subcommands(nullptr).empty(); ++i) {
    std::string name = argv[i];
    if (name.starts_with('-')) return {};
    const CLI::App* const found = subcommand_named(*within, name);
    if (found == nullptr) return name;
    within = found;
  }
  return {};
}

/// The command that shows the help on what was called.
std::string help_on(const CLI::App& app, int argc, const char* const* argv) {
  std::string command = app.get_name() + " ";
  const CLI::App* within = &app;
  for (int i = 1; i < argc; ++i) {
    within = subcommand_named(*within, argv[i]);
    if (within == nullptr) break;
    command.append(argv[i]).append(" ");
  }
  return command + "--help";
}

std::string on_one_line(std::string text) {
  std::replace(text.begin(), text.end(), '\n', ' ');
  return text;
}

}  // namespace

UsageError usage_error(const CLI::App& app, int argc, const char* const* argv,
                       const CLI::ParseError& error) {
  const std::string unknown = unknown_command(app, argc, argv);
  const std::string message =
      unknown.empty() ? on_one_line(error.what()) : "'" + unknown + "' is not a command";
  return UsageError(message + " (see '" + help_on(app, argc, argv) + "')");
}

}  // namespace qel::command
