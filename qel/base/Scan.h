#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>

namespace qel {

/// Position of the first character at or after `from` for which `wanted` holds; the length of the
/// text when there is none. Looks at eight characters at a time, in a form that compilers turn into
/// vector instructions: the conversions spend most of their time here. `wanted` should be made of
/// comparisons joined by `|`.
template <class Predicate>
std::size_t find_first(std::u16string_view text, std::size_t from, Predicate wanted) {
  constexpr std::size_t block = 8;
  const char16_t* const data = text.data();
  std::size_t at = from;
  for (; at + block <= text.size(); at += block) {
    std::uint16_t hits = 0;
    for (std::size_t i = 0; i < block; ++i) {
      hits = static_cast<std::uint16_t>(hits | (wanted(data[at + i]) ? 1U : 0U));
    }
    if (hits != 0) break;
  }
  while (at < text.size() && !wanted(data[at])) ++at;
  return at;
}

/// The same for the first of the `Wanted` characters.
template <char16_t... Wanted>
std::size_t find_any(std::u16string_view text, std::size_t from) {
  return find_first(text, from, [](char16_t c) { return ((c == Wanted) | ...); });
}

/// `text` with each occurrence of `search`, from left to right, replaced by `replacement`.
/// An empty `search` occurs nowhere.
inline std::u16string replace_all(std::u16string text, std::u16string_view search,
                                  std::u16string_view replacement) {
  std::size_t hit = search.empty() ? std::u16string::npos : text.find(search);
  if (hit == std::u16string::npos) return text;
  std::u16string result;
  result.reserve(text.size());
  std::size_t kept = 0;
  for (; hit != std::u16string::npos; hit = text.find(search, kept)) {
    result.append(text, kept, hit - kept).append(replacement);
    kept = hit + search.size();
  }
  return result.append(text, kept, std::u16string::npos);
}

}  // namespace qel
