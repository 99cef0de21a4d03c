#include "qel/base/Graphemes.h"

#include <algorithm>

#include "qel/base/CodeRanges.h"
#include "qel/base/Utf16.h"

namespace qel {
namespace {

#include "qel/base/UnicodeTables.inc"

constexpr bool is_plain_ascii(char32_t character) { return character >= U' ' && character < 0x7F; }

/// Whether plain ASCII stands on both sides: the common case, a boundary without further looks.
bool is_between_plain_ascii(std::u16string_view text, std::size_t at) {
  return at > 0 && at < text.size() && is_plain_ascii(text[at - 1]) && is_plain_ascii(text[at]);
}

ClusterClass class_of(char32_t character) {
  if (character < 0x7F) return character < U' ' ? ClusterClass::Control : ClusterClass::Other;
  const ClusterRange* range = find_range(cluster_ranges, character);
  if (range == nullptr) return ClusterClass::Other;
  // The table has one row for all Hangul syllables: each without a final consonant is followed by
  // its 27 forms with one.
  const bool has_final = range->value == ClusterClass::LV && (character - range->first) % 28 != 0;
  return has_final ? ClusterClass::LVT : range->value;
}

bool is_regional_indicator(char32_t character) {
  return character >= 0x1F1E6 && character <= 0x1F1FF;
}

/// Whether the regional indicators that end at `at` leave the first half of a flag over.
bool is_within_flag(std::u16string_view text, std::size_t at) {
  constexpr std::size_t most = 600;  // even, so that no flag is open behind as many
  std::size_t count = 0;
  while (count < most && at >= 2 && is_regional_indicator(character_at(text, at - 2))) {
    ++count;
    at -= 2;
  }
  return count % 2 == 1;
}

/// Whether a pictograph, extended or not, ends at `at`. What is read belongs to one cluster.
bool is_behind_pictograph(std::u16string_view text, std::size_t at) {
  ClusterClass value = ClusterClass::Extend;
  while (value == ClusterClass::Extend && at > 0) {
    at = step_before(text, at);
    value = class_of(character_at(text, at));
  }
  return value == ClusterClass::ExtendedPictographic;
}

/// Whether the characters that meet at `at`, which lies within the text and is whole, belong to one
/// cluster.
bool is_within_cluster(std::u16string_view text, std::size_t at) {
  using enum ClusterClass;
  const std::size_t start = step_before(text, at);
  const ClusterClass before = class_of(character_at(text, start));
  const ClusterClass after = class_of(character_at(text, at));
  if (before == Control || after == Control) return false;
  if (before == Prepend) return true;
  switch (after) {
    case Extend:
    case ZWJ:
    case SpacingMark:
      return true;
    case ExtendedPictographic:
      return before == ZWJ && is_behind_pictograph(text, start);
    case RegionalIndicator:
      return is_within_flag(text, at);
    case L:
    case LV:
    case LVT:
      return before == L;
    case V:
      return before == L || before == V || before == LV;
    case T:
      return before == V || before == T || before == LV || before == LVT;
    default:
      return false;
  }
}

}  // namespace

std::size_t cluster_after(std::u16string_view text, std::size_t at) {
  if (is_between_plain_ascii(text, at + 1)) return at + 1;
  do {
    at = step_after(text, at);
  } while (at < text.size() && is_within_cluster(text, at));
  return at;
}

std::size_t cluster_before(std::u16string_view text, std::size_t at) {
  at = std::min(at, text.size());
  if (is_between_plain_ascii(text, at - 1)) return at - 1;
  if (at > 0) at = whole_position(text, at - 1);
  while (at > 0 && is_within_cluster(text, at)) at = step_before(text, at);
  return at;
}

bool extends_cluster(char32_t character) {
  const ClusterClass value = class_of(character);
  return value == ClusterClass::Extend || value == ClusterClass::ZWJ;
}

std::size_t whole_position(std::u16string_view text, std::size_t at) {
  if (at >= text.size()) return text.size();
  return at > 0 && step_after(text, at - 1) > at ? at - 1 : at;
}

}  // namespace qel
