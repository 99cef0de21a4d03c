#pragma once

#include <chrono>
#include <cstddef>
#include <cstdint>
#include <mutex>
#include <string>
#include <string_view>

namespace qel::command {

/// Standard error while many files or records are converted: messages, and on a terminal a progress
/// bar with the rate below them. Any thread may use it.
class Progress {
 public:
  enum class Unit : std::uint8_t {
    files,   ///< the total counts them
    records  ///< the total counts bytes
  };

  /// Shows no bar where the output goes to a terminal, too. A total of 0 is not known.
  Progress(Unit unit, std::size_t total, bool writes_to_terminal = false);
  Progress(const Progress&) = delete;
  Progress& operator=(const Progress&) = delete;
  ~Progress();

  /// Counts more as done: how many files or records, and how much of the total that is.
  void step(std::size_t count, std::size_t amount);
  /// Writes "qel: " and the message as a line.
  void report(std::string_view message) { write_line("qel: " + std::string(message)); }
  void write_line(const std::string& line);

 private:
  using Clock = std::chrono::steady_clock;

  void draw();
  void erase() const;
  std::string bar() const;
  std::string counted() const;

  std::mutex mutex_;
  Unit unit_;
  std::size_t total_;
  bool shows_bar_;
  std::size_t count_ = 0;
  std::size_t amount_ = 0;
  Clock::time_point begin_ = Clock::now();
  Clock::time_point next_drawing_ = begin_;
};

}  // namespace qel::command
