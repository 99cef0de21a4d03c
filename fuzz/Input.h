#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>

/// What the fuzz targets share.
namespace qel::fuzz {

/// The bytes of one run, and what can be made of them.
class Input {
 public:
  Input(const std::uint8_t* data, std::size_t size)
      : bytes_(reinterpret_cast<const char*>(data), size) {}

  std::string_view bytes() const { return bytes_; }

  /// A byte below 0xF0 is the character of that number, so that files of ASCII are readable seeds;
  /// one from 0xF0 on takes two more with it and makes any character, halves of pairs too.
  std::u16string text() const;

  /// A number from `least` to `most`, from the `index`-th pair of bytes, counted from the end. The
  /// bytes are part of the text all the same.
  std::int16_t number(std::size_t index, std::int16_t least, std::int16_t most) const;

 private:
  std::uint8_t at(std::size_t position) const {
    return static_cast<std::uint8_t>(bytes_[position]);
  }

  std::string_view bytes_;
};

/// Stops the run as a finding, naming what does not hold.
void require(bool holds, const char* what);

}  // namespace qel::fuzz
