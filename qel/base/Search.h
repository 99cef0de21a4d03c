#pragma once

#include <cstddef>
#include <string_view>

/// Searching in time linear in both texts, whatever they hold.
namespace qel {

/// Position of the first occurrence of `search` at or after `from`, which is at most the length of
/// the text; `npos` when there is none. An empty `search` occurs everywhere.
std::size_t find_text(std::u16string_view text, std::u16string_view search, std::size_t from = 0);
/// Position of the last occurrence; `npos` when there is none.
std::size_t find_last_text(std::u16string_view text, std::u16string_view search);

}  // namespace qel
