#pragma once

#include <cstdint>
#include <string_view>

namespace qel::platform {

/// The character sets that a font's metrics report.
enum class CharacterSet : std::uint8_t { ansi = 0, symbol = 2 };

/// A surface on which fonts are tried out: choose a font, then ask about it.
class MeasuringSurface {
 public:
  MeasuringSurface() = default;
  MeasuringSurface(const MeasuringSurface&) = delete;
  MeasuringSurface& operator=(const MeasuringSurface&) = delete;
  virtual ~MeasuringSurface() = default;

  /// Chooses the font that the next question is about. May raise for a font that cannot be
  /// selected.
  virtual void put_TestFont(std::u16string_view name) = 0;
  /// Handle of the device context in which the font is selected; 0 where the platform has none.
  virtual std::uintptr_t get_hDC() const = 0;
  /// Character set of the chosen font. May raise.
  virtual CharacterSet test_font_character_set() const = 0;
};

}  // namespace qel::platform
