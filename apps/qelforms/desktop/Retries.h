#pragma once

#include <QObject>
#include <QString>
#include <QStringList>
#include <QTimer>
#include <exception>
#include <functional>
#include <vector>

namespace qel::forms {

/// Work on a store in which other programs may be writing. Work that meets their lock is done again
/// and again until it is done; nobody waits for it.
class Retries : public QObject {
  Q_OBJECT

 public:
  using Work = std::function<void()>;

  explicit Retries(QObject* parent = nullptr);

  /// Does the work now or, where that meets a lock, later. It takes the place of work of the same
  /// name that still waits. Returns whether it was done; raises any other error.
  bool run(const QString& name, const Work& work);
  void forget(const QString& name);
  bool waits_for(const QString& name) const;
  /// The names of all that waits.
  QStringList names() const;
  bool is_waiting() const { return !waiting_.empty(); }

  /// Receives the errors of work that was done later.
  void put_reporter(std::function<void(const std::exception&)> reporter);

 signals:
  /// There is other work that waits, or none.
  void changed();

 private:
  struct Waiting {
    QString name;
    Work work;
  };

  void try_again();

  std::vector<Waiting> waiting_;
  std::function<void(const std::exception&)> reporter_;
  QTimer timer_;
};

/// Whether the error says that another program is writing.
bool is_lock(const std::exception& error);

}  // namespace qel::forms
