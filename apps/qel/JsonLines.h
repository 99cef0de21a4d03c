#pragma once

#include "RecordFormat.h"

namespace qel::command {

/// JSON objects, one on each line. A field that an object does not have, or that is null, is left
/// alone; one that is not a string makes a bad record.
class JsonLines : public RecordFormat {
 public:
  explicit JsonLines(std::vector<FieldMapping> mappings) : mappings_(std::move(mappings)) {}

  std::size_t find_end(std::string_view bytes, std::size_t from) override;
  bool has_header() const override { return false; }
  std::string take_header(std::string_view /*record*/) override { return {}; }
  std::unique_ptr<RecordConverter> create_converter(ConvertText convert) const override;

 private:
  std::vector<FieldMapping> mappings_;
};

}  // namespace qel::command
