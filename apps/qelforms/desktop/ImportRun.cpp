#include "ImportRun.h"

#include <QCoreApplication>
#include <QDirIterator>
#include <QEventLoop>
#include <QFileInfo>
#include <QProgressDialog>
#include <QTimer>
#include <chrono>
#include <exception>

#include "Files.h"
#include "Import.h"
#include "Retries.h"

namespace qel::forms {
namespace {

/// So many records are saved together: safe on the disk soon, and fast.
constexpr std::size_t group_size = 100;
constexpr auto lock_delay = std::chrono::milliseconds(250);

QString translated(const char* text) {
  return QCoreApplication::translate("qel::forms::ImportRun", text);
}

class Run {
 public:
  Run(RecordStore& store, QProgressDialog& progress) : store_(store), progress_(progress) {}

  ImportResult import(const QStringList& files) {
    for (const QString& file : files) {
      progress_.setValue(done_);
      if (progress_.wasCanceled()) break;
      progress_.setLabelText(QFileInfo(file).fileName());
      read(file);
      ++done_;
      if (group_.size() == group_size && !save()) break;
    }
    save();
    result_.left_out = static_cast<int>(files.size()) - done_;
    return result_;
  }

 private:
  void read(const QString& file) {
    try {
      const std::string path = file.toStdString();
      group_.push_back(imported(command::read_file(path), path));
    } catch (const std::exception& error) {
      // The name says enough; which folder it was the user knows.
      QString message = QString::fromUtf8(error.what()).replace(file, QFileInfo(file).fileName());
      message[0] = message[0].toUpper();
      result_.errors.append(message);
    }
  }

  /// Waits while another program writes, unless the user has had enough.
  bool save() {
    while (!group_.empty()) {
      try {
        store_.save(group_);
        for (const Record& record : group_) result_.ids.push_back(record.id);
        group_.clear();
      } catch (const std::exception& error) {
        if (is_lock(error) && !progress_.wasCanceled()) {
          pause();
          continue;
        }
        if (!is_lock(error)) result_.errors.append(QString::fromUtf8(error.what()));
        done_ -= static_cast<int>(group_.size());
        group_.clear();
        return false;
      }
    }
    return true;
  }

  void pause() {
    progress_.setLabelText(translated("Another program is writing to the records..."));
    QEventLoop loop;
    QTimer timer;
    timer.callOnTimeout(&loop, &QEventLoop::quit);
    timer.start(lock_delay);
    loop.exec();
  }

  RecordStore& store_;
  QProgressDialog& progress_;
  std::vector<Record> group_;
  ImportResult result_;
  int done_ = 0;
};

}  // namespace

QStringList importable_files(const QStringList& paths) {
  QStringList patterns;
  for (const std::string& ending : import_endings()) {
    patterns.append(QStringLiteral("*.") + QString::fromStdString(ending));
  }
  QStringList files;
  for (const QString& path : paths) {
    if (!QFileInfo(path).isDir()) {
      files.append(path);
      continue;
    }
    QStringList found;
    QDirIterator iterator(path, patterns, QDir::Files, QDirIterator::Subdirectories);
    while (iterator.hasNext()) found.append(iterator.next());
    found.sort();
    files.append(found);
  }
  return files;
}

ImportResult import_files(const QStringList& files, RecordStore& store, QWidget& window) {
  QProgressDialog progress(translated("Importing..."), translated("Cancel"), 0,
                           static_cast<int>(files.size()), &window);
  progress.setWindowTitle(translated("Import"));
  progress.setWindowModality(Qt::WindowModal);
  return Run(store, progress).import(files);
}

}  // namespace qel::forms
