#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

namespace qel {

/// The positions of the line codes ("/nl") of a markup text between its characters. With these,
/// line codes can be put back after decoding and encoding have dropped them.
class LineCodePositions {
 public:
  explicit LineCodePositions(std::u16string_view markup);

  /// How many characters the text has.
  std::size_t length() const { return length_; }

  /// The line codes of the characters from `begin` up to `end`, which both lie in the text. Line
  /// codes at a cut are left out.
  LineCodePositions part(std::size_t begin, std::size_t end) const;
  /// The line codes after `inserted` characters have replaced those from `begin` up to `end`, which
  /// both lie in the text.
  LineCodePositions replaced(std::size_t begin, std::size_t end, std::size_t inserted) const;

  /// `markup`, which has the same number of characters, with these line codes. Line codes that it
  /// has already stay.
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
