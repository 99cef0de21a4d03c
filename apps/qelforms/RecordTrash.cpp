// What lists do with records: the trash, tags and duplicates.

#include <utility>

#include "Headings.h"
#include "RecordStore.h"
#include "SearchWords.h"

namespace qel::forms {

void RecordStore::require(std::int64_t id) const {
  if (Statement(database_, "SELECT 1 FROM records WHERE id = ?", id).step()) return;
  database_.fail(no_such_record, "read", "there is no record " + std::to_string(id));
}

void RecordStore::move_to_trash(std::span<const std::int64_t> ids) {
  together([&] {
    const std::int64_t time = time_now();
    Statement moved(database_, "INSERT OR IGNORE INTO trash VALUES(?, ?)");
    for (const std::int64_t id : ids) {
      require(id);
      moved.begin_with(id, time);
      moved.run();
    }
  });
}

void RecordStore::restore(std::span<const std::int64_t> ids) {
  together([&] {
    Statement restored(database_, "DELETE FROM trash WHERE record = ?");
    for (const std::int64_t id : ids) {
      require(id);
      restored.begin_with(id);
      restored.run();
    }
  });
}

void RecordStore::remove(std::span<const std::int64_t> ids) {
  together([&] {
    Statement records(database_, "DELETE FROM records WHERE id = ?");
    Statement drafts(database_, "DELETE FROM drafts WHERE record = ?");
    for (const std::int64_t id : ids) {
      require(id);
      records.begin_with(id);
      records.run();
      drafts.begin_with(id);
      drafts.run();
    }
    catch_up(ids.size());
  });
}

std::size_t RecordStore::empty_trash() {
  std::vector<std::int64_t> ids;
  together([&] {
    Statement trash(database_, "SELECT record FROM trash JOIN records ON id = record");
    while (trash.step()) ids.push_back(trash.integer(0));
    remove(ids);
  });
  return ids.size();
}

std::vector<std::int64_t> RecordStore::duplicate(std::span<const std::int64_t> ids) {
  std::vector<Record> copies;
  together([&] {
    for (const std::int64_t id : ids) {
      const Record record = load(id);
      copies.emplace_back();
      copies.back().title = record.title;
      copies.back().body = record.body;
    }
    save(copies);
    Statement tags(database_,
                   "INSERT INTO tags(record, key, name) SELECT ?, key, name FROM tags"
                   " WHERE record = ?");
    for (std::size_t i = 0; i < copies.size(); ++i) {
      tags.begin_with(copies[i].id, ids[i]);
      tags.run();
    }
  });
  std::vector<std::int64_t> made;
  made.reserve(copies.size());
  for (const Record& copy : copies) made.push_back(copy.id);
  return made;
}

std::vector<std::u16string> RecordStore::tags(std::int64_t id) const {
  std::vector<std::u16string> names;
  Statement query(database_, "SELECT name FROM tags WHERE record = ? ORDER BY key", id);
  while (query.step()) names.push_back(query.text(0));
  return names;
}

void RecordStore::put_tags(std::int64_t id, std::span<const std::u16string> tags) {
  together([&] {
    require(id);
    Statement(database_, "DELETE FROM tags WHERE record = ?", id).run();
    Statement added(database_,
                    "INSERT OR IGNORE INTO tags(record, key, name) VALUES(?1, ?2,"
                    " coalesce((SELECT name FROM tags WHERE key = ?2 LIMIT 1), ?3))");
    for (const std::u16string& tag : tags) {
      const std::u16string name = simplified(tag);
      if (name.empty()) continue;
      added.begin_with(id, tag_key(name), name);
      added.run();
    }
  });
}

std::vector<std::u16string> RecordStore::all_tags() const {
  std::vector<std::u16string> names;
  Statement query(database_,
                  "SELECT min(name) FROM tags JOIN records ON id = record"
                  " WHERE record NOT IN (SELECT record FROM trash) GROUP BY key ORDER BY key");
  while (query.step()) names.push_back(query.text(0));
  return names;
}

}  // namespace qel::forms
