#include "Desktop.h"

#include <QApplication>
#include <QDir>
#include <QLockFile>
#include <QStandardPaths>
#include <QTemporaryDir>
#include <stdexcept>

#include "Demo.h"
#include "MainWindow.h"

namespace qel::forms {
namespace {

/// Qt would end the program if it found no display.
void require_display(bool is_demo) {
#ifdef Q_OS_LINUX
  const auto has = [](const char* name) { return !qEnvironmentVariableIsEmpty(name); };
  if (has("QT_QPA_PLATFORM")) return;
  if (is_demo) {
    qputenv("QT_QPA_PLATFORM", "offscreen");
  } else if (!has("DISPLAY") && !has("WAYLAND_DISPLAY")) {
    throw std::runtime_error("there is no display; see 'qelforms --help' for what works without");
  }
#else
  static_cast<void>(is_demo);
#endif
}

/// The user's own records.
QString usual_database() {
  const QString folder = QStandardPaths::writableLocation(QStandardPaths::AppDataLocation);
  if (!QDir().mkpath(folder)) {
    throw std::runtime_error("cannot create the folder " + folder.toStdString());
  }
  return folder + QStringLiteral("/records.db");
}

QString database_of(const WindowRequest& request, const QTemporaryDir& temporary) {
  if (!request.database.empty()) return QString::fromStdString(request.database);
  return request.demo_picture.empty() ? usual_database()
                                      : temporary.filePath(QStringLiteral("records.db"));
}

}  // namespace

int run_window(const WindowRequest& request) {
  const bool is_demo = !request.demo_picture.empty();
  require_display(is_demo);
  int argc = 1;
  char name[] = "qelforms";
  char* arguments[] = {name, nullptr};
  const QApplication application(argc, arguments);
  QApplication::setApplicationName(QStringLiteral("qelforms"));
  const QTemporaryDir temporary;
  const QString database = database_of(request, temporary);
  RecordStore::Options options;
  options.creates = true;
  RecordStore store(database.toStdString(), options);
  if (is_demo) add_samples(store);
  MainWindow window(store);
  window.show();
  if (is_demo) {
    window.begin(false);
    play(window, QString::fromStdString(request.demo_picture));
    return 0;
  }
  // Drafts that another window of the same file keeps were not left by a crash.
  QLockFile lock(database + QStringLiteral(".lock"));
  lock.setStaleLockTime(0);
  window.begin(lock.tryLock());
  return QApplication::exec();
}

}  // namespace qel::forms
