#include "Progress.h"

#include <algorithm>

#include "System.h"

namespace qel::command {

Progress::Progress(Unit unit, std::size_t total, bool writes_to_terminal)
    : unit_(unit),
      total_(total),
      shows_bar_((unit == Unit::records || total > 1) && !writes_to_terminal &&
                 system::can_rewrite_errors()) {}

Progress::~Progress() { erase(); }

void Progress::step(std::size_t count, std::size_t amount) {
  constexpr auto pause = std::chrono::milliseconds(100);
  const std::lock_guard lock(mutex_);
  count_ += count;
  amount_ += amount;
  if (!shows_bar_ || Clock::now() < next_drawing_) return;
  draw();
  next_drawing_ = Clock::now() + pause;
}

void Progress::write_line(const std::string& line) {
  const std::lock_guard lock(mutex_);
  erase();
  // In one piece: other processes may write to the same terminal or file.
  system::write_error(line + "\n");
  draw();
}

void Progress::draw() {
  if (shows_bar_) system::write_error("\r" + bar() + counted() + "\033[K");
}

std::string Progress::bar() const {
  constexpr std::size_t width = 40;
  if (total_ == 0) return {};
  const std::size_t filled = width * std::min(amount_, total_) / total_;
  return "[" + std::string(filled, '#') + std::string(width - filled, '.') + "] ";
}

std::string Progress::counted() const {
  const std::chrono::duration<double> time = Clock::now() - begin_;
  const auto rate =
      static_cast<std::size_t>(static_cast<double>(count_) / std::max(time.count(), 1e-3));
  const std::string counted = unit_ == Unit::files
                                  ? std::to_string(count_) + "/" + std::to_string(total_) + " files"
                                  : std::to_string(count_) + " records";
  return counted + ", " + std::to_string(rate) + "/s";
}

void Progress::erase() const {
  if (shows_bar_) system::write_error("\r\033[K");
}

}  // namespace qel::command
