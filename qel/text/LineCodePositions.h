#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

namespace qel {

/// Where the line codes ("/nl") of a markup text stand between its characters, so that they can be
/// put back into what decoding and encoding made of it.
class LineCodePositions {
 public:
  explicit LineCodePositions(std::u16string_view markup);

  /// How many characters the text has.
  std::size_t length() const { return length_; }

  /// The line codes of the characters from `begin` up to `end`, both of them in the text. Those at
  /// an edge where characters are cut off go.
  LineCodePositions part(std::size_t begin, std::size_t end) const;
  /// The line codes after `inserted` characters have taken the place of those from `begin` up to
  /// `end`, both of them in the text.
  LineCodePositions replaced(std::size_t begin, std::size_t end, std::size_t inserted) const;

  /// `markup`, which has as many characters, with these line codes. Those that it has stay.
  std::u16string put_into(std::u16string_view markup) const;

 private:
  struct Codes {
    std::size_t position;  // how many characters come before
    std::int32_t count;
  };

  LineCodePositions() = default;

  std::vector<Codes> codes_;  // in the order of their positions
  std::size_t length_ = 0;
};

}  // namespace qel
