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
  int size;
  double at_least;
};

constexpr std::array aims = {
    Aim{"markup_to_rtf", "md4c_to_html", large_size, 5},
    Aim{"markup_file_to_rtf", "md4c_to_html", large_size, 1},
    Aim{"markup_file_to_html", "md4c_to_html", large_size, 3},
    Aim{"decode", "md4c_parse", large_size, 1.3},
    Aim{"rtf_file_to_markup", "unrtf_to_text", large_size, 20},
    Aim{"rtf_file_to_markup", "md4c_parse", large_size, 1},
    // The control reads and puts runs: that has to be worth it.
    Aim{"assign_text", "markup_to_box", small_size, 1.5},
    Aim{"read_text", "box_to_markup", small_size, 1.5},
    // The widget beside Qt alone.
    Aim{"assign_to_widget", "insert_by_qt", medium_size, 1 / 1.2},
    Aim{"read_from_widget", "insert_by_qt", medium_size, 1},
    Aim{"key_in_widget", "key_in_text_edit", small_size, 1 / 1.1},
};

/// Each takes at most five times as long as decoding and encoding the text.
constexpr std::array string_functions = {"in_string",
                                         "in_string_any_case",
                                         "in_string_rev",
                                         "len_str",
                                         "plain_text",
                                         "left_str",
                                         "right_str",
                                         "mid_str",
                                         "stuff",
                                         "split_words",
                                         "stuff_with_style_data",
                                         "split_sentences",
                                         "fmt_left",
                                         "fmt_mid",
                                         "compare_texts",
                                         "toggle_bold",
                                         "title_case",
                                         "toggle_color",
                                         "toggle_upper_case",
                                         "toggle_title_case"};
constexpr double string_function_at_least = 0.2;

struct Growth {
  const char* name;
  int from;  // ten times as much is the other size
  double at_most;
};

constexpr std::array growths = {
    Growth{"markup_file_to_rtf", medium_size, 10.5},
    Growth{"markup_file_to_html", medium_size, 10.5},
    Growth{"markup_file_to_text", medium_size, 10.5},
    Growth{"rtf_file_to_markup", medium_size, 10.5},
    Growth{"rtf_file_to_text", medium_size, 10.5},
    Growth{"markup_to_rtf", medium_size, 10.5},
    Growth{"rtf_string_to_markup", medium_size, 10.5},
    Growth{"decode", medium_size, 10.5},
    Growth{"decode_into_words", medium_size, 10.5},
    Growth{"encode", medium_size, 10.5},
    Growth{"box_to_rtf", medium_size, 10.5},
    Growth{"word_wrap", ten_thousand_words, 10},
};

/// What a user waits for.
struct Limit {
  const char* name;
  double at_most_us;
};

constexpr std::array limits = {Limit{"key_in_the_middle", 50}, Limit{"key_at_the_end", 50},
                               Limit{"typographic_quote", 50}, Limit{"key_erases", 50},
                               Limit{"shortcut", 50},          Limit{"paste", 20'000}};

const char* met(bool is_met) { return is_met ? "met" : "MISSED"; }

}  // namespace

void AimReporter::ReportRuns(const std::vector<Run>& runs) {
  ConsoleReporter::ReportRuns(runs);
  for (const Run& run : runs) {
    if (run.run_type == Run::RT_Iteration) {
      constexpr double us_in_second = 1e6;
      times_[run.run_name.function_name] = run.GetAdjustedRealTime() /
                                           benchmark::GetTimeUnitMultiplier(run.time_unit) *
                                           us_in_second;
    }
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

void AimReporter::compare(const char* ours, const char* peer, int size, double at_least) const {
  const double ratio = speed(ours, size) / speed(peer, size);
  if (std::isnan(ratio)) return;
  std::printf("  %-22s %6.2f times %-18s aim: at least %.3g, %s\n", ours, ratio, peer, at_least,
              met(ratio >= at_least));
}

void AimReporter::Finalize() {
  ConsoleReporter::Finalize();
  std::printf("\nSpeed compared\n");
  for (const Aim& aim : aims) compare(aim.ours, aim.peer, aim.size, aim.at_least);
  for (const char* const name : string_functions) {
    compare(name, "decode_and_encode", string_size, string_function_at_least);
  }
  std::printf("Time for one action\n");
  for (const Limit& limit : limits) {
    const auto time = times_.find(limit.name);
    if (time == times_.end()) continue;
    std::printf("  %-22s %8.1f us                aim: at most %g, %s\n", limit.name, time->second,
                limit.at_most_us, met(time->second <= limit.at_most_us));
  }
  std::printf("Time for ten times the input\n");
  for (const Growth& growth : growths) {
    const double ratio =
        10 * speed(growth.name, growth.from) / speed(growth.name, 10 * growth.from);
    if (std::isnan(ratio)) continue;
    std::printf("  %-22s %6.2f times the time     aim: at most %g, %s\n", growth.name, ratio,
                growth.at_most, met(ratio <= growth.at_most));
  }
}

}  // namespace qel::bench
