#include "qel/richtext/RtfTables.h"

#include <algorithm>
#include <array>
#include <cstddef>
#include <utility>

#include "qel/richtext/CodePage.h"

namespace qel::richtext {
namespace {

/// Where a name's ending for its code page begins: the end of the name when it has none.
std::size_t end_of_family(std::u16string_view name, int code_page) {
  using namespace std::string_view_literals;
  constexpr std::array<std::pair<int, std::u16string_view>, 9> endings = {
      {{1250, u" CE"sv},
       {1251, u" Cyr"sv},
       {1253, u" Greek"sv},
       {1254, u" Tur"sv},
       {1257, u" Baltic"sv},
       {1255, u" (Hebrew)"sv},
       {1256, u" (Arabic)"sv},
       {874, u" (Thai)"sv},
       {1258, u" (Vietnamese)"sv}}};
  for (const auto& [number, ending] : endings) {
    if (number == code_page && name.ends_with(ending)) return name.size() - ending.size();
  }
  return name.size();
}

}  // namespace

void RtfFontTable::set_character_set(std::int32_t character_set) {
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
    font_.name.resize(end_of_family(font_.name, font_.code_page.value_or(0)));
    fonts_.insert_or_assign(number_, std::move(font_));
  }
  font_ = Font();
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
