#include "Records.h"

#include <atomic>
#include <condition_variable>
#include <exception>
#include <memory>
#include <mutex>
#include <optional>
#include <thread>
#include <utility>

#include "CsvRecords.h"
#include "Files.h"
#include "JsonLines.h"
#include "Progress.h"
#include "RecordReader.h"
#include "qel/convert/Convert.h"

namespace qel::command {
namespace {

std::unique_ptr<RecordFormat> format_of(const RecordOptions& options) {
  if (options.kind == RecordKind::csv) return std::make_unique<CsvRecords>(options.fields);
  return std::make_unique<JsonLines>(options.fields);
}

/// What a batch has become.
struct Converted {
  struct Bad {
    std::size_t number;
    std::string message;
  };

  std::string bytes;
  std::vector<Bad> bad;
};

/// Threads that each take a batch in turn, convert it, and write it when those before are written.
class RecordRun {
 public:
  RecordRun(const std::string& input, const std::string& output, const RecordOptions& options)
      : options_(options),
        format_(format_of(options)),
        reader_(input, *format_),
        output_(output),
        progress_(Progress::Unit::records, reader_.expected_size(),
                  output == "-" && system::is_output_terminal()) {}

  bool run() {
    output_.write(reader_.mark());
    first_ = reader_.next();
    if (format_->has_header() && !first_->ends.empty()) write_header(*first_);
    {
      std::vector<std::jthread> helpers;
      for (std::size_t job = 1; job < options_.jobs; ++job)
        helpers.emplace_back([this] { work(); });
      work();
    }
    if (error_) std::rethrow_exception(error_);
    if (is_stopped_) return false;
    output_.finish();
    return true;
  }

 private:
  void write_header(Batch& batch) {
    batch.begin = batch.ends.front();
    batch.ends.erase(batch.ends.begin());
    ++batch.first_number;
    output_.write(format_->take_header(std::string_view(batch.bytes).substr(0, batch.begin)));
  }

  void work() {
    try {
      const auto converter = format_->create_converter(
          [this](std::string_view text) { return convert::convert(text, options_.conversion); });
      std::size_t turn = 0;
      while (const std::optional<Batch> batch = take_batch(turn)) {
        write_in_turn(turn, *batch, converted(*batch, *converter));
      }
    } catch (...) {
      const std::lock_guard lock(writing_);
      if (!is_stopped_) error_ = std::current_exception();
      stop();
    }
  }

  std::optional<Batch> take_batch(std::size_t& turn) {
    const std::lock_guard lock(reading_);
    if (is_stopped_) return std::nullopt;
    Batch batch = first_ ? std::move(*std::exchange(first_, std::nullopt)) : reader_.next();
    if (batch.bytes.empty()) return std::nullopt;
    turn = next_turn_++;
    return batch;
  }

  Converted converted(const Batch& batch, RecordConverter& converter) const {
    Converted result;
    std::size_t begin = batch.begin;
    std::size_t number = batch.first_number;
    for (const std::size_t end : batch.ends) {
      const std::string_view record = std::string_view(batch.bytes).substr(begin, end - begin);
      try {
        converter.convert(record, result.bytes);
      } catch (const std::exception& error) {
        result.bad.push_back({number, error.what()});
        if (options_.on_error == BadRecord::stops) break;
        if (options_.on_error == BadRecord::passes) result.bytes.append(record);
      }
      begin = end;
      ++number;
    }
    return result;
  }

  void write_in_turn(std::size_t turn, const Batch& batch, const Converted& result) {
    std::unique_lock lock(writing_);
    turn_comes_.wait(lock, [&] { return is_stopped_ || turn_ == turn; });
    if (is_stopped_) return;
    output_.write(result.bytes);
    for (const auto& [number, message] : result.bad) {
      progress_.report("record " + std::to_string(number) + ": " + message);
    }
    progress_.step(batch.ends.size(), batch.bytes.size());
    ++turn_;
    turn_comes_.notify_all();
    if (options_.on_error == BadRecord::stops && !result.bad.empty()) stop();
  }

  /// `writing_` must be locked.
  void stop() {
    is_stopped_ = true;
    reader_.cancel();
    turn_comes_.notify_all();
  }

  const RecordOptions& options_;
  std::unique_ptr<RecordFormat> format_;
  RecordReader reader_;
  OutputFile output_;
  Progress progress_;
  std::exception_ptr error_;
  std::atomic<bool> is_stopped_ = false;

  std::mutex reading_;
  std::optional<Batch> first_;
  std::size_t next_turn_ = 0;

  std::mutex writing_;
  std::condition_variable turn_comes_;
  std::size_t turn_ = 0;
};

}  // namespace

bool convert_records(const std::string& input, const std::string& output,
                     const RecordOptions& options) {
  refuse_to_write_while_reading(input, output);
  return RecordRun(input, output, options).run();
}

}  // namespace qel::command
