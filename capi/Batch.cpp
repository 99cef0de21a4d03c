#include <algorithm>
#include <atomic>
#include <map>
#include <memory>
#include <mutex>
#include <system_error>
#include <thread>
#include <vector>

#include "Conversions.h"
#include "Guard.h"
#include "Options.h"

namespace qel::capi {
namespace {

/// A part of a batch, which one thread converts: large enough for its costs not to show, small
/// enough for its texts to stay in the processor's cache.
constexpr std::size_t piece_size = 256;

struct Piece {
  Buffer output;
  std::vector<std::size_t> ends;  // of the texts in the output
  std::map<std::size_t, qel_error> errors;
};

void add(convert::Report& sum, const convert::Report& report) {
  sum.bytes_in += report.bytes_in;
  sum.bytes_out += report.bytes_out;
  for (const convert::DroppedKind& kind : convert::dropped_kinds) {
    sum.dropped.*kind.count += report.dropped.*kind.count;
  }
  sum.is_broken_off |= report.is_broken_off;
}

}  // namespace
}  // namespace qel::capi

struct qel_results {
  explicit qel_results(std::size_t texts)
      : count(texts), pieces((texts + qel::capi::piece_size - 1) / qel::capi::piece_size) {}

  std::size_t count;
  std::vector<qel::capi::Piece> pieces;
  qel_report report = {};
};

namespace qel::capi {
namespace {

class Batch {
 public:
  Batch(const qel_text* inputs, const convert::Options& options, qel_results& results)
      : inputs_(inputs), options_(options), results_(results) {
    if (!options.stop) return;
    options_.stop = [this, stop = options.stop] { return ask_once(stop); };
  }

  /// Converts all texts, on the calling thread and up to `threads` - 1 others.
  void run(unsigned threads) {
    std::vector<std::thread> helpers;
    const std::size_t most = std::min<std::size_t>(threads, results_.pieces.size());
    try {
      helpers.reserve(most);
      while (helpers.size() + 1 < most) helpers.emplace_back([this] { work(); });
    } catch (const std::system_error&) {
      // Those that there are do it all.
    } catch (...) {
      fail();
    }
    work();
    for (std::thread& helper : helpers) helper.join();
    if (failure_) std::rethrow_exception(failure_);
    results_.report = to_c(report_);
  }

 private:
  /// The caller is asked by one thread at a time, and not again after a yes.
  bool ask_once(const std::function<bool()>& stop) {
    if (is_over_) return true;
    const std::lock_guard lock(mutex_);
    if (!is_over_ && stop()) is_over_ = true;
    return is_over_;
  }

  void fail() {
    const std::lock_guard lock(mutex_);
    is_over_ = true;
    if (!failure_) failure_ = std::current_exception();
  }

  void work() noexcept {
    try {
      convert::Report report;
      while (!is_over_) {
        const std::size_t piece = next_++;
        if (piece >= results_.pieces.size()) break;
        convert_piece(piece, report);
      }
      const std::lock_guard lock(mutex_);
      add(report_, report);
    } catch (...) {
      fail();
    }
  }

  void convert_piece(std::size_t number, convert::Report& report) {
    Piece& piece = results_.pieces[number];
    const std::size_t begin = number * piece_size;
    const std::size_t end = std::min(begin + piece_size, results_.count);
    piece.ends.reserve(end - begin);
    for (std::size_t i = begin; i < end; ++i) {
      const std::size_t kept = piece.output.size();
      qel_error error;
      const qel_status status = guarded(
          &error, [&] { add(report, convert_into(piece.output, view(inputs_[i]), options_)); });
      if (status == QEL_STOPPED) throw Failure(QEL_STOPPED, "stopped");
      if (status != QEL_OK) {
        piece.output.shrink(kept);
        piece.errors.emplace(i - begin, error);
      }
      piece.ends.push_back(piece.output.size());
    }
  }

  const qel_text* inputs_;
  convert::Options options_;
  qel_results& results_;
  std::atomic<std::size_t> next_ = 0;
  std::atomic<bool> is_over_ = false;
  std::mutex mutex_;
  convert::Report report_;
  std::exception_ptr failure_;
};

}  // namespace
}  // namespace qel::capi

using qel::capi::piece_size;

qel_status qel_convert_batch(const qel_text* inputs, size_t count, const qel_options* options,
                             unsigned threads, qel_results** results, qel_error* error) {
  if (results != nullptr) *results = nullptr;
  return qel::capi::guarded(error, [&] {
    qel_results*& converted = qel::capi::existing(results);
    qel::capi::require(inputs != nullptr || count == 0, "the inputs are null");
    auto made = std::make_unique<qel_results>(count);
    qel::capi::Batch batch(inputs, qel::capi::or_defaults(options).conversion, *made);
    batch.run(threads != 0 ? threads : std::max(std::thread::hardware_concurrency(), 1U));
    converted = made.release();
  });
}

size_t qel_results_count(const qel_results* results) {
  return results == nullptr ? 0 : results->count;
}

qel_text qel_results_text(const qel_results* results, size_t index) {
  if (index >= qel_results_count(results)) return {};
  const qel::capi::Piece& piece = results->pieces[index / piece_size];
  const std::size_t at = index % piece_size;
  const std::size_t begin = at == 0 ? 0 : piece.ends[at - 1];
  if (piece.ends[at] == begin) return {};
  return {piece.output.data() + begin, piece.ends[at] - begin};
}

const qel_error* qel_results_error(const qel_results* results, size_t index) {
  static constexpr qel_error none = {};
  if (index >= qel_results_count(results)) return &none;
  const auto& errors = results->pieces[index / piece_size].errors;
  const auto found = errors.find(index % piece_size);
  return found == errors.end() ? &none : &found->second;
}

const qel_report* qel_results_report(const qel_results* results) {
  static constexpr qel_report none = {};
  return results == nullptr ? &none : &results->report;
}

void qel_results_free(qel_results* results) { delete results; }
