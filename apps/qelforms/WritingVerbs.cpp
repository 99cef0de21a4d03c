// The verbs that change the records.

#include <memory>
#include <optional>
#include <stdexcept>

#include "Files.h"
#include "Headings.h"
#include "HeadlessForm.h"
#include "Import.h"
#include "Markup.h"
#include "Program.h"
#include "UsageError.h"
#include "VerbSet.h"
#include "qel/base/Utf8.h"
#include "qel/convert/Convert.h"

namespace qel::forms {
namespace {

using command::UsageError;

std::u16string read_markup(const std::string& path) {
  const std::string bytes = command::read_file(path);
  return markup_of_file(convert::is_rtf(bytes) ? convert::markup_from_rtf(bytes) : bytes);
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

  void exclude(CLI::Option* other) {
    text_->excludes(other);
    file_->excludes(other);
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

struct Texts {
  TextOption title;
  TextOption body;
  std::vector<std::string> files;
};

void print_numbers(const std::vector<std::int64_t>& ids) {
  std::string lines;
  for (const std::int64_t id : ids) lines.append(std::to_string(id)).append("\n");
  command::print(lines);
}

/// Adds a record for each file, or none where one of them cannot be read; says which.
int add_files(const VerbSet& verbs, const std::vector<std::string>& files) {
  std::vector<Record> records;
  for (const std::string& file : files) {
    try {
      records.push_back(imported(command::read_file(file), file));
    } catch (const std::runtime_error& error) {
      command::complain("qelforms", std::string(error.what()) + "; no file was added");
    }
  }
  if (records.size() < files.size()) return command::failed;
  verbs.open(true).save(records);
  std::vector<std::int64_t> ids;
  ids.reserve(records.size());
  for (const Record& record : records) ids.push_back(record.id);
  print_numbers(ids);
  return command::success;
}

int edit(const VerbSet& verbs, const Texts& texts, bool is_new) {
  const std::optional<std::u16string> title = texts.title.value();
  const std::optional<std::u16string> body = texts.body.value();
  if (!title && !body) throw UsageError("neither a title nor a body is given");
  RecordStore store = verbs.open(is_new);
  HeadlessForm host(store);
  RecordForm& form = host.form();
  if (!is_new) form.load(verbs.ids().front());
  if (title) form.put_title(*title);
  if (body) form.put_body(*body);
  form.save();
  if (is_new) print_numbers({form.record().id});
  return command::success;
}

void add_add(VerbSet& verbs) {
  const auto texts = std::make_shared<Texts>();
  CLI::App& verb =
      verbs.add("add", "Add a record, or one for each file; print numbers", [&verbs, texts] {
        return texts->files.empty() ? edit(verbs, *texts, true) : add_files(verbs, texts->files);
      });
  texts->title.add_to(verb, "title", "Markup of the title");
  texts->body.add_to(verb, "body", "Markup of the body");
  CLI::Option* const files =
      verb.add_option("--files", texts->files,
                      "Files of RTF, HTML, text or markup, told by their ending and\n"
                      "content; all of them are added or none")
          ->type_name("FILE...");
  texts->title.exclude(files);
  texts->body.exclude(files);
}

void add_edit(VerbSet& verbs) {
  const auto texts = std::make_shared<Texts>();
  CLI::App& verb = verbs.add("edit", "Change a record; one in the trash comes back",
                             [&verbs, texts] { return edit(verbs, *texts, false); });
  verbs.add_ids(verb, "Number of the record")->required()->expected(1);
  texts->title.add_to(verb, "title", "Markup of the title");
  texts->body.add_to(verb, "body", "Markup of the body");
}

/// A verb that works on records by their numbers.
CLI::App& add_for_records(VerbSet& verbs, const std::string& name, const std::string& meaning,
                          const std::function<void(RecordStore& store)>& work) {
  CLI::App& verb = verbs.add(name, meaning, [&verbs, work] {
    RecordStore store = verbs.open();
    work(store);
    return command::success;
  });
  verbs.add_ids(verb, "Numbers of records")->required();
  return verb;
}

struct Tagging {
  std::vector<std::string> added;
  std::vector<std::string> dropped;
};

void change_tags(RecordStore& store, const std::vector<std::int64_t>& ids, const Tagging& change) {
  store.together([&] {
    for (const std::int64_t id : ids) {
      std::vector<std::u16string> tags = store.tags(id);
      for (const std::string& tag : change.dropped) {
        const std::u16string key = tag_key(convert::decode_text(tag));
        std::erase_if(tags, [&key](const std::u16string& kept) { return tag_key(kept) == key; });
      }
      for (const std::string& tag : change.added) tags.push_back(convert::decode_text(tag));
      store.put_tags(id, tags);
    }
  });
}

void print_tags(const RecordStore& store, const std::vector<std::int64_t>& ids) {
  std::string lines;
  if (ids.empty()) {
    for (const std::u16string& tag : store.all_tags()) lines.append(to_utf8(tag)).append("\n");
  }
  for (const std::int64_t id : ids) {
    store.load(id);
    for (const std::u16string& tag : store.tags(id)) {
      lines.append(std::to_string(id)).append("\t").append(to_utf8(tag)).append("\n");
    }
  }
  command::print(lines);
}

void add_tag(VerbSet& verbs) {
  const auto change = std::make_shared<Tagging>();
  CLI::App& verb = verbs.add("tag",
                             "Add and drop tags of records. Without either, list\n"
                             "their tags (number, TAB, tag); without a number,\n"
                             "all tags that there are",
                             [&verbs, change] {
                               const bool changes =
                                   !change->added.empty() || !change->dropped.empty();
                               if (changes && verbs.ids().empty()) {
                                 throw UsageError("no record is named");
                               }
                               RecordStore store = verbs.open();
                               if (changes) {
                                 change_tags(store, verbs.ids(), *change);
                               } else {
                                 print_tags(store, verbs.ids());
                               }
                               return command::success;
                             });
  verbs.add_ids(verb, "Numbers of records");
  add_repeated(verb, "--add", change->added, "Tag to add; may be given several times")
      ->type_name("TAG");
  add_repeated(verb, "--drop", change->dropped, "Tag to drop; may be given several times")
      ->type_name("TAG");
}

void add_remove(VerbSet& verbs) {
  const auto for_good = std::make_shared<bool>(false);
  CLI::App& verb = add_for_records(verbs, "remove", "Move records to the trash",
                                   [&verbs, for_good](RecordStore& store) {
                                     if (*for_good) {
                                       store.remove(verbs.ids());
                                     } else {
                                       store.move_to_trash(verbs.ids());
                                     }
                                   });
  verb.add_flag("--for-good", *for_good, "Remove them for good, from the trash, too");
}

}  // namespace

void add_writing_verbs(VerbSet& verbs) {
  add_add(verbs);
  add_edit(verbs);
  add_for_records(verbs, "duplicate", "Add copies of records, and print their numbers",
                  [&verbs](RecordStore& store) { print_numbers(store.duplicate(verbs.ids())); });
  add_tag(verbs);
  add_remove(verbs);
  add_for_records(verbs, "restore", "Bring records back from the trash",
                  [&verbs](RecordStore& store) { store.restore(verbs.ids()); });
  verbs.add("empty-trash", "Remove all records in the trash for good", [&verbs] {
    verbs.open().empty_trash();
    return command::success;
  });
}

}  // namespace qel::forms
