#include "CommandLine.h"

#include <CLI/CLI.hpp>
#include <algorithm>
#include <memory>
#include <thread>
#include <utility>

#include "HelpFormat.h"
#include "LintCommand.h"
#include "Numbers.h"
#include "RenderCommand.h"
#include "TableOptions.h"
#include "TextCommands.h"
#include "Usage.h"
#include "UsageError.h"
#include "qel/version.h"

namespace qel::command {
namespace {

constexpr const char* convert_examples = R"(Examples:
  printf 'Hello /b1world/b0/nl' | qel convert --from qel --to rtf
  qel convert letter.qel --to rtf -o letter.rtf
  qel convert letter.rtf --to text
  qel convert *.rtf --to qel -d markup --jobs 4
  qel convert note.qel --to rtf --font 0=Helvetica --color 4=#1E90FF --font-size 12
  qel convert form.rtf --to qel --field

Exit status: 0, 1 when something failed, 2 for arguments that do not fit.)";

constexpr const char* tables_examples = R"(Examples:
  qel tables > tables.txt
  qel tables --font 4=Georgia --font-size 11 > tables.txt
  qel convert letter.qel --to rtf --tables tables.txt

Colours in a record are read as 16-bit numbers: one above 32767 keeps what was there. Give such
colours with --color.)";

CLI::Option* add_switch(CLI::App& app, const std::string& name, const std::string& meaning) {
  return app.add_flag(name, meaning)->group("Breaks and tabs in what is read");
}

/// A switch that may be given by its name, by its name with "no-", or not at all.
class Switch {
 public:
  Switch(CLI::App& app, const std::string& name, const std::string& meaning) {
    yes_ = add_switch(app, "--" + name, meaning);
    no_ = add_switch(app, "--no-" + name, {})->excludes(yes_);
  }

  bool is_on() const { return yes_->count() > 0; }
  bool is_given() const { return is_on() || no_->count() > 0; }
  bool or_else(bool preset) const { return is_given() ? is_on() : preset; }

 private:
  CLI::Option* yes_;
  CLI::Option* no_;
};

class SwitchOptions {
 public:
  explicit SwitchOptions(CLI::App& app)
      : field_(add_switch(app, "--field",
                          "As a text box does: breaks and tabs become blanks, and one blank at the "
                          "end of the text goes")),
        nl_to_space_(app, "nl-to-space", "A line break becomes a blank"),
        tabs_to_space_(app, "tabs-to-space", "A tab becomes a blank"),
        recognize_crlf_(app, "recognize-crlf", "A line break is kept (the default)"),
        recognize_tabs_(app, "recognize-tabs", "A tab is kept (the default)") {}

  convert::Switches values() const {
    convert::Switches values =
        field_->count() > 0 ? convert::Switches::of_a_field() : convert::Switches();
    // A tab that is kept cannot become a blank too.
    if (tabs_to_space_.is_on()) values.recognize_tabs = false;
    values.convert_nl_to_space = nl_to_space_.or_else(values.convert_nl_to_space);
    values.convert_tabs_to_space = tabs_to_space_.or_else(values.convert_tabs_to_space);
    values.recognize_crlf = recognize_crlf_.or_else(values.recognize_crlf);
    values.recognize_tabs = recognize_tabs_.or_else(values.recognize_tabs);
    return values;
  }

 private:
  CLI::Option* field_;
  Switch nl_to_space_;
  Switch tabs_to_space_;
  Switch recognize_crlf_;
  Switch recognize_tabs_;
};

/// The format with this name; empty when no name was given.
template <class Find>
auto format_of(const std::optional<std::string>& name, Find find, const std::string& option,
               const std::string& names) {
  auto format = name ? find(*name) : decltype(find(*name))();
  if (name && !format) throw UsageError(option + ": '" + *name + "' is not one of " + names);
  return format;
}

class ConvertCommand {
 public:
  explicit ConvertCommand(CLI::App& app) : app_(app), switches_(app), tables_(app) {
    app.add_option("FILE", files_,
                   "Files to convert; standard input when none is named, or for '-'")
        ->type_name("");
    app.add_option("--from", from_,
                   "What the input is: " + convert::input_format_names() +
                       "; taken from the file's extension or first bytes otherwise")
        ->type_name("FORMAT");
    app.add_option("--to", to_, "What to write: " + convert::output_format_names())
        ->type_name("FORMAT")
        ->required();
    output_ =
        app.add_option("-o,--output", output_path_, "File to write instead of standard output")
            ->type_name("FILE");
    folder_ = app.add_option("-d,--directory", folder_path_,
                             "Folder to write to, one file for each that is read")
                  ->type_name("DIR")
                  ->excludes(output_);
    app.add_option("-j,--jobs", jobs_,
                   "How many files to convert at a time; as many as there are "
                   "processors otherwise")
        ->type_name("N")
        ->transform(whole_number(1, most_jobs));
    app.footer(convert_examples);
  }

  bool is_asked_for() const { return app_.parsed(); }

  CommandLine values() const {
    CommandLine line;
    line.action = CommandLine::Action::convert;
    line.files = files_.empty() ? std::vector<std::string>{"-"} : files_;
    if (output_->count() > 0) line.output = output_path_;
    if (folder_->count() > 0) line.folder = folder_path_;
    if (line.files.size() > 1 && !line.folder) {
      throw UsageError("more than one file needs a folder to write to: -d DIR");
    }
    line.jobs = jobs_ > 0 ? static_cast<std::size_t>(jobs_)
                          : std::max(1U, std::thread::hardware_concurrency());
    line.options.from =
        format_of(from_, convert::input_format_named, "--from", convert::input_format_names());
    line.options.to =
        *format_of(to_, convert::output_format_named, "--to", convert::output_format_names());
    line.options.switches = switches_.values();
    line.tables = tables_.values();
    line.tables.use_in(line.options);
    return line;
  }

 private:
  static constexpr int most_jobs = 256;

  const CLI::App& app_;
  std::vector<std::string> files_;
  std::optional<std::string> from_;
  std::optional<std::string> to_;
  std::string output_path_;
  std::string folder_path_;
  int jobs_ = 0;
  CLI::Option* output_ = nullptr;
  CLI::Option* folder_ = nullptr;
  SwitchOptions switches_;
  TableOptions tables_;
};

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
    const bool is_list = has_files && argument.starts_with('[');
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
    line = convert.values();
    line.options.way = way;
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
