#include "RecordReader.h"

#include <stdexcept>
#include <utility>

namespace qel::command {
namespace {

constexpr std::string_view utf8_mark = "\xEF\xBB\xBF";

}  // namespace

RecordReader::RecordReader(const std::string& path, RecordFormat& format)
    : file_(path), format_(format), next_number_(format.has_header() ? 0 : 1) {
  while (rest_.size() < utf8_mark.size() && read_more(rest_)) {
  }
  if (!rest_.starts_with(utf8_mark)) return;
  mark_ = utf8_mark;
  rest_.erase(0, utf8_mark.size());
}

Batch RecordReader::next() {
  constexpr std::size_t longest_record = std::size_t{1} << 28U;
  Batch batch;
  batch.bytes = std::exchange(rest_, {});
  batch.first_number = next_number_;
  for (find_ends(batch); batch.ends.empty() && read_more(batch.bytes); find_ends(batch)) {
    if (batch.bytes.size() <= longest_record) continue;
    throw std::runtime_error("record " + std::to_string(next_number_) +
                             " is longer than 256 MB: its end is missing");
  }
  if (batch.ends.empty() && !batch.bytes.empty()) batch.ends.push_back(batch.bytes.size());
  const std::size_t end = batch.ends.empty() ? 0 : batch.ends.back();
  rest_.assign(batch.bytes, end);
  searched_ = rest_.size();
  batch.bytes.resize(end);
  next_number_ += batch.ends.size();
  return batch;
}

void RecordReader::find_ends(Batch& batch) {
  while (true) {
    const std::size_t end = format_.find_end(batch.bytes, searched_);
    if (end == RecordFormat::none) break;
    batch.ends.push_back(end);
    searched_ = end;
  }
  searched_ = batch.bytes.size();
}

bool RecordReader::read_more(std::string& bytes) {
  constexpr std::size_t block = std::size_t{1} << 17U;
  if (is_at_end_ || !file_.wait(cancellation_)) return false;
  const std::size_t used = bytes.size();
  bytes.resize(used + block);
  const std::size_t count = file_.read_some(bytes.data() + used, block);
  bytes.resize(used + count);
  is_at_end_ = count == 0;
  return !is_at_end_;
}

}  // namespace qel::command
