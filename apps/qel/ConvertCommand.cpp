#include "ConvertCommand.h"

#include <algorithm>
#include <cstddef>
#include <set>
#include <system_error>
#include <thread>

#include "Files.h"
#include "Numbers.h"
#include "Paths.h"
#include "System.h"
#include "UsageError.h"

#if defined(QEL_HAS_HTML)
#include "qel/html/HtmlReader.h"
#endif

namespace qel::command {
namespace {

constexpr int most_jobs = 256;

constexpr const char* convert_examples = R"(Examples:
  printf 'Hello /b1world/b0/nl' | qel convert --from qel --to rtf
  qel convert letter.qel --to rtf -o letter.rtf
  qel convert letter.rtf --to text
  qel convert *.rtf --to qel -d markup --jobs 4
  qel convert --recursive notes --to rtf -d letters --skip-newer
  qel convert note.qel --to rtf --font 0=Helvetica --color 4=#1E90FF --font-size 12
  qel convert form.rtf --to qel --field
  qel convert --json-lines note=rtf --to rtf < notes.jsonl > letters.jsonl

Exit status: 0, 1 when something failed, 2 for arguments that do not fit.)";

/// The format with this name; empty when no name was given.
template <class Find>
auto format_of(const std::optional<std::string>& name, Find find, const std::string& option,
               const std::string& names) {
  auto format = name ? find(*name) : decltype(find(*name))();
  if (name && !format) throw UsageError(option + ": '" + *name + "' is not one of " + names);
  return format;
}

void create_folders_of(const std::vector<Task>& tasks) {
  std::set<std::string> folders;
  for (const Task& task : tasks) {
    folders.insert(to_text(to_path(task.output).parent_path()));
  }
  for (const std::string& folder : folders) {
    const std::error_code error = system::create_folders(folder);
    if (error) throw FileError("cannot create " + folder + ": " + error.message());
  }
}

/// "FIELD" or "FIELD=NEW" each.
std::vector<FieldMapping> mappings_of(const std::vector<std::string>& fields) {
  std::vector<FieldMapping> mappings;
  std::set<std::string> targets;
  for (const std::string& field : fields) {
    const std::size_t sign = field.find('=');
    const std::string from = field.substr(0, sign);
    mappings.push_back({from, sign == std::string::npos ? from : field.substr(sign + 1)});
    if (mappings.back().to.empty()) throw UsageError("'" + field + "' names no field to write");
    if (!targets.insert(mappings.back().to).second) {
      throw UsageError("two fields would both become '" + mappings.back().to + "'");
    }
  }
  return mappings;
}

}  // namespace

bool run(const Conversions& conversions) {
  const BatchOptions& options = conversions.options;
  if (conversions.records) {
    return convert_records(conversions.files.front().path, conversions.output,
                           *conversions.records);
  }
  if (!conversions.folder) {
    return convert_files({{conversions.files.front().path, conversions.output}}, options);
  }
  const std::vector<Task> tasks =
      tasks_into(*conversions.folder, conversions.files, options.conversion.to);
  create_folders_of(tasks);
  return convert_files(tasks, options);
}

ConvertCommand::ConvertCommand(CLI::App& app) : app_(app), switches_(app), tables_(app) {
  add_formats();
  add_outputs();
  add_files();
  add_records();
  app.footer(convert_examples);
}

void ConvertCommand::add_files() {
  app_.add_option("FILE", files_, "Files to convert; standard input when none is named, or for '-'")
      ->type_name("");
  const auto add_list = [this](const std::string& name, const std::string& meaning) {
    return app_.add_option(name, list_path_, meaning)->type_name("FILE")->needs(folder_);
  };
  line_list_ = add_list("--files-from", "Also convert the files named in FILE, one on each line");
  zero_list_ = add_list("--files0-from", "The same with a NUL character after each name")
                   ->excludes(line_list_);
  app_.add_flag("-r,--recursive", is_recursive_,
                "Convert what is in folders, too, and write it to folders of the same names")
      ->needs(folder_);
}

void ConvertCommand::add_formats() {
  app_.add_option("--from", from_,
                  "What the input is: " + convert::input_format_names() +
                      "; taken from the file's extension or first bytes otherwise")
      ->type_name("FORMAT");
  app_.add_option("--to", to_, "What to write: " + convert::output_format_names())
      ->type_name("FORMAT")
      ->required();
  normalize_ =
      app_.add_flag("--normalize", normalizes_, "Write markup in the shortest way (with --to qel)");
  add_contents();
}

void ConvertCommand::add_contents() {
  for_rtf_ = {
      app_.add_flag("--notes", extras_.notes, "Keep footnotes, endnotes and annotations of RTF"),
      app_.add_flag("--headers", extras_.headers, "Keep headers and footers of RTF"),
      app_.add_flag("--links", extras_.links, "Keep the addresses of links in RTF"),
      app_.add_flag("--alternative-texts", extras_.alternative_texts,
                    "Keep what RTF has in place of pictures")};
  for_html_ = {
      app_.add_flag("--html-document", html_.whole_document,
                    "Write a whole document of HTML instead of a fragment"),
      app_.add_flag("--html-paragraphs", html_.paragraphs,
                    "Write each line as a paragraph of HTML instead of ending it with a break"),
      app_.add_flag("--html-classes", html_.classes,
                    "Write fonts and colours of HTML as classes instead of styles")};
}

