// The verbs that leave the records as they are.

#include <memory>
#include <stdexcept>

#include "Export.h"
#include "Files.h"
#include "FormTables.h"
#include "Program.h"
#include "UsageError.h"
#include "VerbSet.h"
#include "Verbs.h"
#include "qel/base/Utf8.h"
#include "qel/convert/Convert.h"

namespace qel::forms {
namespace {

std::string lines_of(const std::vector<Heading>& headings) {
  std::string lines;
  for (const Heading& heading : headings) {
    lines.append(std::to_string(heading.id)).append("\t");
    lines.append(to_utf8(heading.title));
    if (!heading.snippet.empty()) lines.append("\t").append(to_utf8(heading.snippet));
    lines.append("\n");
  }
  return lines;
}

/// Which records, in which order, by options.
class ListingOptions {
 public:
  explicit ListingOptions(bool trash = false) { listing_.trash = trash; }
  ListingOptions(const ListingOptions&) = delete;
  ListingOptions& operator=(const ListingOptions&) = delete;

  /// Adds the options to `verb`; they refer to this object.
  void add_tag(CLI::App& verb) {
    verb.add_option("--tag", tag_, "Only records with this tag")->type_name("TAG");
  }
  void add_order(CLI::App& verb) {
    verb.add_option("--sort", order_, "By what to order them: created (at first), changed, title")
        ->type_name("WHAT")
        ->check(CLI::IsMember({"created", "changed", "title"}).description({}));
    verb.add_flag("--reverse", reverse_, "The last first");
  }

  Listing value() const {
    Listing listing = listing_;
    listing.tag = convert::decode_text(tag_);
    listing.ascending = !reverse_;
    if (order_ == "title") listing.order = Order::title;
    if (order_ == "changed") listing.order = Order::changed;
    return listing;
  }

 private:
  Listing listing_;
  std::string tag_;
  std::string order_;
  bool reverse_ = false;
};

void add_list(VerbSet& verbs, const std::string& name, const std::string& meaning, bool trash) {
  const auto options = std::make_shared<ListingOptions>(trash);
  CLI::App& verb = verbs.add(name, meaning, [&verbs, options] {
    command::print(lines_of(verbs.open().list(options->value())));
    return command::success;
  });
  options->add_tag(verb);
  options->add_order(verb);
}

void add_find(VerbSet& verbs) {
  const auto wanted = std::make_shared<std::string>();
  const auto options = std::make_shared<ListingOptions>();
  CLI::App& verb = verbs.add("find",
                             "List the records with all of these words, the best\n"
                             "first: as 'list', TAB, the words around those found",
                             [&verbs, wanted, options] {
                               RecordStore store = verbs.open();
                               const std::vector<Heading> found =
                                   store.find(convert::decode_text(*wanted), options->value());
                               command::print(lines_of(found));
                               return found.empty() ? command::failed : command::success;
                             });
  verb.add_option("TEXT", *wanted, "Words in any order; the last one may be the beginning of one")
      ->type_name("")
      ->required();
  options->add_tag(verb);
}

struct Output {
  std::string format;
  std::string path = "-";
  std::string title;

  /// By its name, else by the ending of the file.
  ExportFormat chosen() const {
    for (const ExportFormatName& known : export_formats()) {
      if (format == known.name) return known.format;
    }
    if (path == "-") return ExportFormat::qel;
    try {
      return format_of_file(path);
    } catch (const std::runtime_error& error) {
      throw command::UsageError(std::string(error.what()) + "; --as FORMAT says it");
    }
  }
};

std::vector<Record> load_all(const RecordStore& store, const std::vector<std::int64_t>& ids) {
  std::vector<Record> records;
  records.reserve(ids.size());
  for (const std::int64_t id : ids) records.push_back(store.load(id));
  return records;
}

int write(const RecordStore& store, const std::vector<std::int64_t>& ids, const Output& target,
          const Desktop& desktop) {
  const ExportFormat format = target.chosen();
  const bool is_pdf = format == ExportFormat::pdf;
  if (is_pdf && !desktop.make_pdf) {
    throw std::runtime_error("PDF needs Qt, and this program was built without it");
  }
  const std::vector<Record> records = load_all(store, ids);
  const command::Tables tables = load_tables(store);
  const std::u16string title = convert::decode_text(target.title);
  const std::string document =
      is_pdf ? desktop.make_pdf(records, tables, title) : exported(records, format, tables, title);
  command::OutputFile output(target.path);
  output.write(document);
  output.finish();
  return command::success;
}

void add_format(CLI::App& verb, Output& output, bool is_file) {
  std::vector<std::string> names;
  for (const ExportFormatName& known : export_formats()) {
    const bool is_text = known.format != ExportFormat::pdf && known.format != ExportFormat::svg;
    if (is_file || is_text) names.emplace_back(known.name);
  }
  verb.add_option("--as", output.format,
                  "Format to write: " + CLI::detail::join(names, ", ") +
                      (is_file ? "; else by the ending of FILE" : ""))
      ->type_name("FORMAT")
      ->check(CLI::IsMember(names).description({}));
}

void add_show(VerbSet& verbs, const Desktop& desktop) {
  const auto output = std::make_shared<Output>();
  CLI::App& verb = verbs.add("show", "Print a record", [&verbs, &desktop, output] {
    return write(verbs.open(), verbs.ids(), *output, desktop);
  });
  verbs.add_ids(verb, "Number of the record")->required()->expected(1);
  add_format(verb, *output, false);
}

void add_export(VerbSet& verbs, const Desktop& desktop) {
  const auto output = std::make_shared<Output>();
  const auto options = std::make_shared<ListingOptions>();
  CLI::App& verb =
      verbs.add("export", "Write records to one document", [&verbs, &desktop, output, options] {
        const RecordStore store = verbs.open();
        std::vector<std::int64_t> ids = verbs.ids();
        if (ids.empty()) {
          for (const Heading& heading : store.list(options->value())) ids.push_back(heading.id);
        }
        return write(store, ids, *output, desktop);
      });
  verbs.add_ids(verb, "Numbers of records; all of them when none is named");
  add_format(verb, *output, true);
  verb.add_option("-o,--output", output->path, "File to write instead of standard output")
      ->type_name("FILE");
  verb.add_option("--title", output->title, "Title of the document, for HTML and PDF")
      ->type_name("TEXT");
  options->add_tag(verb);
  options->add_order(verb);
}

}  // namespace

void add_reading_verbs(VerbSet& verbs, const Desktop& desktop) {
  add_list(verbs, "list", "List the records: number, TAB, visible title", false);
  add_find(verbs);
  add_show(verbs, desktop);
  add_export(verbs, desktop);
  add_list(verbs, "trash", "List the records in the trash, as 'list' does", true);
}

}  // namespace qel::forms
