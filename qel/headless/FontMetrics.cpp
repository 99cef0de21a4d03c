#include "qel/headless/FontMetrics.h"

#include <algorithm>
#include <array>
#include <cstddef>

#include "qel/base/CaseMapping.h"
#include "qel/base/CodeRanges.h"
#include "qel/base/Graphemes.h"

namespace qel::headless {
namespace {

/// Characters whose advances begin at `index`.
struct CoverageRange {
  char32_t first;
  char32_t last;
  std::size_t index;
};

#include "qel/headless/FontMetrics.inc"

constexpr std::size_t ascii_count = U'~' - U' ' + 1;
static_assert(coverage[0].first == U' ' && coverage[0].last == U'~');

constexpr std::array<std::uint16_t, ascii_count> mono_ascii_advances = [] {
  std::array<std::uint16_t, ascii_count> advances{};
  advances.fill(mono_advance);
  return advances;
}();

/// Formatting characters other than those that belong to the cluster before them.
constexpr CodeRange format_ranges[] = {
    {0x200B, 0x200F}, {0x202A, 0x202E}, {0x2060, 0x206F}, {0xFEFF, 0xFEFF}, {0xE0000, 0xE0FFF}};

bool has_no_width(char32_t character) {
  return find_range(format_ranges, character) != nullptr || extends_cluster(character);
}

/// East Asian wide characters and pictographs.
constexpr CodeRange wide_ranges[] = {
    {0x1100, 0x115F}, {0x2600, 0x27BF}, {0x2E80, 0xA4CF}, {0xA960, 0xA97F},   {0xAC00, 0xD7A3},
    {0xF900, 0xFAFF}, {0xFE30, 0xFE6F}, {0xFF01, 0xFF60}, {0x1F000, 0x1FAFF}, {0x20000, 0x3FFFD}};

/// The place of the character in the encoding of Symbol; a place that is empty there if it has
/// none.
std::size_t symbol_index(char32_t character) {
  constexpr char32_t no_break_space = 0xA0;
  constexpr std::size_t empty = 0x80 - U' ';
  static_assert(symbol_characters[empty] == 0);
  if (character == no_break_space) return empty;  // The euro sign in that place is U+F0A0 only.
  const char32_t code = (character & ~0xFFU) == 0xF000 ? character & 0xFFU : character;
  const std::size_t index = code - U' ';
  return index < std::size(symbol_characters) ? index : empty;
}

struct NamedFamily {
  std::u16string_view name;
  FontFamily family;
};

/// The first row that a name begins with counts.
constexpr std::array named_families = {NamedFamily{u"arial", FontFamily::sans},
                                       NamedFamily{u"times", FontFamily::serif},
                                       NamedFamily{u"courier", FontFamily::mono},
                                       NamedFamily{u"symbol", FontFamily::symbol},
                                       NamedFamily{u"liberation serif", FontFamily::serif},
                                       NamedFamily{u"liberation mono", FontFamily::mono},
                                       NamedFamily{u"georgia", FontFamily::serif},
                                       NamedFamily{u"cambria", FontFamily::serif},
                                       NamedFamily{u"constantia", FontFamily::serif},
                                       NamedFamily{u"garamond", FontFamily::serif},
                                       NamedFamily{u"palatino", FontFamily::serif},
                                       NamedFamily{u"book antiqua", FontFamily::serif},
                                       NamedFamily{u"bookman", FontFamily::serif},
                                       NamedFamily{u"baskerville", FontFamily::serif},
                                       NamedFamily{u"bodoni", FontFamily::serif},
                                       NamedFamily{u"century gothic", FontFamily::sans},
                                       NamedFamily{u"century", FontFamily::serif},
                                       NamedFamily{u"new century schoolbook", FontFamily::serif},
                                       NamedFamily{u"cg times", FontFamily::serif},
                                       NamedFamily{u"tms rmn", FontFamily::serif},
                                       NamedFamily{u"ms serif", FontFamily::serif},
                                       NamedFamily{u"dejavu serif", FontFamily::serif},
                                       NamedFamily{u"noto serif", FontFamily::serif},
                                       NamedFamily{u"nimbus roman", FontFamily::serif},
                                       NamedFamily{u"serif", FontFamily::serif},
                                       NamedFamily{u"consolas", FontFamily::mono},
                                       NamedFamily{u"lucida console", FontFamily::mono},
                                       NamedFamily{u"menlo", FontFamily::mono},
                                       NamedFamily{u"monaco", FontFamily::mono},
                                       NamedFamily{u"dejavu sans mono", FontFamily::mono},
                                       NamedFamily{u"noto mono", FontFamily::mono},
                                       NamedFamily{u"nimbus mono", FontFamily::mono},
                                       NamedFamily{u"fixedsys", FontFamily::mono},
                                       NamedFamily{u"terminal", FontFamily::mono},
                                       NamedFamily{u"monospace", FontFamily::mono}};

/// Whether the name is `known` (in lower case) or begins with it and a blank.
bool is_named(std::u16string_view name, std::u16string_view known) {
  if (name.size() < known.size()) return false;
  if (name.size() > known.size() && name[known.size()] != u' ') return false;
  return std::equal(known.begin(), known.end(), name.begin(), [](char16_t lower, char16_t unit) {
    return to_lower(char32_t{unit}) == lower;
  });
}

const std::uint16_t* ascii_advances(FontFamily family, unsigned style) {
  switch (family) {
    case FontFamily::serif:
      return serif_advances[style];
    case FontFamily::mono:
      return mono_ascii_advances.data();
    case FontFamily::symbol:
      return symbol_advances;
    case FontFamily::sans:
      break;
  }
  return sans_advances[style];
}

}  // namespace

FontFamily family_named(std::u16string_view name) {
  const auto found =
      std::find_if(named_families.begin(), named_families.end(),
                   [name](const NamedFamily& row) { return is_named(name, row.name); });
  return found == named_families.end() ? FontFamily::sans : found->family;
}

char32_t symbol_character(char32_t character) {
  const char32_t meant = symbol_characters[symbol_index(character)];
  return meant == 0 ? character : meant;
}

FontFace::FontFace(const platform::TextFont& font)
    : family_(family_named(font.name)),
      style_((font.bold ? 1U : 0U) + (font.italic ? 2U : 0U)),
      ascii_advances_(ascii_advances(family_, style_)) {}

const LineMetrics& FontFace::lines() const {
  static constexpr std::array lines = {sans_lines, serif_lines, mono_lines, symbol_lines};
  return lines[static_cast<std::size_t>(family_)];
}

bool FontFace::covers(char32_t character) const {
  if (character <= U'~' || character == U'\uFFFD' || find_range(coverage, character) != nullptr) {
    return true;
  }
  return has_no_width(character) ||
         (family_ == FontFamily::symbol && symbol_advances[symbol_index(character)] != 0);
}

std::uint32_t FontFace::other_advance(char32_t character) const {
  if (character == U'\t') return advance(U' ');
  if (family_ == FontFamily::symbol) {
    const std::uint32_t width = symbol_advances[symbol_index(character)];
    if (width != 0) return width;
  }
  constexpr char32_t soft_hyphen = 0xAD;
  const CoverageRange* covered = find_range(coverage, character);
  if (covered == nullptr ? has_no_width(character) : character == soft_hyphen) return 0;
  if (covered == nullptr && find_range(wide_ranges, character) != nullptr) return units_per_em;
  if (family_ == FontFamily::mono) return mono_advance;
  const bool serif = family_ == FontFamily::serif;
  if (covered == nullptr) return (serif ? serif_averages : sans_averages)[style_];
  const std::size_t index = covered->index + (character - covered->first);
  return (serif ? serif_advances : sans_advances)[style_][index];
}

}  // namespace qel::headless
