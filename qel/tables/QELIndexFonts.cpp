#include "qel/tables/QELIndexFonts.h"

#include <algorithm>
#include <cstddef>
#include <exception>

#include "qel/base/CaseMapping.h"
#include "qel/base/Error.h"
#include "qel/tables/TableRecords.h"

namespace qel {
namespace {

constexpr std::u16string_view separator = u"<Fonts:Rec>";

}  // namespace

std::int16_t QELIndexFonts::FontIndexGivenFontName(std::u16string_view Name) const {
  if (equal_ignoring_case(names_.front(), Name)) return 0;
  for (std::size_t i = 1; i < count; ++i) {
    if (equal_ignoring_case(names_[i], Name)) return static_cast<std::int16_t>(i);
  }
  return -1;
}

namespace {

/// The name without what would end its entry or begin something else in RTF.
std::u16string in_rtf(std::u16string name) {
  std::erase_if(name, [](char16_t character) {
    return character == u'{' || character == u'}' || character == u'\\' || character == u';';
  });
  return name;
}

/// The name with letters in the other case: the first one if bit 0 of `letters` is set, and so on.
std::u16string with_other_case(std::u16string name, unsigned letters) {
  for (char16_t& character : name) {
    const std::u16string_view one(&character, 1);
    const char16_t lower = to_lower(one).front();
    const char16_t upper = to_upper(one).front();
    if (lower == upper) continue;
    if ((letters & 1U) != 0) character = character == lower ? upper : lower;
    letters >>= 1U;
  }
  return name;
}

}  // namespace

QELIndexFonts::Names QELIndexFonts::distinct_names() const {
  Names names;
  for (std::size_t i = 0; i < count; ++i) {
    const std::u16string name = names_[i].empty() ? std::u16string(unused) : in_rtf(names_[i]);
    const auto end = names.begin() + static_cast<std::ptrdiff_t>(i);
    names[i] = name;
    for (unsigned letters = 1; letters <= count && std::find(names.begin(), end, names[i]) != end;
         ++letters) {
      names[i] = with_other_case(name, letters);
    }
  }
  return names;
}

std::u16string QELIndexFonts::font_table(platform::MeasuringSurface* surface, Way way) {
  if (surface == nullptr) {
    throw Error(Error::object_not_set, "QELIndexFonts",
                "FontTable: no measuring surface is published");
  }
  mark_symbol_fonts(*surface);
  const Names names = way == Way::lossless ? distinct_names() : names_;
  std::u16string group = u"{\\fonttbl";
  for (std::size_t i = 0; i < count; ++i) {
    group.append(u"{\\f").append(records::from_integer(static_cast<std::int64_t>(i)));
    group.append(is_symbol_[i] ? u"\\ftech " : u" ").append(in_rtf(names[i])).append(u";}");
  }
  return group.append(u"}");
}

void QELIndexFonts::mark_symbol_fonts(platform::MeasuringSurface& surface) {
  // A surface may try a font out by changing the host's own fonts, and so font 0 of this table.
  const std::u16string default_font = names_.front();
  for (std::size_t i = 0; i < count; ++i) {
    is_symbol_[i] = false;
    if (names_[i] == unused) continue;
    try {
      surface.put_TestFont(names_[i]);
      is_symbol_[i] = surface.test_font_character_set() == platform::CharacterSet::symbol;
    } catch (const std::exception&) {
      // The font stays unmarked: not being able to try a font out is no reason to give up.
      continue;
    }
  }
  names_.front() = default_font;
}

std::u16string QELIndexFonts::get_All() const {
  return table_records::write_items([&](std::int16_t index) { return get_Font(index); })
      .append(separator)
      .append(records::write(size_));
}

void QELIndexFonts::put_All(std::u16string_view Value) {
  const auto fields = records::split(Value, separator, 2);
  const auto names = records::split(fields[0], table_records::item_separator, count);
  for (std::size_t i = 0; i < count; ++i) names_[i] = names[i];
  records::read(size_, fields[1]);
}

void QELIndexFonts::CopyFrom(const QELIndexFonts& Source) {
  names_ = Source.names_;
  size_ = Source.size_;
}

std::u16string QELIndexFonts::get_Font(std::int16_t Index) const {
  return table_records::is_index(Index) ? names_[static_cast<std::size_t>(Index)]
                                        : std::u16string();
}

void QELIndexFonts::put_Font(std::int16_t Index, std::u16string_view Value) {
  if (table_records::is_index(Index)) names_[static_cast<std::size_t>(Index)] = Value;
}

}  // namespace qel
