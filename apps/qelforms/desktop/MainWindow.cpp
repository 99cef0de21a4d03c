#include "MainWindow.h"

#include <QAction>
#include <QCloseEvent>
#include <QDateTime>
#include <QFileDialog>
#include <QFileInfo>
#include <QLabel>
#include <QLineEdit>
#include <QLocale>
#include <QSplitter>
#include <QStatusBar>
#include <QTextEdit>
#include <QVBoxLayout>
#include <algorithm>
#include <array>
#include <chrono>
#include <utility>

#include "Export.h"
#include "Files.h"
#include "FormTables.h"
#include "Markup.h"
#include "Pdf.h"
#include "RecordList.h"
#include "TablesDialog.h"
#include "qel/base/Scoped.h"

namespace qel::forms {
namespace {

constexpr auto draft_delay = std::chrono::milliseconds(1000);
constexpr auto draft_retry = std::chrono::seconds(30);
/// Nobody reads on, and more of them would make typing slow.
constexpr std::size_t most_found = 1000;

std::string document_in(const QString& suffix, std::span<const Record> records,
                        const command::Tables& tables) {
  if (suffix == QLatin1String("pdf")) return pdf_of(records, tables);
  if (suffix == QLatin1String("rtf")) return exported(records, ExportFormat::rtf, tables);
  if (suffix == QLatin1String("txt")) return exported(records, ExportFormat::text, tables);
  if (suffix == QLatin1String("svg")) return exported(records, ExportFormat::svg, tables);
  return exported(records, ExportFormat::qel, tables);
}

std::vector<Heading> newest_first(std::vector<Heading> headings) {
  std::stable_sort(headings.begin(), headings.end(), [](const Heading& a, const Heading& b) {
    return a.changed != b.changed ? a.changed > b.changed : a.id > b.id;
  });
  return headings;
}

QLabel* label_for(const QString& text, QWidget* of) {
  auto* const label = new QLabel(text);
  label->setBuddy(of);
  return label;
}

}  // namespace

MainWindow::MainWindow(RecordStore& store)
    : store_(store),
      search_(new QLineEdit),
      list_(new RecordList),
      title_(new qt::TextBox),
      body_(new qt::TextBox),
      state_(new QLabel) {
  auto* const splitter = new QSplitter;
  splitter->addWidget(create_list_side());
  splitter->addWidget(create_form_side());
  splitter->setStretchFactor(1, 1);
  splitter->setChildrenCollapsible(false);
  setCentralWidget(splitter);
  statusBar()->addPermanentWidget(state_);
  draft_timer_.setSingleShot(true);
  draft_timer_.callOnTimeout(this, [this] { keep_draft(); });

  form_ = std::make_unique<RecordForm>(store_, title_->control(), body_->control(),
                                       [this] { note_change(); });
  // The form listens to the controls; from here on the widgets do, and pass changes on.
  title_->take_events();
  body_->take_events();
  connect(title_, &qt::TextBox::Change, this, [this] { form_->title_events().Change(); });
  connect(body_, &qt::TextBox::Change, this, [this] { form_->body_events().Change(); });
  add_actions();
  apply_tables();
  list_records();
  if (store_.is_read_only()) refuse_changes();
  constexpr QSize preferred(900, 560);
  resize(preferred);
}

MainWindow::~MainWindow() = default;

void MainWindow::begin(bool recovers) {
  attempt([&] {
    const bool may_recover = recovers && !store_.is_read_only();
    const std::vector<Draft> drafts = may_recover ? store_.drafts() : std::vector<Draft>();
    if (list_->first() != 0) show_record(list_->first());
    if (!drafts.empty()) recover(drafts.back());
    if (drafts.size() > 1) {
      tell(statusBar()->currentMessage() +
           tr(" There is more: choose Record, Recover Unsaved Work."));
    }
  });
  body_->setFocus();
  show_state();
}

// The window.

QWidget* MainWindow::create_list_side() {
  search_->setPlaceholderText(tr("Search titles and texts"));
  search_->setAccessibleName(tr("Search"));
  search_->setClearButtonEnabled(true);
  connect(search_, &QLineEdit::textChanged, this, [this] { list_records(); });
  // The list is in the middle of its own work when it reports a selection.
  connect(
      list_, &QTreeWidget::itemSelectionChanged, this, [this] { follow_selection(); },
      Qt::QueuedConnection);
  connect(list_, &QTreeWidget::itemActivated, this, [this] { body_->setFocus(); });
  auto* const side = new QWidget;
  auto* const layout = new QVBoxLayout(side);
  layout->addWidget(search_);
  layout->addWidget(list_);
  constexpr int narrowest = 260;
  side->setMinimumWidth(narrowest);
  return side;
}

QWidget* MainWindow::create_form_side() {
  title_->setObjectName(QStringLiteral("title"));
  title_->setAccessibleName(tr("Title"));
  body_->setObjectName(QStringLiteral("body"));
  body_->setAccessibleName(tr("Text"));
  body_->put_ScrollBars(2);
  body_->put_PlaceholderText(
      tr("Write here. Ctrl+B makes bold, Ctrl+I italic, Ctrl+U underlined; Shift+F2 opens the "
         "large editor."));
  for (qt::TextBox* const box : {title_, body_}) {
    box->put_ShowEditorOnShiftF2(true);
    box->put_OLEDropMode(2);
    box->put_OLEDragMode(1);
    for (QTextEdit* const view : box->findChildren<QTextEdit*>()) {
      view->setAccessibleName(box->accessibleName());
      connect(view, &QTextEdit::cursorPositionChanged, this, [this] { show_formats(); });
      connect(view, &QTextEdit::selectionChanged, this, [this] { show_formats(); });
      connect(view, &QTextEdit::currentCharFormatChanged, this, [this] { show_formats(); });
    }
  }
  auto* const side = new QWidget;
  auto* const layout = new QVBoxLayout(side);
  layout->addWidget(label_for(tr("&Title"), title_));
  layout->addWidget(title_);
  layout->addWidget(label_for(tr("Te&xt"), body_));
  layout->addWidget(body_, 1);
  return side;
}

void MainWindow::refuse_changes() {
  title_->put_AllowEdits(false);
  body_->put_AllowEdits(false);
  for (const char* const name : {"new", "delete", "tables", "recover"}) {
    findChild<QAction*>(QLatin1String(name))->setEnabled(false);
  }
  for (const Format& format : formats_) format.action->setEnabled(false);
}

// What is shown.

void MainWindow::list_records() {
  attempt([this] {
    const QString wanted = search_->text();
    list_->show_headings(wanted.isEmpty() ? newest_first(store_.list())
                                          : store_.find(wanted.toStdU16String(), most_found));
    if (list_->selected().empty()) list_->select(form_->record().id);
  });
}

void MainWindow::show_state() {
  const bool is_changed = form_->is_changed();
  const bool is_new = form_->record().id == 0;
  const QString saved = is_new ? tr("New record") : tr("Saved");
  state_->setText(store_.is_read_only() ? tr("Read only")
                  : is_changed          ? tr("Unsaved changes")
                                        : saved);
  save_->setEnabled(is_changed);
  revert_->setEnabled(is_changed);
  setWindowModified(is_changed);
  const QString title = QString::fromStdU16String(visible_text(form_->record().title)).simplified();
  setWindowTitle(tr("%1[*] - Records").arg(title.isEmpty() ? tr("New record") : title));
}

void MainWindow::show_formats() {
  const QELTextbox& control = edited_box().control();
  for (const Format& format : formats_) format.action->setChecked((control.*format.get)());
}

void MainWindow::tell(const QString& message) { statusBar()->showMessage(message); }

void MainWindow::apply_tables() { form_->put_tables(load_tables(store_)); }

qt::TextBox& MainWindow::edited_box() const {
  return title_->isAncestorOf(focusWidget()) ? *title_ : *body_;
}

// What the user asks for.

void MainWindow::note_change() {
  if (!draft_timer_.isActive()) draft_timer_.start(draft_delay);
  statusBar()->clearMessage();
  show_state();
}

void MainWindow::keep_draft() {
  draft_timer_.stop();
  try {
    form_->keep_draft();
  } catch (const std::exception& error) {
    // No reason to interrupt the user: this is tried again.
    tell(tr("Unsaved changes are not kept: %1").arg(QString::fromUtf8(error.what())));
    draft_timer_.start(draft_retry);
  }
}

void MainWindow::new_record() {
  if (!settle()) return;
  form_->new_record();
  list_->select(0);
  title_->setFocus();
  show_state();
}

void MainWindow::show_record(std::int64_t id) {
  form_->load(id);
  list_->select(id);
  statusBar()->clearMessage();
  show_state();
}

void MainWindow::follow_selection() {
  // Keys pressed while the user is being asked do not ask again.
  if (is_following_) return;
  const Scoped following(is_following_, true);
  const std::vector<std::int64_t> selected = list_->selected();
  if (selected.size() != 1 || selected.front() == form_->record().id) return;
  if (!settle() || !attempt([&] { show_record(selected.front()); })) {
    list_->select(form_->record().id);
  }
}

bool MainWindow::save() {
  try {
    form_->save();
  } catch (const Error& error) {
    if (error.number() != changed_elsewhere && error.number() != no_such_record) {
      report(error);
      return false;
    }
    return save_as_new();
  }
  list_records();
  list_->select(form_->record().id);
  tell(tr("The record is saved."));
  show_state();
  return true;
}

bool MainWindow::save_as_new() {
  const QString question =
      tr("Another program has changed or deleted this record since it was opened.\n\n"
         "Save your text as a new record?");
  if (ask(question, QMessageBox::Save | QMessageBox::Cancel, QMessageBox::Save) !=
      QMessageBox::Save) {
    return false;
  }
  if (!attempt([this] { form_->save_as_new(); })) return false;
  list_records();
  list_->select(form_->record().id);
  show_state();
  return true;
}

void MainWindow::revert() {
  const auto answer = ask(tr("Give up the unsaved changes of this record?"),
                          QMessageBox::Discard | QMessageBox::Cancel, QMessageBox::Cancel);
  if (answer != QMessageBox::Discard) return;
  form_->revert();
  tell(tr("The record is as it was saved last."));
  show_state();
}

void MainWindow::remove_selected() {
  const std::vector<std::int64_t> ids = list_->selected();
  if (ids.empty()) return;
  const auto answer = ask(tr("Delete %n selected record(s)? This cannot be undone.", nullptr,
                             static_cast<int>(ids.size())),
                          QMessageBox::Yes | QMessageBox::Cancel, QMessageBox::Cancel);
  if (answer != QMessageBox::Yes) return;
  const bool shows_one = std::find(ids.begin(), ids.end(), form_->record().id) != ids.end();
  store_.remove(ids);
  list_records();
  if (shows_one) {
    form_->new_record();
    if (list_->first() != 0) show_record(list_->first());
  }
  tell(tr("%n record(s) deleted.", nullptr, static_cast<int>(ids.size())));
  show_state();
}

void MainWindow::export_selected() {
  if (!settle()) return;
  if (list_->selected().empty()) return tell(tr("No record is selected."));
  const QString path = QFileDialog::getSaveFileName(
      this, tr("Export Records"), tr("records.pdf"),
      tr("PDF, RTF, text, SVG or markup (*.pdf *.rtf *.txt *.svg *.qel)"));
  if (!path.isEmpty()) export_to(path);
}

bool MainWindow::export_to(const QString& path) {
  return attempt([&] {
    std::vector<Record> records;
    for (const std::int64_t id : list_->selected()) records.push_back(store_.load(id));
    const std::string document =
        document_in(QFileInfo(path).suffix().toLower(), records, load_tables(store_));
    command::OutputFile file(path.toStdString());
    file.write(document);
    file.finish();
    tell(tr("%n record(s) written to %1", nullptr, static_cast<int>(records.size())).arg(path));
  });
}

void MainWindow::edit_tables() {
  command::Tables tables = load_tables(store_);
  TablesDialog dialog(tables, this);
  if (dialog.exec() != QDialog::Accepted) return;
  dialog.put_into(tables);
  save_tables(store_, tables);
  apply_tables();
  show_state();
}

void MainWindow::recover_other() {
  if (!settle()) return;
  if (form_->is_changed()) form_->revert();
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
  list_->select(form_->record().id);
  const QDateTime kept = QDateTime::fromMSecsSinceEpoch(draft.kept);
  tell(tr("Unsaved work of %1 is back.").arg(QLocale().toString(kept, QLocale::ShortFormat)));
  show_state();
}

bool MainWindow::settle() {
  if (!form_->is_changed() || store_.is_read_only()) return true;
  keep_draft();
  const auto answer =
      ask(tr("Save the changes of this record?"),
          QMessageBox::Save | QMessageBox::Discard | QMessageBox::Cancel, QMessageBox::Save);
  return answer == QMessageBox::Save ? save() : answer == QMessageBox::Discard;
}

QMessageBox::StandardButton MainWindow::ask(const QString& question,
                                            QMessageBox::StandardButtons answers,
                                            QMessageBox::StandardButton preset) {
  return QMessageBox::question(this, tr("Records"), question, answers, preset);
}

bool MainWindow::attempt(const std::function<void()>& work) {
  try {
    work();
    return true;
  } catch (const std::exception& error) {
    report(error);
    return false;
  }
}

void MainWindow::report(const std::exception& error) {
  const auto* const own = dynamic_cast<const Error*>(&error);
  const std::string message = own == nullptr ? error.what() : own->description();
  QMessageBox::warning(this, tr("Records"), QString::fromStdString(message));
}

void MainWindow::closeEvent(QCloseEvent* event) {
  const bool may_close = settle();
  // Work that the user gave up must not come back at the next start.
  if (may_close && form_->is_changed()) attempt([this] { form_->new_record(); });
  event->setAccepted(may_close);
}

}  // namespace qel::forms
