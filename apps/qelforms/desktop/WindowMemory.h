#pragma once

#include <QString>
#include <QStringList>
#include <memory>

#include "RecordStore.h"

class QMainWindow;
class QSettings;
class QSplitter;

namespace qel::forms {

/// What windows remember from one time to the next.
class WindowMemory {
 public:
  /// What the user has chosen to see.
  struct Look {
    Order order = Order::changed;
    bool ascending = false;
    int zoom = 100;
    bool format_bar = true;
  };

  /// Nothing is remembered where the name is empty.
  explicit WindowMemory(const QString& file);
  ~WindowMemory();

  Look look() const;
  void keep(const Look& look);
  /// Gives the window the place and division that it had last. Returns false when there were none.
  bool restore(QMainWindow& window, QSplitter& splitter) const;
  void keep(const QMainWindow& window, const QSplitter& splitter);

  /// The files of records that were opened last, this one first.
  QStringList recent_files() const;
  void note_file(const QString& path);
  void forget_file(const QString& path);

 private:
  std::unique_ptr<QSettings> settings_;
};

}  // namespace qel::forms
