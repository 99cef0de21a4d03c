#pragma once

#include <cstdint>
#include <mutex>
#include <string>
#include <string_view>

#include "Progress.h"
#include "qel/convert/Report.h"

namespace qel::command {

/// How the reports of conversions are shown, on standard error.
enum class ReportStyle : std::uint8_t {
  summary,  ///< one line for all files, on a terminal, if something was dropped
  text,     ///< a line for each file
  json      ///< a JSON object on a line for each file
};

/// Shows the reports of the conversions of a run. Any thread may use it.
class Reports {
 public:
  Reports(ReportStyle style, Progress& progress) : style_(style), progress_(progress) {}

  void add(std::string_view file, const convert::Report& report);
  /// To be called when all files are done.
  void finish() const;

 private:
  ReportStyle style_;
  Progress& progress_;
  std::mutex mutex_;
  convert::Dropped dropped_;  // of all files
  std::uint64_t broken_off_ = 0;
};

}  // namespace qel::command
