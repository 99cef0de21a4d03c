#include "qel/model/Trimming.h"

#include <algorithm>
#include <cstddef>
#include <iterator>
#include <utility>

#include "qel/base/CaseMapping.h"
#include "qel/model/Encoder.h"

namespace qel {
namespace {

bool is_blank(char16_t character) { return character == u' '; }
bool is_punctuation_mark(char16_t character) { return is_punctuation(character); }

using Predicate = bool (*)(char16_t);

/// Drops characters from the front of the text, run after run, while they are unwanted.
void trim_left(std::vector<Run>& runs, Predicate unwanted) {
  for (Run& run : runs) {
    const auto kept = std::find_if_not(run.text.begin(), run.text.end(), unwanted);
    run.text.remove_prefix(static_cast<std::size_t>(kept - run.text.begin()));
    if (!run.text.empty()) return;
  }
}

void trim_right(std::vector<Run>& runs, Predicate unwanted) {
  for (std::size_t i = runs.size(); i-- > 0;) {
    std::u16string_view& text = runs[i].text;
    const auto kept = std::find_if_not(text.rbegin(), text.rend(), unwanted);
    text.remove_suffix(static_cast<std::size_t>(kept - text.rbegin()));
    if (!text.empty()) return;
  }
}

/// Of several blanks in a row, whatever the runs they lie in, the first stays.
void remove_double_blanks(std::vector<Run>& runs, std::deque<std::u16string>& storage) {
  bool after_blank = false;
  const auto is_surplus = [&](char16_t character) {
    const bool surplus = after_blank && is_blank(character);
    after_blank = is_blank(character);
    return surplus;
  };
  for (Run& run : runs) {
    std::u16string text;
    text.reserve(run.text.size());
    std::remove_copy_if(run.text.begin(), run.text.end(), std::back_inserter(text), is_surplus);
    if (text.size() == run.text.size()) continue;
    run.text = storage.emplace_back(std::move(text));
  }
}

}  // namespace

bool trims(const OutputForm& form) {
  return form.trim_left || form.trim_right || form.trim_left_punctuation ||
         form.trim_right_punctuation || form.single_blanks;
}

void trim(std::vector<Run>& runs, const OutputForm& form, std::deque<std::u16string>& storage) {
  if (form.trim_left) trim_left(runs, is_blank);
  if (form.trim_right) trim_right(runs, is_blank);
  if (form.trim_left_punctuation) trim_left(runs, is_punctuation_mark);
  if (form.trim_right_punctuation) trim_right(runs, is_punctuation_mark);
  if (form.single_blanks) remove_double_blanks(runs, storage);
}

}  // namespace qel
