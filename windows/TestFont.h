#pragma once

#include <windows.h>

#include "qel/platform/MeasuringSurface.h"
#include "windows/Fonts.h"

namespace qel::windows {

/// A device context in memory in which fonts are tried out.
class TestFont : public platform::MeasuringSurface {
 public:
  /// Raises when the system cannot create another device context.
  TestFont();
  TestFont(const TestFont&) = delete;
  TestFont& operator=(const TestFont&) = delete;
  ~TestFont() override;

  /// Selects the system's substitute for a font that it does not have; raises for a name that no
  /// font can have.
  void put_TestFont(std::u16string_view name) override;
  std::uintptr_t get_hDC() const override;
  platform::CharacterSet test_font_character_set() const override;

 private:
  HDC context_;
  HGDIOBJ first_font_;
  Font font_;
};

}  // namespace qel::windows
