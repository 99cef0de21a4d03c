#include "qel/base/Records.h"

#include <array>
#include <charconv>
#include <cmath>
#include <limits>
#include <locale>
#include <string>

#include "qel/base/CaseMapping.h"

namespace qel::records {
namespace {

std::u16string_view without_blanks_around(std::u16string_view text) {
  constexpr std::u16string_view blanks = u" \t";
  const std::size_t first = text.find_first_not_of(blanks);
  if (first == std::u16string_view::npos) return {};
  return text.substr(first, text.find_last_not_of(blanks) - first + 1);
}

template <class... Arguments>
std::u16string written(Arguments... arguments) {
  std::array<char, 64> digits{};  // the smallest single takes 50 of them
  const auto end = std::to_chars(digits.data(), digits.data() + digits.size(), arguments...).ptr;
  return {digits.data(), end};
}

}  // namespace

std::vector<std::u16string_view> split(std::u16string_view text, std::u16string_view separator) {
  std::vector<std::u16string_view> pieces;
  if (text.empty()) return pieces;
  std::size_t begin = 0;
  for (std::size_t hit = 0; (hit = text.find(separator, begin)) != std::u16string_view::npos;) {
    pieces.push_back(text.substr(begin, hit - begin));
    begin = hit + separator.size();
  }
  pieces.push_back(text.substr(begin));
  return pieces;
}

std::vector<std::u16string_view> split(std::u16string_view text, std::u16string_view separator,
                                       std::size_t count) {
  auto pieces = split(text, separator);
  pieces.resize(count);
  return pieces;
}

namespace {

/// The number that the whole text denotes; it begins with neither a blank nor a plus.
#ifdef __cpp_lib_to_chars
std::optional<double> read_decimal(const std::string& text) {
  const char* const end_of_text = text.data() + text.size();
  double value = 0;
  const auto [end, error] = std::from_chars(text.data(), end_of_text, value);
  if (error != std::errc() || end != end_of_text) return {};
  return value;
}
#else
// The standard library reads only integers this way. Its streams may drop digits of long numbers.
std::optional<double> read_decimal(const std::string& text) {
  static const locale_t without_customs = newlocale(LC_ALL_MASK, "C", nullptr);
  char* end = nullptr;
  const double value = strtod_l(text.c_str(), &end, without_customs);
  if (end != text.c_str() + text.size() || std::isinf(value)) return {};
  // Not 0, but too small for a double.
  const auto mantissa = std::string_view(text).substr(0, text.find_first_of("eE"));
  if (value == 0 && mantissa.find_first_of("123456789") != std::string_view::npos) return {};
  return value;
}
#endif

}  // namespace

std::optional<double> to_number(std::u16string_view text) {
  text = without_blanks_around(text);
  if (!text.empty() && text.front() == u'+') {
    text.remove_prefix(1);
    if (!text.empty() && (text.front() == u'+' || text.front() == u'-')) return {};
  }
  if (text.empty() || text.find_first_not_of(u"0123456789+-.eE") != std::u16string_view::npos) {
    return {};
  }
  return read_decimal(std::string(text.begin(), text.end()));
}

std::optional<float> to_single(std::u16string_view text) {
  const auto value = to_number(text);
  if (!value || std::abs(*value) > std::numeric_limits<float>::max()) return {};
  return static_cast<float>(*value);
}

namespace {

template <class Integer>
std::optional<Integer> to_integer(std::u16string_view text) {
  const auto value = to_number(text);
  if (!value) return {};
  const double rounded = std::nearbyint(*value);
  using Limits = std::numeric_limits<Integer>;
  if (rounded < Limits::min() || rounded > Limits::max()) return {};
  return static_cast<Integer>(rounded);
}

}  // namespace

std::optional<std::int16_t> to_integer16(std::u16string_view text) {
  return to_integer<std::int16_t>(text);
}

std::optional<std::int32_t> to_integer32(std::u16string_view text) {
  return to_integer<std::int32_t>(text);
}

std::optional<bool> to_boolean(std::u16string_view text) {
  const std::u16string word = to_lower(without_blanks_around(text));
  if (word == u"true") return true;
  if (word == u"false") return false;
  const auto number = to_number(text);
  if (!number) return {};
  return *number != 0;
}

std::u16string from_integer(std::int64_t value) { return written(value); }

namespace {

template <class Field, class Value>
void assign(Field& field, const std::optional<Value>& value) {
  if (value) field = *value;
}

}  // namespace

void read(std::u16string& field, std::u16string_view text) { field = text; }
void read(float& field, std::u16string_view text) { assign(field, to_single(text)); }
void read(std::int16_t& field, std::u16string_view text) { assign(field, to_integer16(text)); }
void read(bool& field, std::u16string_view text) { assign(field, to_boolean(text)); }

std::u16string_view write(const std::u16string& field) { return field; }
std::u16string write(float field) { return written(field, std::chars_format::fixed); }
std::u16string write(std::int16_t field) { return written(field); }
std::u16string_view write(bool field) { return field ? u"True" : u"False"; }

}  // namespace qel::records
