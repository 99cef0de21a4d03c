#pragma once

#include <cstddef>
#include <string>
#include <vector>

#include "Files.h"
#include "RecordFormat.h"

namespace qel::command {

/// Records that follow each other in a file.
struct Batch {
  std::string bytes;
  std::size_t begin = 0;          ///< of the first record
  std::vector<std::size_t> ends;  ///< of each record; the next one begins there
  std::size_t first_number = 1;
};

/// Reads records in batches, each as soon as a whole record is there.
class RecordReader {
 public:
  /// The records of the file "-" are those of standard input. The format must outlive the reader.
  RecordReader(const std::string& path, RecordFormat& format);

  /// The byte order mark that the file begins with, if any: it belongs to no record.
  std::string_view mark() const { return mark_; }
  std::size_t expected_size() const { return file_.expected_size(); }

  /// The next records; without any at the end of the file.
  Batch next();
  /// Ends the file for a thread that waits for more of it, and for all others.
  void cancel() const { cancellation_.cancel(); }

 private:
  void find_ends(Batch& batch);
  bool read_more(std::string& bytes);

  Cancellation cancellation_;
  InputFile file_;
  RecordFormat& format_;
  std::string mark_;
  std::string rest_;          // the beginning of a record
  std::size_t searched_ = 0;  // how much of it is known to hold no end
  std::size_t next_number_;
  bool is_at_end_ = false;
};

}  // namespace qel::command
