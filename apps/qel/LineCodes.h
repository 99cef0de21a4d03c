#pragma once

#include <cstddef>
#include <cstdint>
#include <functional>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace qel::command {

/// The line codes of a markup text, which decoding and encoding drop.
class LineCodes {
 public:
  explicit LineCodes(std::u16string_view markup);

  /// Where a line code goes that stood behind so many characters; nothing for nowhere. Codes do not
  /// overtake each other.
  using Move = std::function<std::optional<std::size_t>(std::size_t characters)>;

  /// `markup`, which has no line codes, with these.
  std::u16string put_into(std::u16string_view markup, const Move& move) const;

 private:
  struct Codes {
    std::size_t characters;  // of the plain text, before them
    std::int32_t count;
  };

  std::vector<Codes> codes_;
};

}  // namespace qel::command
