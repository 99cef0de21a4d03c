#include "Numbers.h"

#include <charconv>
#include <sstream>
#include <string>
#include <system_error>
#include <type_traits>

namespace qel::command {
namespace {

template <class Number>
CLI::Validator number_within(Number least, Number most) {
  return CLI::Validator(
      [least, most](std::string& text) {
        Number value = 0;
        const char* const begin = text.data() + (text.starts_with('+') ? 1 : 0);
        const char* const end = text.data() + text.size();
        const auto [rest, error] = std::from_chars(begin, end, value);
        // The limits reject "nan" too: comparisons with it are false.
        if (error == std::errc() && rest == end && value >= least && value <= most) {
          // The number as it was read here: to CLI11 a leading zero would mean octal.
          if constexpr (std::is_integral_v<Number>) text = std::to_string(value);
          return std::string();
        }
        std::ostringstream message;
        const char* const kind = std::is_integral_v<Number> ? "whole number" : "number";
        message << "'" << text << "' is not a " << kind << " from " << least << " to " << most;
        return message.str();
      },
      {});
}

}  // namespace

CLI::Validator whole_number(std::int64_t least, std::int64_t most) {
  return number_within(least, most);
}

CLI::Validator decimal_number(double least, double most) { return number_within(least, most); }

}  // namespace qel::command
