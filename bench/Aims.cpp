#include "Aims.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <cstdio>

#include "Documents.h"

namespace qel::bench {
namespace {

struct Aim {
  const char* ours;
  const char* peer;
  double at_least;
};

constexpr std::array<Aim, 4> aims = {{
    {"markup_to_rtf", "md4c_to_html", 2},
    {"decode", "md4c_parse", 1},
    {"rtf_file_to_markup", "unrtf_to_text", 20},
    {"rtf_file_to_markup", "md4c_parse", 0.5},
}};

constexpr std::array linear = {"markup_to_rtf", "rtf_file_to_markup", "rtf_string_to_markup",
                               "decode",        "decode_into_words",  "encode",
                               "box_to_rtf"};
constexpr double most_for_ten_times_the_input = 11;

}  // namespace

void AimReporter::ReportRuns(const std::vector<Run>& runs) {
  ConsoleReporter::ReportRuns(runs);
  for (const Run& run : runs) {
    const auto counter = run.counters.find("bytes_per_second");
    const bool is_speed = run.run_type == Run::RT_Iteration || run.aggregate_name == "median";
    if (!is_speed || counter == run.counters.end()) continue;
    const std::string name = run.run_name.function_name + "/" + run.run_name.args;
    double& best = speeds_[name];
    best = std::max<double>(best, counter->second);
  }
}

double AimReporter::speed(const std::string& benchmark, int size) const {
  const auto found = speeds_.find(benchmark + "/" + std::to_string(size));
  return found == speeds_.end() ? std::nan("") : found->second;
}

void AimReporter::Finalize() {
  ConsoleReporter::Finalize();
  std::printf("\nSpeed on the largest document, compared\n");
  for (const Aim& aim : aims) {
    const double ratio = speed(aim.ours, large_size) / speed(aim.peer, large_size);
    if (std::isnan(ratio)) continue;
    std::printf("  %-22s %6.2f times %-14s aim: at least %g, %s\n", aim.ours, ratio, aim.peer,
                aim.at_least, ratio >= aim.at_least ? "met" : "MISSED");
  }
  std::printf("Time for ten times the input\n");
  for (const char* const name : linear) {
    const double ratio = 10 * speed(name, medium_size) / speed(name, large_size);
    if (std::isnan(ratio)) continue;
    std::printf("  %-22s %6.2f times the time     aim: at most %g, %s\n", name, ratio,
                most_for_ten_times_the_input,
                ratio <= most_for_ten_times_the_input ? "met" : "MISSED");
  }
}

}  // namespace qel::bench
