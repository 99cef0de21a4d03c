#include "Verbs.h"

#include <CLI/CLI.hpp>
#include <cstdint>
#include <filesystem>
#include <functional>
#include <memory>
#include <optional>
#include <stdexcept>
#include <string>
#include <utility>
#include <vector>

#include "Export.h"
#include "Files.h"
#include "FormTables.h"
#include "HeadlessForm.h"
#include "HelpFormat.h"
#include "Markup.h"
#include "Program.h"
#include "RecordStore.h"
#include "Usage.h"
#include "qel/base/Utf8.h"
#include "qel/convert/Convert.h"
#include "qel/version.h"

namespace qel::forms {
namespace {

using command::UsageError;

constexpr const char* examples = R"(Examples:
  qelforms notes.db
  qelforms add --database notes.db --title '/b1Tea/b0' --body-file tea.qel
  qelforms edit 1 --database notes.db --title 'Green tea'
  qelforms find tea --database notes.db
  qelforms export --database notes.db --as rtf -o notes.rtf

A text from a file is markup or RTF; its line breaks become line codes.
Exit status: 0, 1 when something failed, 2 for arguments that do not fit.)";

ExportFormat format_named(const std::string& name) {
  if (name == "rtf") return ExportFormat::rtf;
  if (name == "text") return ExportFormat::text;
  return name == "svg" ? ExportFormat::svg : ExportFormat::qel;
}

/// The markup of a file, without the line break at its end.
std::u16string read_markup(const std::string& path) {
  std::string bytes = command::read_file(path);
  if (convert::is_rtf(bytes)) bytes = convert::markup_from_rtf(bytes);
  std::u16string text = convert::decode_text(bytes);
  if (text.ends_with(u'\n')) text.pop_back();
  if (text.ends_with(u'\r')) text.pop_back();
  return with_line_codes(text);
}

/// A text that is given by an option, or by a file that another option names.
class TextOption {
 public:
  TextOption() = default;
  TextOption(const TextOption&) = delete;
  TextOption& operator=(const TextOption&) = delete;

  /// Adds the options to `app`; they refer to this object.
  void add_to(CLI::App& app, const std::string& name, const std::string& meaning) {
    text_ = app.add_option("--" + name, given_, meaning)->type_name("TEXT");
    file_ =
        app.add_option("--" + name + "-file", path_, "File to read it from, '-' for standard input")
            ->type_name("FILE")
            ->excludes(text_);
  }

  std::optional<std::u16string> value() const {
    if (text_->count() > 0) return with_line_codes(convert::decode_text(given_));
    if (file_->count() > 0) return read_markup(path_);
    return {};
  }

 private:
  std::string given_;
  std::string path_;
  CLI::Option* text_ = nullptr;
  CLI::Option* file_ = nullptr;
};

/// The verbs: their options, and their work on the store.
class Verbs {
 public:
  explicit Verbs(CLI::App& app) : app_(app) {
    add("list", "List the records: number, TAB, visible title", [this] { print(open().list()); });
    add_find();
    add_show();
    add_edit("add", "Add a record and print its number", true);
    add_edit("edit", "Change a record", false);
    add_export();
    CLI::App& remove = add("remove", "Remove records", [this] { open().remove(ids_); });
    add_ids(remove, "Numbers of records")->required();
  }

  /// Adds the arguments that open the window, without a verb.
  void add_window() {
    app_.add_option("FILE", window_.database,
                    "Opens a window on this file of records; on the user's own\n"
                    "where no file and no command is given")
        ->type_name("");
    app_.add_option("-d,--database", window_.database, "The same")->type_name("FILE");
    app_.add_option("--demo", window_.demo_picture,
                    "Type a record in the window without a user, and write a picture of it")
        ->type_name("PICTURE");
  }

  int run(const WindowOpener& open_window) const {
    if (app_.get_subcommands().empty()) {
      refuse_misspelt_verb(window_.database);
      return open_window(window_);
    }
    for (const auto& [verb, work] : verbs_) {
      if (verb->parsed()) work();
    }
    return command::success;
  }

 private:
  /// A bare word that is not the name of a file is more likely a misspelt verb than the name of a
  /// new file.
  static void refuse_misspelt_verb(const std::string& word) {
    if (word.empty() || word.find_first_of("./") != std::string::npos) return;
    if (std::filesystem::exists(word)) return;
    throw UsageError("'" + word + "' is not a command (see 'qelforms --help')");
  }

  CLI::App& add(const std::string& name, const std::string& meaning, std::function<void()> work) {
    CLI::App& verb = *app_.add_subcommand(name, meaning);
    verb.add_option("-d,--database", database_, "File that holds the records (required)")
        ->type_name("FILE")
        ->required();
    verbs_.emplace_back(&verb, std::move(work));
    return verb;
  }

