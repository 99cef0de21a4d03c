#include "qel/richtext/RtfTables.h"

#include <algorithm>
#include <array>
#include <cstddef>
#include <utility>

#include "qel/base/CaseMapping.h"
#include "qel/richtext/CodePage.h"
#include "qel/richtext/SymbolFonts.h"

namespace qel::richtext {
namespace {

/// Of a table.
constexpr std::size_t most_entries = std::size_t{1} << 16U;

/// The endings of names, each with its code page.
constexpr std::array<std::pair<int, std::u16string_view>, 9> endings = {{{1250, u" CE"},
                                                                         {1251, u" Cyr"},
                                                                         {1253, u" Greek"},
                                                                         {1254, u" Tur"},
                                                                         {1257, u" Baltic"},
                                                                         {1255, u" (Hebrew)"},
                                                                         {1256, u" (Arabic)"},
                                                                         {874, u" (Thai)"},
                                                                         {1258, u" (Vietnamese)"}}};

/// The ending that a name has; null for none.
const std::pair<int, std::u16string_view>* ending_of(std::u16string_view name) {
  const auto* const found = std::find_if(endings.begin(), endings.end(), [&](const auto& each) {
    const std::size_t before = name.size() - std::min(each.second.size(), name.size());
    return before > 0 && name[before] == u' ' &&
           equal_ignoring_case(name.substr(before), each.second);
  });
  return found == endings.end() ? nullptr : found;
}

}  // namespace

std::u16string_view family_of(std::u16string_view name) {
  const auto* const ending = ending_of(name);
  if (ending != nullptr) name.remove_suffix(ending->second.size());
  return name;
}

void RtfFontTable::set_character_set(std::int32_t character_set) {
  has_character_set_ = true;
  // A code page that the entry names outright holds, whatever the character set.
  if (!font_.code_page) font_.code_page = code_page_of_character_set(character_set);
}

void RtfFontTable::add_to_name(std::u16string_view text) {
  constexpr std::size_t longest = 200;
  font_.name.append(text.substr(0, longest - std::min(font_.name.size(), longest)));
}

void RtfFontTable::read_text(std::u16string_view text) {
  for (std::size_t end = 0; (end = text.find(u';')) != std::u16string_view::npos;) {
    add_to_name(text.substr(0, end));
    end_font();
    text.remove_prefix(end + 1);
  }
  add_to_name(text);
}

void RtfFontTable::end_font() {
  const std::size_t first = font_.name.find_first_not_of(u' ');
  if (first != std::u16string::npos) {
    font_.name.erase(0, first);
    // Of fonts for letters, or for any characters, entries may say so whatever the font is.
    const int code_page = font_.code_page.value_or(CodePage::western);
    const bool says_little = has_character_set_ && code_page == CodePage::western;
    const auto* const ending = ending_of(font_.name);
    if (ending != nullptr && (says_little || ending->first == code_page)) {
      font_.name.resize(family_of(font_.name).size());
    }
    if (says_little && SymbolFont::find(font_.name) != nullptr) font_.code_page = CodePage::symbol;
    if (fonts_.size() < most_entries || fonts_.contains(number_)) {
      fonts_.insert_or_assign(number_, std::move(font_));
    }
  }
  font_ = Font();
  has_character_set_ = false;
}

std::optional<int> RtfFontTable::name_code_page() const {
  // The bytes of a symbol font are glyphs, but those of its name are not.
  return font_.code_page == CodePage::symbol ? std::nullopt : font_.code_page;
}

const RtfFontTable::Font* RtfFontTable::find(std::int32_t number) const {
  const auto found = fonts_.find(number);
  return found == fonts_.end() ? nullptr : &found->second;
}

void RtfColorTable::read_text(std::u16string_view text) {
  for (auto ends = std::count(text.begin(), text.end(), u';'); ends > 0; --ends) end_color();
}

void RtfColorTable::end_color() {
  if (colors_.size() == most_entries) return;
  colors_.push_back(color_ ? std::optional(static_cast<Color>(*color_)) : std::nullopt);
  color_.reset();
}

std::optional<Color> RtfColorTable::find(std::int32_t number) const {
  if (number < 0 || static_cast<std::size_t>(number) >= colors_.size()) return {};
  return colors_[static_cast<std::size_t>(number)];
}

void RtfColorTable::set_component(std::int32_t component, std::int32_t value) {
  const auto shift = static_cast<unsigned>(component) * 8U;
  const auto bits = static_cast<std::uint32_t>(std::clamp(value, 0, 255));
  color_ = (color_.value_or(0) & ~(0xFFU << shift)) | bits << shift;
}

}  // namespace qel::richtext
