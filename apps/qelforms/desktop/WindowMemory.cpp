#include "WindowMemory.h"

#include <QFileInfo>
#include <QMainWindow>
#include <QSettings>
#include <QSplitter>

namespace qel::forms {
namespace {

constexpr qsizetype most_files = 8;

const QString geometry_key = QStringLiteral("window/geometry");
const QString splitter_key = QStringLiteral("window/splitter");
const QString order_key = QStringLiteral("view/order");
const QString ascending_key = QStringLiteral("view/ascending");
const QString zoom_key = QStringLiteral("view/zoom");
const QString format_bar_key = QStringLiteral("view/formatBar");
const QString files_key = QStringLiteral("files/recent");

const QStringList& order_names() {
  static const QStringList names = {QStringLiteral("changed"), QStringLiteral("created"),
                                    QStringLiteral("title")};
  return names;
}

}  // namespace

WindowMemory::WindowMemory(const QString& file)
    : settings_(file.isEmpty() ? nullptr
                               : std::make_unique<QSettings>(file, QSettings::IniFormat)) {}

WindowMemory::~WindowMemory() = default;

WindowMemory::Look WindowMemory::look() const {
  Look look;
  if (!settings_) return look;
  const auto order = order_names().indexOf(settings_->value(order_key).toString());
  look.order = static_cast<Order>(qMax(qsizetype{0}, order));
  look.ascending = settings_->value(ascending_key, look.ascending).toBool();
  look.zoom = settings_->value(zoom_key, look.zoom).toInt();
  look.format_bar = settings_->value(format_bar_key, look.format_bar).toBool();
  return look;
}

void WindowMemory::keep(const Look& look) {
  if (!settings_) return;
  settings_->setValue(order_key, order_names()[static_cast<int>(look.order)]);
  settings_->setValue(ascending_key, look.ascending);
  settings_->setValue(zoom_key, look.zoom);
  settings_->setValue(format_bar_key, look.format_bar);
}

bool WindowMemory::restore(QMainWindow& window, QSplitter& splitter) const {
  if (!settings_) return false;
  splitter.restoreState(settings_->value(splitter_key).toByteArray());
  return window.restoreGeometry(settings_->value(geometry_key).toByteArray());
}

void WindowMemory::keep(const QMainWindow& window, const QSplitter& splitter) {
  if (!settings_) return;
  settings_->setValue(geometry_key, window.saveGeometry());
  settings_->setValue(splitter_key, splitter.saveState());
}

QStringList WindowMemory::recent_files() const {
  return settings_ ? settings_->value(files_key).toStringList() : QStringList();
}

void WindowMemory::note_file(const QString& path) {
  if (!settings_) return;
  const QString whole = QFileInfo(path).absoluteFilePath();
  QStringList files = recent_files();
  files.removeAll(whole);
  files.prepend(whole);
  settings_->setValue(files_key, files.mid(0, most_files));
}

void WindowMemory::forget_file(const QString& path) {
  if (!settings_) return;
  QStringList files = recent_files();
  files.removeAll(path);
  settings_->setValue(files_key, files);
}

}  // namespace qel::forms
