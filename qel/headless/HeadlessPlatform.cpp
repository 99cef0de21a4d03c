#include "qel/headless/HeadlessPlatform.h"

#include <algorithm>
#include <array>
#include <cstddef>
#include <string>
#include <string_view>

#include "qel/base/CaseMapping.h"
#include "qel/headless/BoxView.h"
#include "qel/headless/SvgCanvas.h"
#include "qel/platform/Common.h"

namespace qel::headless {
namespace {

/// The classic scheme's defaults, by system colour index.
class ClassicColors : public platform::SystemColors {
 public:
  Color color(std::int32_t index) const override {
    if (index < 0 || static_cast<std::size_t>(index) >= colors.size()) return 0;
    return colors[static_cast<std::size_t>(index)];
  }

 private:
  static constexpr std::array colors = {
      rgb(212, 208, 200),  // 0 scroll bar
      rgb(58, 110, 165),   // 1 desktop
      rgb(10, 36, 106),    // 2 active caption
      rgb(128, 128, 128),  // 3 inactive caption
      rgb(212, 208, 200),  // 4 menu
      rgb(255, 255, 255),  // 5 window background
      rgb(0, 0, 0),        // 6 window frame
      rgb(0, 0, 0),        // 7 menu text
      rgb(0, 0, 0),        // 8 window text
      rgb(255, 255, 255),  // 9 caption text
      rgb(212, 208, 200),  // 10 active border
      rgb(212, 208, 200),  // 11 inactive border
      rgb(128, 128, 128),  // 12 application workspace
      rgb(10, 36, 106),    // 13 highlight
      rgb(255, 255, 255),  // 14 highlighted text
      rgb(212, 208, 200),  // 15 button face
      rgb(128, 128, 128),  // 16 button shadow
      rgb(128, 128, 128),  // 17 greyed text
      rgb(0, 0, 0),        // 18 button text
      rgb(212, 208, 200),  // 19 inactive caption text
      rgb(255, 255, 255),  // 20 button highlight
      rgb(64, 64, 64),     // 21 dark shadow
      rgb(212, 208, 200),  // 22 light edge
      rgb(0, 0, 0),        // 23 tool tip text
      rgb(255, 255, 225),  // 24 tool tip background
  };
};

class NoStyles : public platform::VisualStyles {
 public:
  std::optional<std::u16string> color_scheme() const override { return {}; }
};

class SymbolFontsByName : public platform::MeasuringSurface {
 public:
  void put_TestFont(std::u16string_view name) override { test_font_ = to_lower(name); }
  std::uintptr_t get_hDC() const override { return 0; }
  platform::CharacterSet test_font_character_set() const override {
    constexpr std::array<std::u16string_view, 8> symbol_fonts = {
        u"symbol",   u"wingdings", u"wingdings 2",  u"wingdings 3",
        u"webdings", u"marlett",   u"zapfdingbats", u"standard symbols ps"};
    const bool known =
        std::find(symbol_fonts.begin(), symbol_fonts.end(), test_font_) != symbol_fonts.end();
    return known ? platform::CharacterSet::symbol : platform::CharacterSet::ansi;
  }

 private:
  std::u16string test_font_;
};

}  // namespace

const platform::SystemColors& HeadlessPlatform::system_colors() const {
  static const ClassicColors colors;
  return colors;
}

const platform::VisualStyles& HeadlessPlatform::visual_styles() const {
  static const NoStyles styles;
  return styles;
}

std::shared_ptr<platform::RichEdit> HeadlessPlatform::create_rich_edit(
    platform::WindowHandle /*owner*/) const {
  return BoxView::create(shared_);
}

std::unique_ptr<platform::EditorWindow> HeadlessPlatform::create_editor_window(
    const platform::EditorDescription& description) const {
  return std::make_unique<EditorWindow>(description, user_, create_rich_edit(0));
}

std::shared_ptr<platform::MeasuringSurface> HeadlessPlatform::create_measuring_surface() const {
  return std::make_shared<SymbolFontsByName>();
}

std::shared_ptr<platform::Canvas> HeadlessPlatform::create_measuring_canvas() const {
  return std::make_shared<SvgCanvas>(0.0F);
}

}  // namespace qel::headless

std::shared_ptr<const qel::platform::Platform> qel::Common::default_platform() {
  static const auto platform = std::make_shared<const headless::HeadlessPlatform>();
  return platform;
}
