#pragma once

#include <benchmark/benchmark.h>

#include <map>
#include <string>
#include <vector>

namespace qel::bench {

/// Prints what the console reporter prints, and at the end how the speeds compare with those
/// of the peers, as far as both were measured.
class AimReporter : public benchmark::ConsoleReporter {
 public:
  void ReportRuns(const std::vector<Run>& runs) override;
  void Finalize() override;

 private:
  double speed(const std::string& benchmark, int size) const;
  /// Prints how the speeds relate, if both were measured.
  void compare(const char* ours, const char* peer, int size, double at_least) const;

  std::map<std::string, double> times_;   // of the last run of each benchmark, in microseconds
  std::map<std::string, double> speeds_;  // the best of each benchmark, in bytes a second
};

}  // namespace qel::bench
