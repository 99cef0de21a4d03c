#include "qel/headless/PropertyBag.h"

#include <array>
#include <charconv>
#include <cstddef>
#include <cstdint>
#include <optional>
#include <type_traits>

#include "qel/base/Records.h"

namespace qel::headless {
namespace {

std::u16string escaped(std::u16string_view text) {
  std::u16string out;
  for (const char16_t unit : text) {
    if (unit == u'\\') out.append(u"\\\\");
    if (unit == u'\n') out.append(u"\\n");
    if (unit == u'\r') out.append(u"\\r");
    if (unit != u'\\' && unit != u'\n' && unit != u'\r') out.push_back(unit);
  }
  return out;
}

std::u16string unescaped(std::u16string_view text) {
  std::u16string out;
  for (std::size_t at = 0; at < text.size(); ++at) {
    const bool is_escape = text[at] == u'\\' && at + 1 < text.size();
    const char16_t unit = is_escape ? text[++at] : text[at];
    if (is_escape && unit == u'n') {
      out.push_back(u'\n');
    } else if (is_escape && unit == u'r') {
      out.push_back(u'\r');
    } else {
      out.push_back(unit);
    }
  }
  return out;
}

std::optional<std::u16string> text_of(const Variant& value) {
  return std::visit(
      [](const auto& held) -> std::optional<std::u16string> {
        using Held = std::decay_t<decltype(held)>;
        if constexpr (std::is_same_v<Held, std::u16string>) {
          return escaped(held);
        } else if constexpr (std::is_same_v<Held, std::int32_t>) {
          return records::from_integer(held);
        } else if constexpr (std::is_same_v<Held, double>) {
          std::array<char, 32> digits{};
          const auto end = std::to_chars(digits.begin(), digits.end(), held).ptr;
          return std::u16string(digits.begin(), end);
        } else if constexpr (std::is_arithmetic_v<Held>) {
          return std::u16string(records::write(held));
        } else {
          return {};
        }
      },
      value);
}

template <class Held>
std::optional<Held> value_in(std::u16string_view text) {
  if constexpr (std::is_same_v<Held, bool>) return records::to_boolean(text);
  if constexpr (std::is_same_v<Held, std::int16_t>) return records::to_integer16(text);
  if constexpr (std::is_same_v<Held, std::int32_t>) return records::to_integer32(text);
  if constexpr (std::is_same_v<Held, float>) return records::to_single(text);
  if constexpr (std::is_same_v<Held, double>) return records::to_number(text);
  if constexpr (std::is_same_v<Held, std::u16string>) return unescaped(text);
  return {};
}

}  // namespace

Variant PropertyBag::read(std::u16string_view name, const Variant& preset) const {
  const auto found = values_.find(name);
  if (found == values_.end()) return preset;
  return std::visit(
      [&](const auto& held) -> Variant {
        const auto value = value_in<std::decay_t<decltype(held)>>(found->second);
        return value ? Variant(*value) : preset;
      },
      preset);
}

void PropertyBag::write(std::u16string_view name, const Variant& value, const Variant& preset) {
  const auto text = value == preset ? std::nullopt : text_of(value);
  if (text) {
    values_.insert_or_assign(std::u16string(name), *text);
  } else if (const auto kept = values_.find(name); kept != values_.end()) {
    values_.erase(kept);
  }
}

std::u16string PropertyBag::get_All() const {
  std::u16string all;
  for (const auto& [name, value] : values_)
    all.append(name).append(u"=").append(value).append(u"\n");
  return all;
}

void PropertyBag::put_All(std::u16string_view text) {
  values_.clear();
  for (const std::u16string_view line : records::split(text, u"\n")) {
    const std::size_t equals = line.find(u'=');
    if (equals == std::u16string_view::npos) continue;
    std::u16string_view value = line.substr(equals + 1);
    if (value.ends_with(u'\r')) value.remove_suffix(1);
    values_.insert_or_assign(std::u16string(line.substr(0, equals)), std::u16string(value));
  }
}

}  // namespace qel::headless
