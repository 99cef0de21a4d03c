#include "qel/base/Bidi.h"

#include <algorithm>
#include <cstddef>

#include "qel/base/CodeRanges.h"
#include "qel/base/Utf16.h"

namespace qel {
namespace {

#include "qel/base/UnicodeTables.inc"

using enum BidiClass;
using Classes = std::vector<BidiClass>;

BidiClass class_of(char32_t character) {
  const BidiRange* range = find_range(bidi_ranges, character);
  return range == nullptr ? L : range->value;
}

/// Where all letters are that read from right to left, and few other characters.
constexpr CodeRange right_to_left_blocks[] = {{0x590, 0x8FF},     {0x200F, 0x200F},
                                              {0xFB1D, 0xFDFF},   {0xFE70, 0xFEFF},
                                              {0x10800, 0x10FFF}, {0x1E800, 0x1EFFF}};

bool is_right_to_left(char32_t character) {
  if (character < right_to_left_blocks[0].first) return false;
  if (find_range(right_to_left_blocks, character) == nullptr) return false;
  const BidiClass value = class_of(character);
  return value == R || value == AL;
}

/// The class of each code unit; both halves of a pair have that of the pair.
Classes classes_of(std::u16string_view text) {
  Classes classes;
  classes.reserve(text.size());
  for (std::size_t at = 0; at < text.size();) {
    const char32_t character = character_at(text, at);
    classes.resize(at += units_of(character), class_of(character));
  }
  return classes;
}

bool is_letter(BidiClass value) { return value == L || value == R || value == AL; }
bool is_terminator(BidiClass value) { return value == ET; }
bool is_neutral(BidiClass value) { return value == S || value == WS || value == ON; }

/// Calls `visit(begin, end)` for each longest row of classes that `is_one` accepts.
template <class Visit>
void for_each_row(const Classes& classes, bool (*is_one)(BidiClass), Visit visit) {
  const auto begin_of_all = classes.begin();
  for (auto begin = begin_of_all; begin != classes.end();) {
    begin = std::find_if(begin, classes.end(), is_one);
    const auto end = std::find_if_not(begin, classes.end(), is_one);
    if (begin != end) {
      visit(static_cast<std::size_t>(begin - begin_of_all),
            static_cast<std::size_t>(end - begin_of_all));
    }
    begin = end;
  }
}

void fill(Classes& classes, std::size_t begin, std::size_t end, BidiClass value) {
  std::fill(classes.begin() + static_cast<std::ptrdiff_t>(begin),
            classes.begin() + static_cast<std::ptrdiff_t>(end), value);
}

/// Rules W1 to W3: marks are as what they stand on, and digits behind Arabic letters are Arabic.
void resolve_marks_and_letters(Classes& classes, BidiClass direction) {
  BidiClass before = direction;
  BidiClass letter = direction;
  for (BidiClass& value : classes) {
    if (value == NSM) value = before;
    before = value;
    if (is_letter(value)) letter = value;
    if (value == EN && letter == AL) value = AN;
  }
  std::replace(classes.begin(), classes.end(), AL, R);
}

/// Rules W4 to W7: separators and terminators of numbers, and numbers within text from left to
/// right.
void resolve_numbers(Classes& classes, BidiClass direction) {
  for (std::size_t i = 1; i + 1 < classes.size(); ++i) {
    const BidiClass before = classes[i - 1];
    const bool separates = (before == EN && (classes[i] == ES || classes[i] == CS)) ||
                           (before == AN && classes[i] == CS);
    if (separates && classes[i + 1] == before) classes[i] = before;
  }
  for_each_row(classes, is_terminator, [&](std::size_t begin, std::size_t end) {
    const bool is_number =
        (begin > 0 && classes[begin - 1] == EN) || (end < classes.size() && classes[end] == EN);
    fill(classes, begin, end, is_number ? EN : ON);
  });
  BidiClass letter = direction;
  for (BidiClass& value : classes) {
    if (is_letter(value)) letter = value;
    if (value == ES || value == CS) value = ON;
    if (value == EN && letter == L) value = L;
  }
}

/// Rules N1 and N2: what is neutral goes with both sides, or with the paragraph.
void resolve_neutrals(Classes& classes, BidiClass direction) {
  const auto side = [](BidiClass value) { return value == L ? L : R; };
  for_each_row(classes, is_neutral, [&](std::size_t begin, std::size_t end) {
    const BidiClass before = begin == 0 ? direction : side(classes[begin - 1]);
    const BidiClass after = end == classes.size() ? direction : side(classes[end]);
    fill(classes, begin, end, before == after ? before : direction);
  });
}

/// Rules I1 and I2.
std::uint8_t level_of(BidiClass value, std::uint8_t paragraph) {
  if (value == L) return paragraph == 0 ? 0 : 2;
  return value == R ? 1 : 2;
}

}  // namespace

bool has_right_to_left(std::u16string_view text) {
  const auto may_be = [](char16_t unit) { return unit >= right_to_left_blocks[0].first; };
  for (std::size_t at = 0;;) {
    const auto found =
        std::find_if(text.begin() + static_cast<std::ptrdiff_t>(at), text.end(), may_be);
    if (found == text.end()) return false;
    at = static_cast<std::size_t>(found - text.begin());
    if (is_right_to_left(next_character(text, at))) return true;
  }
}

BidiLevels bidi_levels(std::u16string_view paragraph) {
  const Classes original = classes_of(paragraph);
  const auto letter = std::find_if(original.begin(), original.end(), is_letter);
  const BidiClass direction = letter == original.end() || *letter == L ? L : R;
  Classes classes = original;
  resolve_marks_and_letters(classes, direction);
  resolve_numbers(classes, direction);
  resolve_neutrals(classes, direction);
  BidiLevels levels;
  levels.paragraph = direction == L ? 0 : 1;
  levels.units.reserve(classes.size());
  for (const BidiClass value : classes) levels.units.push_back(level_of(value, levels.paragraph));
  bool is_before_tab = false;  // rule L1
  for (std::size_t i = classes.size(); i > 0; --i) {
    is_before_tab = original[i - 1] == S || (is_before_tab && original[i - 1] == WS);
    if (is_before_tab) levels.units[i - 1] = levels.paragraph;
  }
  return levels;
}

}  // namespace qel
