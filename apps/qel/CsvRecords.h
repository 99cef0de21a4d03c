#pragma once

#include <cstdint>

#include "RecordFormat.h"

namespace qel::command {

/// Comma-separated values. The first record names the fields. A field in quotes may hold commas,
/// line breaks and, doubled, quotes. A record of another length than the first is a bad one, but
/// for an empty line.
class CsvRecords : public RecordFormat {
 public:
  explicit CsvRecords(std::vector<FieldMapping> mappings) : mappings_(std::move(mappings)) {}

  std::size_t find_end(std::string_view bytes, std::size_t from) override;
  bool has_header() const override { return true; }
  std::string take_header(std::string_view record) override;
  std::unique_ptr<RecordConverter> create_converter(ConvertText convert) const override;

  /// The column to convert, and the one that gets the result; new ones follow those of the file.
  struct Columns {
    std::size_t from = 0;
    std::size_t to = 0;
  };

 private:
  enum class State : std::uint8_t { field_start, plain, quoted, behind_quote };

  std::vector<FieldMapping> mappings_;
  std::vector<Columns> columns_;
  std::size_t column_count_ = 0;
  State state_ = State::field_start;
};

}  // namespace qel::command