  CLI::Option* add_ids(CLI::App& verb, const std::string& meaning) {
    return verb.add_option("ID", ids_, meaning)->type_name("");
  }

  void add_format(CLI::App& verb, const std::vector<std::string>& names) {
    verb.add_option("--as", format_, "Format to write: " + CLI::detail::join(names, ", "))
        ->type_name("FORMAT")
        ->check(CLI::IsMember(names).description({}));
  }

  void add_find() {
    CLI::App& verb = add("find",
                         "List the records with all of these words, the best first: number, TAB,\n"
                         "visible title, TAB, the words around those found in the body",
                         [this] { print(open().find(convert::decode_text(wanted_))); });
    verb.add_option("TEXT", wanted_, "Words in any order; the last one may be the beginning of one")
        ->type_name("")
        ->required();
  }

  void add_show() {
    CLI::App& verb = add("show", "Print a record", [this] { write(open(), ids_); });
    add_ids(verb, "Number of the record")->required()->expected(1);
    add_format(verb, {"qel", "text", "rtf"});
  }

  void add_export() {
    CLI::App& verb = add("export", "Write records to one document", [this] {
      const RecordStore store = open();
      write(store, ids_.empty() ? all_ids(store) : ids_);
    });
    add_ids(verb, "Numbers of records; all of them when none is named");
    add_format(verb, {"rtf", "text", "svg", "qel"});
    verb.add_option("-o,--output", output_, "File to write instead of standard output")
        ->type_name("FILE");
  }

  void add_edit(const std::string& name, const std::string& meaning, bool is_new) {
    const auto title = std::make_shared<TextOption>();
    const auto body = std::make_shared<TextOption>();
    CLI::App& verb = add(name, meaning, [this, title, body, is_new] {
      edit(is_new, title->value(), body->value());
    });
    if (!is_new) add_ids(verb, "Number of the record")->required()->expected(1);
    title->add_to(verb, "title", "Markup of the title");
    body->add_to(verb, "body", "Markup of the body");
  }

  RecordStore open(bool creates = false) const {
    RecordStore::Options options;
    options.creates = creates;
    return RecordStore(database_, options);
  }

  void edit(bool is_new, const std::optional<std::u16string>& title,
            const std::optional<std::u16string>& body) {
    if (!title && !body) throw UsageError("neither a title nor a body is given");
    RecordStore store = open(is_new);
    HeadlessForm host(store);
    RecordForm& form = host.form();
    if (!is_new) form.load(ids_.front());
    if (title) form.put_title(*title);
    if (body) form.put_body(*body);
    form.save();
    if (is_new) command::print(std::to_string(form.record().id) + "\n");
  }

  static std::vector<std::int64_t> all_ids(const RecordStore& store) {
    std::vector<std::int64_t> ids;
    for (const Heading& heading : store.list()) ids.push_back(heading.id);
    return ids;
  }

  static void print(const std::vector<Heading>& headings) {
    std::string lines;
    for (const Heading& heading : headings) {
      lines.append(std::to_string(heading.id)).append("\t");
      lines.append(to_utf8(heading.title));
      if (!heading.snippet.empty()) lines.append("\t").append(to_utf8(heading.snippet));
      lines.append("\n");
    }
    command::print(lines);
  }

  void write(const RecordStore& store, const std::vector<std::int64_t>& ids) const {
    std::vector<Record> records;
    records.reserve(ids.size());
    for (const std::int64_t id : ids) records.push_back(store.load(id));
    const std::string document = exported(records, format_named(format_), load_tables(store));
    command::OutputFile output(output_);
    output.write(document);
    output.finish();
  }

  CLI::App& app_;
  WindowRequest window_;
  std::vector<std::pair<CLI::App*, std::function<void()>>> verbs_;
  std::string database_;
  std::vector<std::int64_t> ids_;
  std::string wanted_;
  std::string format_ = "qel";
  std::string output_ = "-";
};

}  // namespace

int run_verb(int argc, const char* const* argv, const WindowOpener& open_window) {
  CLI::App app("Keeps records with formatted titles and bodies in a database.", "qelforms");
  app.formatter(std::make_shared<command::HelpFormat>());
  app.set_version_flag("--version", std::string("qelforms ") + version);
  app.require_subcommand(open_window ? 0 : 1, 1);
  app.footer(examples);
  Verbs verbs(app);
  if (open_window) verbs.add_window();
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
    return verbs.run(open_window);
  } catch (const Error& error) {
    throw std::runtime_error(error.description());
  }
}

}  // namespace qel::forms
