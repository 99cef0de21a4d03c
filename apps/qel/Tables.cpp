#include "Tables.h"

#include <algorithm>
#include <charconv>
#include <cstddef>
#include <cstdint>
#include <optional>
#include <utility>

#include "qel/base/Color.h"
#include "qel/base/Records.h"
#include "qel/convert/Convert.h"

namespace qel::command {
namespace {

constexpr std::u16string_view fonts_separator = u"<Fonts:Rec>";
constexpr std::u16string_view colors_separator = u"<Colors:Rec>";

struct Assignment {
  std::int16_t index;
  std::string_view value;
};

Assignment parse_assignment(std::string_view text) {
  const bool is_assignment = text.size() >= 2 && text[0] >= '0' && text[0] <= '9' && text[1] == '=';
  if (!is_assignment) {
    throw TableError("'" + std::string(text) + "' does not begin with an index 0 to 9 and '='");
  }
  return {static_cast<std::int16_t>(text[0] - '0'), text.substr(2)};
}

std::optional<std::uint32_t> parse_number(std::string_view digits, int base) {
  std::uint32_t number = 0;
  const char* const end = digits.data() + digits.size();
  const auto [stopped, error] = std::from_chars(digits.data(), end, number, base);
  if (error != std::errc() || stopped != end) return {};
  return number;
}

std::optional<Color> parse_color(std::string_view text) {
  constexpr std::uint32_t largest = 0xFFFFFF;
  constexpr std::size_t html_length = 7;
  if (!text.empty() && text.front() == '#') {
    const auto html = parse_number(text.substr(1), 16);
    if (!html || text.size() != html_length) return {};
    const auto value = static_cast<int>(*html);
    return rgb(value >> 16, (value >> 8) & 0xFF, value & 0xFF);
  }
  const auto value = parse_number(text, 10);
  if (!value || *value > largest) return {};
  return static_cast<Color>(*value);
}

}  // namespace

void Tables::read_records(std::u16string_view lines) {
  std::size_t number = 0;
  for (std::u16string_view line : records::split(lines, u"\n")) {
    ++number;
    if (!line.empty() && line.back() == u'\r') line.remove_suffix(1);
    if (line.empty()) continue;
    if (line.find(fonts_separator) != std::u16string_view::npos) {
      fonts.put_All(line);
    } else if (line.find(colors_separator) != std::u16string_view::npos) {
      colors->put_All(line);
    } else {
      throw TableError("line " + std::to_string(number) +
                       " is neither a record of fonts nor one of colours");
    }
  }
  // Reading a record leaves the RTF colour table as it was; setting a colour rebuilds it.
  colors->put_Color(0, colors->get_Color(0));
}

std::u16string Tables::records() const {
  return fonts.get_All().append(u"\n").append(colors->get_All()).append(u"\n");
}

void Tables::use_in(convert::Options& options) const {
  options.fonts = fonts;
  options.colors = colors;
}

void Tables::set_font(std::string_view assignment) {
  const auto [index, name] = parse_assignment(assignment);
  const bool has_control =
      std::any_of(name.begin(), name.end(), [](unsigned char c) { return c < ' '; });
  if (has_control)
    throw TableError("the name of font " + std::to_string(index) + " has control characters");
  fonts.put_Font(index, convert::decode_text(name));
}

void Tables::set_color(std::string_view assignment) {
  const auto [index, value] = parse_assignment(assignment);
  const auto color = parse_color(value);
  if (!color) {
    throw TableError("'" + std::string(value) +
                     "' is neither #RRGGBB nor a number from 0 to 16777215");
  }
  colors->put_Color(index, *color);
}

}  // namespace qel::command