void ConvertCommand::add_outputs() {
  output_ = app_.add_option("-o,--output", output_path_, "File to write instead of standard output")
                ->type_name("FILE");
  folder_ = app_.add_option("-d,--directory", folder_path_,
                            "Folder to write to, one file for each that is read")
                ->type_name("DIR")
                ->excludes(output_);
  skip_ = app_.add_flag("--skip-newer", skips_newer_,
                        "Leave a file alone that is newer than the one it would be made from");
  reports_ = app_.add_flag("--report{text}", report_,
                           "Say on standard error what was dropped of each file, as text or, with "
                           "--report=json, as JSON lines")
                 ->check(CLI::IsMember({"text", "json"}).description({}));
  app_.add_option("-j,--jobs", jobs_,
                  "How many files, or parts of one with records, to convert at a time; as many as "
                  "there are processors otherwise")
      ->type_name("N")
      ->transform(whole_number(1, most_jobs));
}

void ConvertCommand::add_records() {
  const auto add = [this](const std::string& name, const std::string& meaning) {
    return app_.add_option(name, fields_, meaning)
        ->type_name("FIELD[=NEW]")
        ->allow_extra_args(false)
        ->excludes(folder_)
        ->excludes(skip_)
        ->excludes(reports_)
        ->group("Fields of records");
  };
  json_ =
      add("--json-lines",
          "Convert this field of JSON objects, one on each line; the result takes its place, or "
          "that of field NEW; can be repeated");
  csv_ = add("--csv", "The same for values with commas between them and names in the first line");
  csv_->excludes(json_);
  app_.add_option(
          "--on-error", on_error_,
          "What becomes of a bad record: stop ends there (the default), pass writes it as it is, "
          "skip leaves it out")
      ->type_name("WHAT")
      ->check(CLI::IsMember({"stop", "pass", "skip"}).description({}))
      ->group("Fields of records");
}

std::vector<std::string> ConvertCommand::names() const {
  std::vector<std::string> names = files_matching(files_);
  const bool has_lines = line_list_->count() > 0;
  if (has_lines || zero_list_->count() > 0) {
    const auto listed = names_in_list(list_path_, has_lines ? '\n' : '\0');
    names.insert(names.end(), listed.begin(), listed.end());
  } else if (names.empty()) {
    names.emplace_back("-");
  }
  return names;
}

std::vector<InputPath> ConvertCommand::files() const {
  if (is_recursive_) return with_files_of_folders(names(), {folder_path_, from_.has_value()});
  std::vector<InputPath> files;
  for (std::string& name : names()) files.push_back({std::move(name), {}});
  return files;
}

convert::Options ConvertCommand::conversion(Way way) const {
  convert::Options options;
  options.from =
      format_of(from_, convert::input_format_named, "--from", convert::input_format_names());
  options.to =
      *format_of(to_, convert::output_format_named, "--to", convert::output_format_names());
  options.switches = switches_.values();
  tables_.values().use_in(options);
  options.way = way;
  options.normalizes = normalizes_;
  options.html = html_;
  options.extras = extras_;
#if defined(QEL_HAS_HTML)
  options.html_reader = html::reader();
#endif
  check_fit(options);
  if (normalizes_ && way == Way::stated) throw UsageError("--normalize excludes --stated");
  return options;
}

/// Raises a `UsageError` for an option that says nothing about the formats which are named.
void ConvertCommand::check_fit(const convert::Options& options) const {
  const auto refuse = [](const std::vector<CLI::Option*>& given, const std::string& format) {
    for (const CLI::Option* option : given) {
      if (option->count() > 0) throw UsageError(option->get_name() + " needs " + format);
    }
  };
  if (options.to != convert::OutputFormat::html) refuse(for_html_, "--to html");
  if (options.to != convert::OutputFormat::qel) refuse({normalize_}, "--to qel");
  if (options.from && *options.from != convert::InputFormat::rtf) refuse(for_rtf_, "--from rtf");
}

RecordOptions ConvertCommand::records(const BatchOptions& options) const {
  RecordOptions records;
  records.kind = csv_->count() > 0 ? RecordKind::csv : RecordKind::json_lines;
  records.fields = mappings_of(fields_);
  records.on_error = on_error_ == "pass"   ? BadRecord::passes
                     : on_error_ == "skip" ? BadRecord::goes
                                           : BadRecord::stops;
  records.conversion = options.conversion;
  records.conversion.is_file = false;
  records.jobs = options.jobs;
  return records;
}

Conversions ConvertCommand::values(Way way) const {
  Conversions conversions;
  conversions.options.conversion = conversion(way);
  if (output_->count() > 0) conversions.output = output_path_;
  if (folder_->count() > 0) conversions.folder = folder_path_;
  if (files_.size() > 1 && !conversions.folder) {
    throw UsageError("more than one file needs a folder to write to: -d DIR");
  }
  conversions.files = files();
  conversions.options.skips_newer = skips_newer_;
  if (!report_.empty()) {
    conversions.options.report = report_ == "json" ? ReportStyle::json : ReportStyle::text;
  }
  conversions.options.jobs = jobs_ > 0 ? static_cast<std::size_t>(jobs_)
                                       : std::max(1U, std::thread::hardware_concurrency());
  if (has_records()) conversions.records = records(conversions.options);
  return conversions;
}

}  // namespace qel::command
