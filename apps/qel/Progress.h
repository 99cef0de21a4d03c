#pragma once

#include <cstddef>
#include <mutex>
#include <string_view>

namespace qel::command {

/// Standard error while many files are converted: messages, and on a terminal a progress bar below
/// them. Any thread may use it.
class Progress {
 public:
  explicit Progress(std::size_t total);
  Progress(const Progress&) = delete;
  Progress& operator=(const Progress&) = delete;
  ~Progress();

  /// Counts one more file as done.
  void step();
  /// Writes "qel: " and the message as a line.
  void report(std::string_view message);

 private:
  void draw() const;
  void erase() const;

  std::mutex mutex_;
  std::size_t total_;
  std::size_t done_ = 0;
  bool shows_bar_;
};

}  // namespace qel::command
