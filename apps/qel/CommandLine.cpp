#include "CommandLine.h"

#include <CLI/CLI.hpp>
#include <memory>

#include "ConvertCommand.h"
#include "HelpFormat.h"
#include "RenderCommand.h"
#include "TableOptions.h"
#include "TextCommands.h"
#include "Usage.h"
#include "qel/version.h"

namespace qel::command {
namespace {

constexpr const char* tables_examples = R"(Examples:
  qel tables > tables.txt
  qel tables --font 4=Georgia --font-size 11 > tables.txt
  qel convert letter.qel --to rtf --tables tables.txt

Colours in a record are read as 16-bit numbers: one above 32767 keeps what was there. Give such
colours with --color.)";

/// The arguments in the order in which CLI11 wants them: the last one first.
std::vector<std::string> reversed_arguments(int argc, const char* const* argv) {
  const std::string command = argc > 1 ? argv[1] : "";
  const bool has_files = command == "convert" || command == "lint";
  std::vector<std::string> arguments;
  for (int i = argc - 1; i > 0; --i) {
    std::string argument = argv[i];
    if (argument.starts_with("--") && argument.ends_with('=')) {
      // CLI11 would take an empty value for a missing one.
      arguments.emplace_back();
      argument.pop_back();
    }
    // CLI11 would take "[a,b]" for a list of files; "./[a,b]" is the same file.
    const std::string before = argv[i - 1];
    const bool is_field = before == "--csv" || before == "--json-lines";
    const bool is_list = has_files && !is_field && argument.starts_with('[');
    arguments.push_back(is_list ? "./" + argument : argument);
  }
  return arguments;
}

}  // namespace

CommandLine parse_command_line(int argc, const char* const* argv) {
  CLI::App app("Converts, edits and draws formatted text in slash-code markup, RTF and plain text.",
               "qel");
  app.set_version_flag("--version", std::string("qel ") + version);
  app.require_subcommand(1);
  app.formatter(std::make_shared<HelpFormat>());
  app.footer(
      "Exit status: 0, 1 when something failed, texts differ or markup has findings,\n"
      "2 for arguments that do not fit.");
  bool is_stated = false;
  app.add_flag(
      "--stated", is_stated,
      "Read and write as the text box's classes do at first, with what that loses: fonts and "
      "colours from 4 on, small capitals, text that looks like a code");
  // Markup begins with a slash, too.
  app.allow_windows_style_options(false);
  app.fallthrough();
  const ConvertCommand convert(*app.add_subcommand("convert", "Convert files"));
  CLI::App* const tables_app =
      app.add_subcommand("tables", "Print the tables of fonts and colours as records");
  const TableOptions tables(*tables_app);
  tables_app->footer(tables_examples);
  const TextCommands text(*app.add_subcommand("text", "Work on markup by visible characters"));
  const RenderCommand render(*app.add_subcommand("render", "Draw markup as a picture (SVG)"));
  const LintCommand lint(
      *app.add_subcommand("lint", "Find what in markup may not be what its author meant"));

  CommandLine line;
  try {
    app.parse(reversed_arguments(argc, argv));
  } catch (const CLI::CallForHelp&) {
    line.text = app.help();
    return line;
  } catch (const CLI::CallForVersion& call) {
    line.text = std::string(call.what()) + "\n";
    return line;
  } catch (const CLI::ParseError& error) {
    throw usage_error(app, argc, argv, error);
  }
  const Way way = is_stated ? Way::stated : Way::lossless;
  if (convert.is_asked_for()) {
    line.action = CommandLine::Action::convert;
    line.conversions = convert.values(way);
    return line;
  }
  const bool is_text = text.is_asked_for();
  if (is_text || render.is_asked_for()) {
    line.action = CommandLine::Action::text;
    line.task = is_text ? text.values(way) : render.values(way);
    return line;
  }
  if (lint.is_asked_for()) {
    line.action = CommandLine::Action::lint;
    line.checks = lint.values(way);
    return line;
  }
  line.action = CommandLine::Action::tables;
  line.tables = tables.values();
  return line;
}

}  // namespace qel::command
