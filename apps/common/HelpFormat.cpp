#include "HelpFormat.h"

#include <cstddef>
#include <sstream>

namespace qel::command {
namespace {

constexpr std::size_t screen_width = 80;
constexpr std::size_t name_width = 28;

}  // namespace

HelpFormat::HelpFormat() { column_width(name_width); }

std::string HelpFormat::make_option_opts(const CLI::Option* option) const {
  return option->get_type_name().empty() ? "" : " " + option->get_type_name();
}

std::string HelpFormat::make_option_desc(const CLI::Option* option) const {
  std::istringstream words(option->get_description());
  std::string lines;
  std::size_t column = name_width;
  for (std::string word; words >> word; column += word.size() + 1) {
    const bool is_full = column + word.size() >= screen_width;
    if (is_full) column = name_width;
    if (!lines.empty()) lines.push_back(is_full ? '\n' : ' ');
    lines.append(word);
  }
  return lines;
}

}  // namespace qel::command
