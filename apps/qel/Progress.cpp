#include "Progress.h"

#include <unistd.h>

#include <iostream>
#include <string>

namespace qel::command {

Progress::Progress(std::size_t total)
    : total_(total), shows_bar_(total > 1 && isatty(STDERR_FILENO) != 0) {
  draw();
}

Progress::~Progress() { erase(); }

void Progress::step() {
  const std::lock_guard lock(mutex_);
  ++done_;
  draw();
}

void Progress::report(std::string_view message) {
  const std::lock_guard lock(mutex_);
  erase();
  // In one piece: other processes may write to the same terminal or file.
  std::cerr << "qel: " + std::string(message) + "\n" << std::flush;
  draw();
}

void Progress::draw() const {
  constexpr std::size_t width = 40;
  if (!shows_bar_) return;
  const std::size_t filled = width * done_ / total_;
  std::cerr << "\r[" + std::string(filled, '#') + std::string(width - filled, '.') + "] " +
                   std::to_string(done_) + "/" + std::to_string(total_)
            << std::flush;
}

void Progress::erase() const {
  if (shows_bar_) std::cerr << "\r\033[K" << std::flush;
}

}  // namespace qel::command
