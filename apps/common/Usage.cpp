#include "Usage.h"

#include <algorithm>
#include <cctype>
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

bool has_option(const CLI::App* app, const std::string& name) {
  for (; app != nullptr; app = app->get_parent()) {
    if (app->get_option_no_throw(name) != nullptr) return true;
  }
  return false;
}

/// The option that an argument begins with, as in "--jobs=2" and "-j2"; empty when it is a value.
std::string option_name(const std::string& argument) {
  if (argument.starts_with("--")) return argument.substr(0, argument.find('='));
  const bool is_letter = argument.size() > 1 && argument[0] == '-' &&
                         std::isalpha(static_cast<unsigned char>(argument[1])) != 0;
  return is_letter ? argument.substr(0, 2) : "";
}

/// The first option that the command does not have, as it was given; empty when it has all of them.
std::string unknown_option(const CLI::App& app, int argc, const char* const* argv) {
  const CLI::App* within = &app;
  for (int i = 1; i < argc; ++i) {
    const std::string argument = argv[i];
    if (argument == "--") break;
    if (const CLI::App* const found = subcommand_named(*within, argument)) within = found;
    std::string name = option_name(argument);
    if (!name.empty() && !has_option(within, name)) return name;
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
  std::string message = on_one_line(error.what());
  const std::string command = unknown_command(app, argc, argv);
  // A misspelt option leaves the right one missing, but it is the wrong one that is to be named.
  const std::string option = unknown_option(app, argc, argv);
  if (!command.empty()) {
    message = "'" + command + "' is not a command";
  } else if (!option.empty()) {
    message = "'" + option + "' is not an option";
  }
  return UsageError(message + " (see '" + help_on(app, argc, argv) + "')");
}

}  // namespace qel::command
