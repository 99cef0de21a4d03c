// Files: others of records, imports and exports, paper.

#include <QAction>
#include <QDragEnterEvent>
#include <QDropEvent>
#include <QFileDialog>
#include <QFileInfo>
#include <QMenu>
#include <QMimeData>
#include <QUrl>
#include <stdexcept>

#include "EditorSide.h"
#include "Export.h"
#include "Files.h"
#include "FormTables.h"
#include "Import.h"
#include "ImportRun.h"
#include "ListSide.h"
#include "MainWindow.h"
#include "Notice.h"
#include "RecordList.h"
#include "RecordPdf.h"
#include "TablesDialog.h"
#include "Words.h"
#include "qel/qt/Printing.h"

namespace qel::forms {
namespace {

QStringList local_files(const QMimeData& data) {
  QStringList files;
  for (const QUrl& url : data.urls()) {
    if (url.isLocalFile()) files.append(url.toLocalFile());
  }
  return files;
}

QString pattern_of(const QStringList& endings) {
  return QStringLiteral("*.") + endings.join(QStringLiteral(" *."));
}

QString caption_of(ExportFormat format) {
  switch (format) {
    case ExportFormat::pdf:
      return MainWindow::tr("PDF");
    case ExportFormat::rtf:
      return MainWindow::tr("Rich text");
    case ExportFormat::html:
      return MainWindow::tr("Web page");
    case ExportFormat::text:
      return MainWindow::tr("Plain text");
    case ExportFormat::svg:
      return MainWindow::tr("Picture");
    case ExportFormat::qel:
      return MainWindow::tr("Markup");
  }
  return {};
}

QString records_filter() { return MainWindow::tr("Records (*.db);;All files (*)"); }

}  // namespace

// Files of records.

void MainWindow::open_file(bool instead) {
  const QString folder = QFileInfo(QString::fromStdString(store_.path())).absolutePath();
  const QString path =
      QFileDialog::getSaveFileName(this, tr("Open Records"), folder, records_filter(), nullptr,
                                   QFileDialog::DontConfirmOverwrite);
  if (!path.isEmpty()) open_path(path, instead);
}

/// `instead` closes this window.
void MainWindow::open_path(const QString& path, bool instead) {
  if (!options_.open || (instead && !settle())) return;
  keep_look();
  options_.open(path);
  if (!instead) return;
  if (form_->is_changed()) form_->new_record();  // the user has given that up
  close();
}

void MainWindow::fill_recent_files(QMenu& menu) {
  menu.clear();
  constexpr int most_numbers = 9;
  int number = 0;
  const QString own = QFileInfo(QString::fromStdString(store_.path())).absoluteFilePath();
  for (const QString& file : memory_.recent_files()) {
    if (file == own) continue;
    const QString name = QFileInfo(file).fileName().replace(QLatin1Char('&'), QLatin1String("&&"));
    const QString caption =
        ++number <= most_numbers ? QStringLiteral("&%1 %2").arg(number).arg(name) : name;
    QAction* const action = menu.addAction(caption);
    action->setToolTip(file);
    action->setStatusTip(file);
    connect(action, &QAction::triggered, this, [this, file] { open_recent(file); });
  }
  menu.setToolTipsVisible(true);
  if (menu.isEmpty()) menu.addAction(tr("No other files"))->setEnabled(false);
}

/// A file that is gone is not begun anew.
void MainWindow::open_recent(const QString& path) {
  try {
    if (QFileInfo::exists(path)) return open_path(path, true);
    memory_.forget_file(path);
    throw std::runtime_error(tr("The file %1 is no longer there.").arg(path).toStdString());
  } catch (const std::exception& error) {
    report(error);
  }
}

// Import.

void MainWindow::choose_imports() {
  QStringList endings;
  for (const std::string& ending : import_endings()) endings.append(QString::fromStdString(ending));
  import_from(QFileDialog::getOpenFileNames(
      this, tr("Import"), {}, tr("Texts (%1);;All files (*)").arg(pattern_of(endings))));
}

void MainWindow::import_from(const QStringList& paths) {
  const QStringList files = importable_files(paths);
  if (files.isEmpty() || !settle()) return;
  const ImportResult result = import_files(files, store_, *this);
  const int imported = static_cast<int>(result.ids.size());
  side_->show_trash(false);
  side_->end_search();
  list_records();
  if (imported > 0) {
    attempt(QStringLiteral("open"), [this, id = result.ids.front()] { show_record(id); });
    list().select(result.ids);
    editor_->notice().tell(tr("Imported %1.").arg(name_of(result.ids)), tr("&Undo"),
                           [this, ids = result.ids] { move_to_trash(ids); });
  }
  show_state();
  if (result.errors.isEmpty()) return;
  constexpr qsizetype most_shown = 5;
  QMessageBox box(
      QMessageBox::Warning, tr("Import"),
      files.size() == 1
          ? tr("The file could not be imported.")
          : tr("%1 of %2 files could not be imported.").arg(result.errors.size()).arg(files.size()),
      QMessageBox::Ok, this);
  box.setInformativeText(result.errors.mid(0, most_shown).join(QChar(u'\n')));
  if (result.errors.size() > most_shown) {
    box.setDetailedText(result.errors.join(QChar(u'\n')));
  }
  box.exec();
}

void MainWindow::dragEnterEvent(QDragEnterEvent* event) {
  if (!store_.is_read_only() && !local_files(*event->mimeData()).isEmpty()) {
    event->setDropAction(Qt::CopyAction);
    event->accept();
  }
}

void MainWindow::dropEvent(QDropEvent* event) {
  const QStringList files = local_files(*event->mimeData());
  event->acceptProposedAction();
  // The other program waits for the end of the drop.
  QMetaObject::invokeMethod(this, "import_from", Qt::QueuedConnection, Q_ARG(QStringList, files));
}

/// Files that are dropped on a text are imported, too.
bool MainWindow::eventFilter(QObject* watched, QEvent* event) {
  const QEvent::Type type = event->type();
  if (type == QEvent::DragEnter || type == QEvent::DragMove || type == QEvent::Drop) {
    auto& drop = *static_cast<QDropEvent*>(event);
    if (!store_.is_read_only() && !local_files(*drop.mimeData()).isEmpty()) {
      drop.setDropAction(Qt::CopyAction);
      drop.accept();
      if (type == QEvent::Drop) dropEvent(&drop);
      return true;
    }
  }
  return QMainWindow::eventFilter(watched, event);
}

// Export and paper.

std::vector<Record> MainWindow::selected_records() const {
  std::vector<Record> records;
  for (const std::int64_t id : list().selected()) records.push_back(store_.load(id));
  return records;
}

void MainWindow::export_selected() {
  if (!settle()) return;
  const std::vector<std::int64_t> ids = list().selected();
  if (ids.empty()) return tell(tr("No record is selected."));
  QStringList filters;
  for (const ExportFormatName& format : export_formats()) {
    filters.append(
        QStringLiteral("%1 (*.%2)").arg(caption_of(format.format), QLatin1String(format.ending)));
  }
  QFileDialog dialog(this, tr("Export %1").arg(name_of(ids)));
  dialog.setAcceptMode(QFileDialog::AcceptSave);
  dialog.setNameFilters(filters);
  // A name without an ending gets that of the chosen type.
  const auto follow_type = [&dialog, &filters](const QString& filter) {
    const auto type = static_cast<std::size_t>(filters.indexOf(filter));
    dialog.setDefaultSuffix(QLatin1String(export_formats()[type].ending));
  };
  connect(&dialog, &QFileDialog::filterSelected, &dialog, follow_type);
  follow_type(dialog.selectedNameFilter());
  if (dialog.exec() == QDialog::Accepted) export_to(dialog.selectedFiles().front());
}

bool MainWindow::export_to(const QString& path) {
  return attempt(QStringLiteral("export"), [this, path] {
    const ExportFormat format = format_of_file(path.toStdString());
    const std::vector<Record> records = selected_records();
    const command::Tables tables = load_tables(store_);
    const std::string document =
        format == ExportFormat::pdf
            ? qt::pdf_of(print_sections(records), print_options(tables, document_title()))
                  .toStdString()
            : exported(records, format, tables, document_title());
    if (document.empty() && format == ExportFormat::pdf) {
      throw std::runtime_error(tr("No PDF can be made.").toStdString());
    }
    command::OutputFile file(path.toStdString());
    file.write(document);
    file.finish();
    editor_->notice().tell(tr("Wrote %1 to %2.").arg(records_counted(records.size()), path));
  });
}

/// That of the only record, or what records these are.
std::u16string MainWindow::document_title() const {
  const std::vector<std::int64_t> ids = list().selected();
  const RecordModel& records = list().records();
  const QString title = ids.size() == 1
                            ? records.index(records.row_of(ids.front())).data().toString()
                            : tr("Records");
  return title.toStdU16String();
}

void MainWindow::print() {
  if (!settle()) return;
  qt::print(this, print_sections(selected_records()),
            print_options(load_tables(store_), document_title()));
}

void MainWindow::preview() {
  if (!settle()) return;
  qt::preview(this, print_sections(selected_records()),
              print_options(load_tables(store_), document_title()));
}

void MainWindow::edit_tables() {
  command::Tables tables = load_tables(store_);
  TablesDialog dialog(tables, this);
  if (dialog.exec() != QDialog::Accepted) return;
  dialog.put_into(tables);
  attempt(QStringLiteral("tables"), [this, tables] {
    save_tables(store_, tables);
    apply_tables();
    show_state();
  });
}

}  // namespace qel::forms
