#include "MainWindow.h"

#include <QAction>
#include <QCloseEvent>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QSplitter>
#include <QStatusBar>
#include <QTextEdit>
#include <chrono>
#include <utility>

#include "EditCommands.h"
#include "EditorSide.h"
#include "FormTables.h"
#include "ListSide.h"
#include "Markup.h"
#include "Notice.h"
#include "RecordList.h"
#include "TagLine.h"
#include "Words.h"

namespace qel::forms {
namespace {

/// Nobody reads on, and more of them would make typing slow.
constexpr std::size_t most_found = 1000;
/// What a line of context is taken from.
constexpr std::size_t preview_size = 400;
constexpr auto count_delay = std::chrono::milliseconds(150);
constexpr QSize preferred_size(1040, 680);
constexpr int list_width = 280;
constexpr int narrowest_list = 200;
constexpr int status_gap = 16;

/// The beginning of the text of a record, as a reader sees it.
QString preview_of(const RecordStore& store, std::int64_t id) {
  try {
    const std::u16string body = store.load(id).body;
    return on_one_line(visible_text(std::u16string_view(body).substr(0, preview_size)));
  } catch (const std::exception&) {
    return {};  // it is gone, or being written
  }
}

}  // namespace

MainWindow::MainWindow(RecordStore& store, WindowOptions options)
    : store_(store),
      options_(std::move(options)),
      memory_(options_.settings),
      look_(memory_.look()),
      spare_(options_.drafts, QString::fromStdString(store.path())),
      splitter_(new QSplitter),
      side_(new ListSide),
      editor_(new EditorSide),
      counts_(new QLabel),
      state_(new QLabel),
      edit_commands_(new EditCommands(*this)) {
  splitter_->addWidget(side_);
  splitter_->addWidget(editor_);
  splitter_->setStretchFactor(1, 1);
  splitter_->setChildrenCollapsible(false);
  splitter_->setHandleWidth(1);
  side_->setMinimumWidth(narrowest_list);
  setCentralWidget(splitter_);
  setAcceptDrops(true);
  counts_->setObjectName(QStringLiteral("counts"));
  state_->setObjectName(QStringLiteral("state"));
  counts_->setContentsMargins(0, 0, status_gap, 0);
  state_->setContentsMargins(0, 0, status_gap / 2, 0);
  statusBar()->addPermanentWidget(counts_);
  statusBar()->addPermanentWidget(state_);
  retries_.put_reporter([this](const std::exception& error) { report(error); });
  connect_form();
  connect_sides();
  add_actions();
  apply_tables();
  restore_look();
  memory_.note_file(QString::fromStdString(store_.path()));
  show_tags();
  list_records();
}

MainWindow::~MainWindow() = default;

qt::TextBox& MainWindow::title_box() { return editor_->title(); }

qt::TextBox& MainWindow::body_box() { return editor_->body(); }

RecordList& MainWindow::list() const { return side_->list(); }

void MainWindow::begin(bool recovers) {
  attempt(QStringLiteral("open"), [this, recovers] {
    const bool may_recover = recovers && !store_.is_read_only();
    if (may_recover) spare_.move_into(store_);
    const std::vector<Draft> drafts = may_recover ? store_.drafts() : std::vector<Draft>();
    if (list().first() != 0) show_record(list().first());
    if (!drafts.empty()) recover(drafts.back());
    if (drafts.size() > 1) {
      tell(statusBar()->currentMessage() +
           tr(" There is more: choose Record, Recover Unsaved Work."));
    }
  });
  index_timer_.start(std::chrono::milliseconds(0));
  editor_->body().setFocus();
  show_counts();
  show_state();
}

// The window.

void MainWindow::connect_form() {
  qt::TextBox& title = editor_->title();
  qt::TextBox& body = editor_->body();
  form_ = std::make_unique<RecordForm>(store_, title.control(), body.control(),
                                       [this] { note_change(); });
  // The form listens to the controls; from here on the widgets do, and pass changes on.
  title.take_events();
  body.take_events();
  connect(&title, &qt::TextBox::Change, this, [this] { form_->title_events().Change(); });
  connect(&body, &qt::TextBox::Change, this, [this] { form_->body_events().Change(); });
  for (const qt::TextBox* const box : {&title, &body}) {
    for (QTextEdit* const view : box->findChildren<QTextEdit*>()) {
      view->viewport()->installEventFilter(this);
    }
    connect(box, &qt::TextBox::SelectionChanged, this, [this] {
      edit_commands_->show_state();
      count_timer_.start();
    });
  }
  draft_timer_.setSingleShot(true);
  draft_timer_.callOnTimeout(this, [this] { keep_draft(); });
  count_timer_.setSingleShot(true);
  count_timer_.setInterval(count_delay);
  count_timer_.callOnTimeout(this, [this] { show_counts(); });
  others_timer_.callOnTimeout(this, [this] { follow_others(); });
  others_timer_.start(others_delay);
  index_timer_.setSingleShot(true);
  index_timer_.callOnTimeout(this, [this] { index_some(); });
}

void MainWindow::connect_sides() {
  connect(side_, &ListSide::listing_changed, this, [this] { list_records(); });
  connect(side_, &ListSide::choice_changed, this, [this] { show_what_is_listed(); });
  connect(side_, &ListSide::left, this, [this] {
    follow_selection();  // what is typed next is for the record that is selected now
    side_->end_search();
    editor_->body().setFocus();
  });
  RecordList& records = list();
  records.records().put_preview([this](std::int64_t id) { return preview_of(store_, id); });
  // The list is in the middle of its own work when it reports a selection.
  connect(
      &records, &RecordList::selection_made, this, [this] { follow_selection(); },
      Qt::QueuedConnection);
  connect(&records, &RecordList::opened, this, [this](std::int64_t id) { open_record(id, true); });
  connect(&records, &RecordList::left, side_, &ListSide::left);
  connect(&editor_->tags(), &TagLine::edited, this, [this] { put_tags(); });
  connect(&editor_->body(), &qt::TextBox::ZoomChanged, this, [this](int zoom) { put_zoom(zoom); });
  connect(editor_, &EditorSide::box_changed, this, [this] { show_counts(); });
  connect(&retries_, &Retries::changed, this, [this] { show_waiting(); });
}

void MainWindow::restore_look() {
  if (!memory_.restore(*this, *splitter_)) {
    resize(preferred_size);
    splitter_->setSizes({list_width, preferred_size.width() - list_width});
  }
  side_->put_order(look_.order, look_.ascending);
  put_zoom(look_.zoom);
  editor_->show_format_bar(look_.format_bar);
}

void MainWindow::keep_look() {
  memory_.keep(look_);
  memory_.keep(*this, *splitter_);
}

void MainWindow::closeEvent(QCloseEvent* event) {
  keeps_draft_ = false;
  bool may_close = settle(true);
  // Work that the user gave up must not come back at the next start.
  if (may_close && form_->is_changed() && !keeps_draft_) {
    const QString name = QStringLiteral("open");
    may_close = attempt(name, [this] { form_->new_record(); }) || wait_for(name);
  }
  // What else the user has asked for is done first, or given up.
  const QStringList own = {QStringLiteral("open"), QStringLiteral("draft"), QStringLiteral("list"),
                           QStringLiteral("all tags")};
  for (const QString& name : retries_.names()) {
    if (may_close && !keeps_draft_ && !own.contains(name)) may_close = wait_for(name);
  }
  if (may_close) keep_look();
  event->setAccepted(may_close);
}

void MainWindow::changeEvent(QEvent* event) {
  QMainWindow::changeEvent(event);
  if (event->type() == QEvent::ActivationChange && isActiveWindow() && form_) follow_others();
}

// What is shown.

void MainWindow::list_records() {
  attempt(QStringLiteral("list"), [this] { list_now(); });
}

void MainWindow::list_now() {
  const QString wanted = side_->wanted().trimmed();
  const Listing listing = side_->listing();
  others_ = store_.state_of_others();
  side_->show_headings(wanted.isEmpty()
                           ? store_.list(listing)
                           : store_.find(side_->wanted().toStdU16String(), listing, most_found));
  if (list().selected().empty()) list().select(form_->record().id);
  editor_->mark(words_of(wanted));
  show_state();
}

/// Brings the index of words up to date by a few records, so that no key waits for it.
void MainWindow::index_some() {
  constexpr std::size_t few = 250;
  constexpr auto pause = std::chrono::milliseconds(20);
  try {
    switch (store_.index_more(few)) {
      case RecordStore::Indexing::more:
        return index_timer_.start(pause);
      case RecordStore::Indexing::held_up:
        return index_timer_.start(others_delay);
      case RecordStore::Indexing::done:
        if (!side_->wanted().isEmpty()) list_records();
    }
  } catch (const std::exception&) {
    // A search tells what is wrong with the file.
  }
}

void MainWindow::show_tags() {
  attempt(QStringLiteral("all tags"), [this] {
    const std::vector<std::u16string> known = store_.all_tags();
    QStringList names;
    for (const std::u16string& tag : known) names.append(QString::fromStdU16String(tag));
    editor_->tags().offer(names);
    side_->put_tags(known);
  });
}

bool MainWindow::may_edit() const { return !store_.is_read_only() && !is_trashed_; }

bool MainWindow::has_unsaved_work() const { return form_->is_changed() || !new_tags_.isEmpty(); }

void MainWindow::show_state() {
  const bool is_changed = has_unsaved_work();
  const bool is_new = form_->record().id == 0;
  const bool selects = !list().selected().empty();
  const bool in_trash = side_->listing().trash;
  const bool writes = !store_.is_read_only();
  const QString saved = is_new ? tr("New record") : tr("Saved");
  state_->setText(!writes       ? tr("Read only")
                  : is_trashed_ ? tr("In the trash")
                  : is_changed  ? tr("Unsaved changes")
                                : saved);
  editor_->put_editable(may_edit() && !retries_.waits_for(QStringLiteral("open")));
  action("save").setEnabled(is_changed && may_edit());
  action("revert").setEnabled(is_changed && may_edit());
  action("new").setEnabled(writes);
  action("duplicate").setEnabled(selects && writes && !in_trash);
  action("delete").setEnabled(selects && writes && !in_trash);
  action("restore").setEnabled(selects && writes && in_trash);
  action("delete_for_good").setEnabled(selects && writes && in_trash);
  action("empty_trash").setEnabled(writes && in_trash && list().first() != 0);
  action("undo_delete").setEnabled(writes && undo_removal_);
  action("tables").setEnabled(writes);
  action("recover").setEnabled(writes);
  action("import").setEnabled(writes);
  action("edit_tags").setEnabled(may_edit());
  for (const char* const name : {"export", "print", "preview"}) action(name).setEnabled(selects);
  setWindowModified(is_changed);
  const ShownTitle title = shown_title(form_->title(), form_->record().body);
  setWindowTitle(
      tr("%1[*] - Records").arg(title.text.empty() ? tr("New record") : on_one_line(title.text)));
}

void MainWindow::show_counts() {
  QELTextbox& control = editor_->edited_box().control();
  const bool selects = control.get_SelLength() > 0;
  const QString text = QString::fromStdU16String(selects ? control.get_SelText()
                                                         : editor_->body().control().get_Text());
  const QString words = counted(count_words(text), tr("1 word"), tr("%1 words"));
  const QString characters =
      counted(count_characters(text), tr("1 character"), tr("%1 characters"));
  const QString counts = words + QStringLiteral(", ") + characters;
  counts_->setText(selects ? tr("Selected: %1").arg(counts) : counts);
}

void MainWindow::show_waiting() {
  const QString waiting = retries_.waits_for(QStringLiteral("save"))
                              ? tr("Another program is writing; saving again...")
                              : tr("Another program is writing; trying again...");
  if (retries_.is_waiting()) {
    tell(waiting);
  } else if (statusBar()->currentMessage().startsWith(tr("Another program is writing"))) {
    statusBar()->clearMessage();
  }
  show_state();
}

void MainWindow::apply_tables() {
  const command::Tables tables = load_tables(store_);
  form_->put_tables(tables);
}

void MainWindow::put_zoom(int percent) {
  editor_->put_zoom(percent);
  look_.zoom = editor_->body().get_Zoom();
}

void MainWindow::tell(const QString& message) { statusBar()->showMessage(message); }

QString MainWindow::name_of(const std::vector<std::int64_t>& ids) const {
  if (ids.size() != 1) return records_counted(ids.size());
  const RecordModel& records = list().records();
  return quoted(records.index(records.row_of(ids.front())).data().toString());
}

// Asking.

QMessageBox::StandardButton MainWindow::ask(const QString& question,
                                            QMessageBox::StandardButtons answers,
                                            QMessageBox::StandardButton preset) {
  return QMessageBox::question(this, tr("Records"), question, answers, preset);
}

bool MainWindow::confirm(const QString& question, const QString& detail, const QString& caption) {
  QMessageBox box(QMessageBox::Question, tr("Records"), question, QMessageBox::Cancel, this);
  box.setInformativeText(detail);
  box.setDefaultButton(QMessageBox::Cancel);
  const QPushButton* const yes = box.addButton(caption, QMessageBox::AcceptRole);
  box.exec();
  return box.clickedButton() == yes;
}

bool MainWindow::attempt(const QString& name, const std::function<void()>& work) {
  try {
    return retries_.run(name, work);
  } catch (const std::exception& error) {
    report(error);
    return false;
  }
}

void MainWindow::report(const std::exception& error) {
  const auto* const own = dynamic_cast<const Error*>(&error);
  if (own != nullptr && own->number() == disk_full) return note_full_disk();
  if (is_lock(error)) {
    return editor_->notice().tell(tr("Another program is writing to the records. Try again."));
  }
  const std::string message = own == nullptr ? error.what() : own->description();
  QMessageBox::warning(this, tr("Records"), QString::fromStdString(message));
}

}  // namespace qel::forms
