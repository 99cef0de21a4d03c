// Saving, drafts, and the work of others on the same record.

#include <QDateTime>
#include <QLocale>
#include <QPushButton>
#include <QStatusBar>
#include <algorithm>
#include <chrono>

#include "ConflictDialog.h"
#include "EditorSide.h"
#include "ListSide.h"
#include "MainWindow.h"
#include "Notice.h"
#include "RecordList.h"
#include "TagLine.h"

namespace qel::forms {
namespace {

constexpr auto draft_delay = std::chrono::milliseconds(1000);
constexpr auto draft_retry = std::chrono::seconds(30);

}  // namespace

// Drafts.

void MainWindow::note_change() {
  if (!draft_timer_.isActive()) draft_timer_.start(draft_delay);
  count_timer_.start();
  if (!retries_.is_waiting()) statusBar()->clearMessage();
  show_state();
}

void MainWindow::keep_draft() {
  draft_timer_.stop();
  try {
    const bool is_kept = retries_.run(QStringLiteral("draft"), [this] {
      form_->keep_draft();
      spare_.drop();
    });
    if (!is_kept) keep_spare_draft();
  } catch (const std::exception&) {
    // No reason to interrupt the user: this is tried again.
    keep_spare_draft();
    draft_timer_.start(draft_retry);
  }
}

void MainWindow::keep_spare_draft() {
  Draft draft;
  draft.record_id = form_->record().id;
  draft.revision = form_->record().revision;
  draft.title = form_->title();
  draft.body = form_->body();
  try {
    spare_.keep(draft);
  } catch (const std::exception& error) {
    tell(tr("Unsaved changes are not kept: %1").arg(QString::fromUtf8(error.what())));
  }
}

// Saving.

bool MainWindow::save() {
  const bool is_done = attempt(QStringLiteral("save"), [this] { save_now(); });
  if (!is_done && form_->is_changed()) keep_spare_draft();
  return is_done && !form_->is_changed();
}

void MainWindow::save_now() {
  try {
    form_->save();
  } catch (const Error& error) {
    if (error.number() != changed_elsewhere && error.number() != no_such_record) throw;
    return solve_conflict();
  }
  after_save();
}

void MainWindow::after_save() {
  retries_.forget(QStringLiteral("draft"));
  draft_timer_.stop();
  spare_.drop();
  editor_->notice().take_back();
  if (!new_tags_.isEmpty()) put_tags();
  list_records();
  list().select(form_->record().id);
  if (!retries_.is_waiting()) tell({});
  show_counts();
  show_state();
}

bool MainWindow::save_and_wait(bool closes) {
  if (save()) return true;
  return wait_for(QStringLiteral("save"), closes) && (!form_->is_changed() || keeps_draft_);
}

void MainWindow::note_full_disk() {
  editor_->notice().tell_until_done(
      tr("The disk is full. What you wrote is not saved yet; make room, then try again."),
      tr("Save &Again"), [this] { save(); });
}

bool MainWindow::wait_for(const QString& name, bool closes) {
  if (!retries_.waits_for(name)) return true;
  QMessageBox box(QMessageBox::Information, tr("Records"),
                  tr("Another program is writing to the records. This goes on as soon as it has "
                     "finished."),
                  QMessageBox::Cancel, this);
  const QPushButton* const keep =
      closes ? box.addButton(tr("Close and &Keep Draft"), QMessageBox::AcceptRole) : nullptr;
  connect(&retries_, &Retries::changed, &box, [this, &box, name] {
    if (!retries_.waits_for(name)) box.done(QMessageBox::Ok);
  });
  const int answer = box.exec();
  if (answer == QMessageBox::Ok) return true;
  retries_.forget(name);
  keeps_draft_ = keep != nullptr && box.clickedButton() == keep;
  return keeps_draft_;
}

bool MainWindow::settle(bool closes) {
  editor_->tags().finish();
  if (!has_unsaved_work() || !may_edit()) return true;
  // The user has asked for it already.
  if (retries_.waits_for(QStringLiteral("save"))) return save_and_wait(closes);
  keep_draft();
  const auto answer =
      ask(tr("Save the changes of this record?"),
          QMessageBox::Save | QMessageBox::Discard | QMessageBox::Cancel, QMessageBox::Save);
  if (answer == QMessageBox::Save) return save_and_wait(closes);
  if (answer == QMessageBox::Discard) {
    spare_.drop();
    new_tags_.clear();
    if (form_->record().id == 0) editor_->tags().put_tags({});
  }
  return answer == QMessageBox::Discard;
}

bool MainWindow::end_work() {
  if (!settle()) return false;
  if (form_->is_changed()) form_->revert();
  return true;
}

void MainWindow::revert() {
  const auto answer = ask(tr("Give up the unsaved changes of this record?"),
                          QMessageBox::Discard | QMessageBox::Cancel, QMessageBox::Cancel);
  if (answer != QMessageBox::Discard) return;
  form_->revert();
  spare_.drop();
  new_tags_.clear();
  editor_->tags().put_tags(tags_of(form_->record().id));
  tell(tr("The record is as it was saved last."));
  show_state();
}

// The work of others.

void MainWindow::solve_conflict() {
  const std::int64_t id = form_->record().id;
  Record theirs;
  try {
    theirs = store_.load(id);
  } catch (const Error& error) {
    if (error.number() != no_such_record) throw;
    const bool saves =
        confirm(tr("This record was deleted for good in another window."),
                tr("Your text can still be saved as a new record."), tr("&Save as New Record"));
    if (!saves) return;
    return save_as_new();
  }
  ConflictDialog dialog({theirs.title, theirs.body}, {form_->title(), form_->body()}, this);
  dialog.exec();
  switch (dialog.answer()) {
    case ConflictDialog::Answer::keep_both:
      return save_as_new();
    case ConflictDialog::Answer::use_mine:
      return save_over(theirs);
    case ConflictDialog::Answer::use_theirs:
      form_->load(id);
      return after_save();
    case ConflictDialog::Answer::cancel:
      return;
  }
}

void MainWindow::save_as_new() {
  form_->save_as_new();
  new_tags_ = editor_->tags().tags();
  after_save();
}

/// Saves the text in the place of what another program has saved.
void MainWindow::save_over(const Record& theirs) {
  Draft mine;
  mine.record_id = theirs.id;
  mine.revision = theirs.revision;
  mine.title = form_->title();
  mine.body = form_->body();
  store_.keep_draft(mine);
  form_->recover(mine);
  form_->save();
  after_save();
}

void MainWindow::follow_others() {
  try {
    if (store_.state_of_others() == others_) return;
  } catch (const std::exception&) {
    return;  // it is being written: this is asked again soon
  }
  show_tags();
  list_records();
  index_timer_.start(std::chrono::milliseconds(0));
  const std::int64_t id = form_->record().id;
  if (id == 0 || is_asking_) return;
  try {
    editor_->tags().put_tags(tags_of(id));
    if (form_->is_changed()) return;
    if (store_.load(id).revision != form_->record().revision) show_record(id);
  } catch (const std::exception&) {
    // It is gone: its text stays until the user goes on.
  }
}

// Recovering.

void MainWindow::recover_other() {
  if (!end_work()) return;
  spare_.move_into(store_);
  const std::vector<Draft> drafts = store_.drafts();
  if (drafts.empty()) return tell(tr("There is no other unsaved work."));
  recover(drafts.back());
}

void MainWindow::recover(const Draft& draft) {
  if (draft.basis != Draft::Basis::current) {
    const QString fate = draft.basis == Draft::Basis::outdated
                             ? tr("There is unsaved work on a record that was saved since.")
                             : tr("There is unsaved work on a record that was deleted since.");
    const auto answer =
        ask(fate + tr("\n\nOpen the unsaved work? Ignore keeps it for later."),
            QMessageBox::Open | QMessageBox::Discard | QMessageBox::Ignore, QMessageBox::Open);
    if (answer == QMessageBox::Discard) store_.drop_draft(draft.id);
    if (answer != QMessageBox::Open) return;
  }
  form_->recover(draft);
  is_trashed_ = false;
  new_tags_.clear();
  editor_->tags().put_tags(tags_of(form_->record().id));
  list().select(form_->record().id);
  const QDateTime kept = QDateTime::fromMSecsSinceEpoch(draft.kept);
  tell(tr("Unsaved work of %1 is back.").arg(QLocale().toString(kept, QLocale::ShortFormat)));
  show_state();
}

}  // namespace qel::forms
