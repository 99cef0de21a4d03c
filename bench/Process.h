#pragma once

#include <cstdint>
#include <string>
#include <vector>

namespace qel::bench {

/// What a finished process took.
struct ProcessUse {
  bool succeeded = false;  ///< it ran and exited with 0
  double cpu_seconds = 0;  ///< in user and system mode
  double peak_memory = 0;  ///< in bytes; never less than this process had when it started the other
};

/// Runs a program, found through PATH, with its output thrown away, and waits for it.
ProcessUse run_process(const std::vector<std::string>& command);

/// A file in the temporary directory that goes with the object.
class TemporaryFile {
 public:
  /// `suffix` begins with a point.
  explicit TemporaryFile(std::string suffix);
  TemporaryFile(const TemporaryFile&) = delete;
  TemporaryFile& operator=(const TemporaryFile&) = delete;
  ~TemporaryFile();

  const std::string& path() const { return path_; }
  const std::string& suffix() const { return suffix_; }
  std::uintmax_t size() const;
  void write(const std::string& bytes) const;

 private:
  std::string suffix_;
  std::string path_;
};

}  // namespace qel::bench
