#include "Desktop.h"

#include <QApplication>
#include <QDir>
#include <QLockFile>
#include <QStandardPaths>
#include <QTemporaryDir>
#include <chrono>
#include <memory>
#include <stdexcept>

#include "Demo.h"
#include "MainWindow.h"

namespace qel::forms {
namespace {

/// Opening the first window may have to wait for other programs; from then on, nobody waits.
constexpr auto opening_patience = std::chrono::seconds(5);

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

QString folder_of(QStandardPaths::StandardLocation location) {
  QString folder = QStandardPaths::writableLocation(location);
  if (!QDir().mkpath(folder)) {
    throw std::runtime_error("cannot create the folder " + folder.toStdString());
  }
  return folder;
}

/// Small enough for a page, with room for all bars.
constexpr QSize demo_size(920, 500);

RecordStore::Options store_options(std::chrono::milliseconds patience) {
  RecordStore::Options options;
  options.creates = true;
  options.patience = patience;
  options.most_indexed = 0;  // the window does that when nobody waits
  return options;
}

/// A window with what it needs.
struct Opened {
  Opened(const QString& path, std::chrono::milliseconds patience)
      : lock(path + QStringLiteral(".lock")), store(path.toStdString(), store_options(patience)) {
    store.put_patience(std::chrono::milliseconds(0));
    lock.setStaleLockTime(0);
  }

  QLockFile lock;
  RecordStore store;
};

void open_window(const QString& path, std::chrono::milliseconds patience) {
  const auto opened = std::make_shared<Opened>(path, patience);
  WindowOptions options;
  options.settings = folder_of(QStandardPaths::AppConfigLocation) + QStringLiteral("/window.ini");
  options.drafts = folder_of(QStandardPaths::AppDataLocation) + QStringLiteral("/drafts");
  options.open = [](const QString& other) { open_window(other, std::chrono::milliseconds(0)); };
  auto* const window = new MainWindow(opened->store, options);
  window->setAttribute(Qt::WA_DeleteOnClose);
  // The store outlives the window.
  QObject::connect(window, &QObject::destroyed, qApp, [opened] {});
  window->show();
  // Drafts that another window of the same file keeps were not left by a crash.
  window->begin(opened->lock.tryLock());
}

void run_demo(const WindowRequest& request) {
  const QTemporaryDir temporary;
  const QString path = request.database.empty() ? temporary.filePath(QStringLiteral("records.db"))
                                                : QString::fromStdString(request.database);
  Opened opened(path, opening_patience);
  add_samples(opened.store);
  QApplication::setFont(QFont(QStringLiteral("Liberation Sans"), 10));
  MainWindow window(opened.store);
  window.resize(demo_size);
  window.show();
  window.begin(false);
  play(window);
  take_pictures(window, QString::fromStdString(request.demo_picture));
}

}  // namespace

int run_window(const WindowRequest& request) {
  const bool is_demo = !request.demo_picture.empty();
  require_display(is_demo);
  int argc = 1;
  char name[] = "qelforms";
  char* arguments[] = {name, nullptr};
  const QApplication application(argc, arguments);
  QApplication::setOrganizationName(QStringLiteral("qel"));
  QApplication::setApplicationName(QStringLiteral("qelforms"));
  if (is_demo) {
    run_demo(request);
    return 0;
  }
  open_window(QString::fromStdString(request.database), opening_patience);
  return QApplication::exec();
}

}  // namespace qel::forms
