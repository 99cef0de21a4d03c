#include "Retries.h"

#include <algorithm>
#include <chrono>
#include <utility>

#include "Database.h"

namespace qel::forms {
namespace {

constexpr auto delay = std::chrono::milliseconds(250);

}  // namespace

bool is_lock(const std::exception& error) {
  const auto* const own = dynamic_cast<const Error*>(&error);
  return own != nullptr && own->number() == locked;
}

Retries::Retries(QObject* parent) : QObject(parent), timer_(this) {
  timer_.callOnTimeout(this, &Retries::try_again);
}

void Retries::put_reporter(std::function<void(const std::exception&)> reporter) {
  reporter_ = std::move(reporter);
}

bool Retries::run(const QString& name, const Work& work) {
  forget(name);
  try {
    work();
    return true;
  } catch (const std::exception& error) {
    if (!is_lock(error)) throw;
  }
  waiting_.push_back({name, work});
  if (!timer_.isActive()) timer_.start(delay);
  emit changed();
  return false;
}

void Retries::forget(const QString& name) {
  const auto forgotten = std::remove_if(waiting_.begin(), waiting_.end(),
                                        [&](const Waiting& work) { return work.name == name; });
  if (forgotten == waiting_.end()) return;
  waiting_.erase(forgotten, waiting_.end());
  emit changed();
}

bool Retries::waits_for(const QString& name) const {
  return std::any_of(waiting_.begin(), waiting_.end(),
                     [&](const Waiting& work) { return work.name == name; });
}

QStringList Retries::names() const {
  QStringList names;
  for (const Waiting& work : waiting_) names.append(work.name);
  return names;
}

void Retries::try_again() {
  // What is done again may ask the user, and so come back here, or ask for more work.
  timer_.stop();
  for (const Waiting& next : std::exchange(waiting_, {})) {
    try {
      run(next.name, next.work);
    } catch (const std::exception& error) {
      if (reporter_) reporter_(error);
    }
  }
  if (waiting_.empty()) {
    emit changed();
  } else {
    timer_.start(delay);
  }
}

}  // namespace qel::forms
