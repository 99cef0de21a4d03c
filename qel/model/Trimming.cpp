#include "qel/model/Trimming.h"

#include <algorithm>
#include <cstddef>
#include <iterator>
#include <utility>

#include "qel/base/CaseMapping.h"
#include "qel/model/Encoder.h"
#include "qel/model/QELCode.h"

namespace qel {
namespace {

bool is_blank(char16_t character) { return character == u' '; }

/// How many of the characters that the text begins or ends with are unwanted. In the stated way,
/// escaped codes are placeholders.
using Measure = std::size_t (*)(std::u16string_view text, Way way);

std::size_t leading_blanks(std::u16string_view text, Way /*way*/) {
  return std::min(text.find_first_not_of(u' '), text.size());
}

std::size_t trailing_blanks(std::u16string_view text, Way /*way*/) {
  return text.size() - (text.find_last_not_of(u' ') + 1);
}

// A code that is text looks like punctuation at both ends, but is not.

std::size_t leading_punctuation(std::u16string_view text, Way way) {
  std::size_t count = 0;
  for (; count < text.size() && is_punctuation(text[count]); ++count) {
    if (length_of_code_as_text(text.substr(count), way) > 0) break;
  }
  return count;
}

std::size_t trailing_punctuation(std::u16string_view text, Way way) {
  constexpr std::size_t placeholder = 4;
  std::size_t left = text.size();
  while (left > 0 && is_punctuation(text[left - 1])) {
    if (left >= placeholder &&
        length_of_code_as_text(text.substr(left - placeholder), way) == placeholder) {
      break;
    }
    --left;
  }
  return text.size() - left;
}

/// Drops characters from the front of the text, run after run, while they are unwanted.
void trim_left(std::vector<Run>& runs, Measure unwanted, Way way) {
  for (Run& run : runs) {
    run.text.remove_prefix(unwanted(run.text, way));
    if (!run.text.empty()) return;
  }
}

void trim_right(std::vector<Run>& runs, Measure unwanted, Way way) {
  for (std::size_t i = runs.size(); i-- > 0;) {
    runs[i].text.remove_suffix(unwanted(runs[i].text, way));
    if (!runs[i].text.empty()) return;
  }
}

/// Keeps the first of several blanks in a row, whichever runs they lie in.
void remove_double_blanks(std::vector<Run>& runs, std::deque<std::u16string>& storage, Way way) {
  bool after_blank = false;
  const auto is_surplus = [&](char16_t character) {
    const bool surplus = after_blank && is_blank(character);
    after_blank = is_blank(character);
    return surplus;
  };
  for (Run& run : runs) {
    if (way == Way::lossless && run.line_codes_before > 0) after_blank = false;
    std::u16string text;
    text.reserve(run.text.size());
    std::remove_copy_if(run.text.begin(), run.text.end(), std::back_inserter(text), is_surplus);
    if (text.size() == run.text.size()) continue;
    run.text = storage.emplace_back(std::move(text));
  }
}

}  // namespace

bool trims(const OutputOptions& options) {
  return options.trim_left || options.trim_right || options.trim_left_punctuation ||
         options.trim_right_punctuation || options.single_blanks;
}

void trim(std::vector<Run>& runs, const OutputOptions& options,
          std::deque<std::u16string>& storage) {
  const Way way = options.way;
  if (options.trim_left) trim_left(runs, leading_blanks, way);
  if (options.trim_right) trim_right(runs, trailing_blanks, way);
  if (options.trim_left_punctuation) trim_left(runs, leading_punctuation, way);
  if (options.trim_right_punctuation) trim_right(runs, trailing_punctuation, way);
  if (options.single_blanks) remove_double_blanks(runs, storage, way);
}

}  // namespace qel
