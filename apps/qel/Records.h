#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <vector>

#include "RecordFormat.h"
#include "qel/convert/Options.h"

namespace qel::command {

enum class RecordKind : std::uint8_t { json_lines, csv };

/// What becomes of a record that cannot be converted, once it is reported.
enum class BadRecord : std::uint8_t {
  stops,   ///< the work ends with what stands before it
  passes,  ///< is written as it is
  goes     ///< is left out
};

struct RecordOptions {
  RecordKind kind = RecordKind::json_lines;
  std::vector<FieldMapping> fields;
  BadRecord on_error = BadRecord::stops;
  convert::Options conversion;
  std::size_t jobs = 1;  ///< how many batches of records are converted at a time
};

/// Converts fields of the records of a file, "-" for standard input or output, in their order and
/// in constant memory. Bad records are reported on standard error with their numbers. Returns false
/// when one of them has stopped the work; raises a `FileError`.
bool convert_records(const std::string& input, const std::string& output,
                     const RecordOptions& options);

}  // namespace qel::command
