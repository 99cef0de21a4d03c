// What the user does with records.

#include <QAction>
#include <algorithm>

#include "EditorSide.h"
#include "ListSide.h"
#include "MainWindow.h"
#include "Notice.h"
#include "RecordList.h"
#include "TagLine.h"
#include "Words.h"
#include "qel/base/Scoped.h"

namespace qel::forms {
namespace {

/// The name of all that puts another record into the form: only the last of it counts.
const QString opening = QStringLiteral("open");

bool holds(const std::vector<std::int64_t>& ids, std::int64_t id) {
  return std::find(ids.begin(), ids.end(), id) != ids.end();
}

}  // namespace

// One record.

void MainWindow::new_record() {
  if (!settle()) return;
  attempt(opening, [this] {
    form_->new_record();
    is_trashed_ = false;
    side_->show_trash(false);
    list().select(0);
    new_tags_.clear();
    editor_->tags().put_tags({});
    show_state();
    editor_->title().setFocus();
  });
}

/// `enters` takes the focus to the text.
void MainWindow::open_record(std::int64_t id, bool enters) {
  if (is_asking_) return;
  const Scoped asking(is_asking_, true);
  if (id != form_->record().id && !settle()) return list().select(form_->record().id);
  const bool is_shown = attempt(opening, [this, id, enters] {
    if (id != form_->record().id) show_record(id);
    if (enters) editor_->body().setFocus();
  });
  if (!is_shown && !retries_.waits_for(opening)) list().select(form_->record().id);
}

QStringList MainWindow::tags_of(std::int64_t id) const {
  QStringList tags;
  for (const std::u16string& tag : store_.tags(id)) tags.append(QString::fromStdU16String(tag));
  return tags;
}

void MainWindow::show_record(std::int64_t id) {
  const QStringList tags = tags_of(id);
  form_->load(id);
  is_trashed_ = side_->listing().trash && list().records().row_of(id) >= 0;
  list().select(id);
  new_tags_.clear();
  editor_->tags().put_tags(tags);
  if (!retries_.is_waiting()) tell({});
  show_counts();
  show_state();
}

/// Selects the records and shows the first, unless the user has begun to write meanwhile.
void MainWindow::show_records(const std::vector<std::int64_t>& ids) {
  if (form_->is_changed()) return list().select(form_->record().id);
  show_record(ids.front());
  list().select(ids);
}

void MainWindow::follow_selection() {
  show_state();
  const std::vector<std::int64_t> selected = list().selected();
  if (selected.size() != 1 || selected.front() == form_->record().id) return;
  open_record(selected.front(), false);
}

/// Goes to the first of the records that are listed now, unless that would interrupt the user.
void MainWindow::show_what_is_listed() {
  const std::int64_t shown = form_->record().id;
  if (shown == 0 || has_unsaved_work() || list().records().row_of(shown) >= 0) return;
  if (list().first() != 0) open_record(list().first(), false);
}

void MainWindow::put_tags() {
  const QStringList shown = editor_->tags().tags();
  const std::int64_t id = form_->record().id;
  new_tags_ = id == 0 ? shown : QStringList();
  if (id == 0) return show_state();
  std::vector<std::u16string> tags;
  for (const QString& tag : shown) tags.push_back(tag.toStdU16String());
  attempt(QStringLiteral("tags of %1").arg(id), [this, id, tags] {
    store_.put_tags(id, tags);
    show_tags();
    list_records();
  });
}

void MainWindow::duplicate_selected() {
  if (!end_work()) return;
  const std::vector<std::int64_t> ids = list().selected();
  const QString name = name_of(ids);
  attempt(QStringLiteral("duplicate"), [this, ids, name] {
    const std::vector<std::int64_t> copies = store_.duplicate(ids);
    list_records();
    show_records(copies);
    editor_->notice().tell(tr("Duplicated %1.").arg(name));
  });
}

// The trash.

void MainWindow::remove_selected() {
  const std::vector<std::int64_t> ids = list().selected();
  if (ids.empty()) return;
  editor_->tags().finish();
  // The trash keeps what was written last.
  if (holds(ids, form_->record().id) && form_->is_changed() && !save_and_wait()) return;
  move_to_trash(ids);
}

void MainWindow::move_to_trash(const std::vector<std::int64_t>& ids) {
  const QString name = name_of(ids);
  const int row = list().records().row_of(ids.front());
  attempt(QStringLiteral("delete"), [this, ids, name, row] {
    store_.move_to_trash(ids);
    undo_removal_ = [this, ids] { restore(ids); };
    after_removal(row);
    editor_->notice().tell(tr("Deleted %1.").arg(name), tr("&Undo"),
                           [this] { action("undo_delete").trigger(); });
  });
}

void MainWindow::restore_selected() { restore(list().selected()); }

void MainWindow::restore(const std::vector<std::int64_t>& ids) {
  if (ids.empty() || !end_work()) return;
  attempt(QStringLiteral("restore"), [this, ids] {
    store_.restore(ids);
    undo_removal_ = {};
    side_->show_trash(false);
    side_->end_search();
    show_tags();
    list_records();
    show_records(ids);
    editor_->notice().tell(tr("Restored %1.").arg(name_of(ids)));
    show_state();
  });
}

void MainWindow::remove_for_good() {
  const std::vector<std::int64_t> ids = list().selected();
  if (ids.empty()) return;
  if (!confirm(tr("Delete %1 for good?").arg(name_of(ids)), tr("This cannot be undone."),
               tr("&Delete"))) {
    return;
  }
  const int row = list().records().row_of(ids.front());
  attempt(QStringLiteral("remove"), [this, ids, row] {
    store_.remove(ids);
    undo_removal_ = {};
    after_removal(row);
  });
}

void MainWindow::empty_trash() {
  const int count = list().records().rowCount();
  if (!confirm(tr("Empty the trash with %1?").arg(records_counted(static_cast<std::size_t>(count))),
               tr("This cannot be undone."), tr("&Empty Trash"))) {
    return;
  }
  attempt(QStringLiteral("remove"), [this] {
    store_.empty_trash();
    undo_removal_ = {};
    after_removal(0);
  });
}

/// Shows what stands in the place of records that are gone from the list, unless something is being
/// written.
void MainWindow::after_removal(int row) {
  const std::int64_t shown = form_->record().id;
  show_tags();
  list_records();
  if (shown == 0 || form_->is_changed() || list().records().row_of(shown) >= 0) return;
  const int last = list().records().rowCount() - 1;
  const std::int64_t next = list().records().id(std::min(row, last));
  if (next != 0) {
    show_record(next);
  } else {
    form_->new_record();
    is_trashed_ = false;
    new_tags_.clear();
    editor_->tags().put_tags({});
  }
  show_state();
}

}  // namespace qel::forms
