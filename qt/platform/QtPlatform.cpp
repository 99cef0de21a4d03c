#include "qel/qt/QtPlatform.h"

#include <QApplication>
#include <QFontDatabase>
#include <QImage>
#include <QPainter>
#include <QPalette>
#include <QScreen>
#include <QWidget>
#include <array>
#include <cmath>

#include "qel/base/Error.h"
#include "qel/headless/HeadlessPlatform.h"
#include "qel/platform/Common.h"
#include "qel/qt/PainterCanvas.h"
#include "qt/platform/BoxView.h"
#include "qt/platform/Clipboard.h"
#include "qt/platform/EditorWindow.h"
#include "qt/platform/FormatMapping.h"
#include "qt/platform/Text.h"

namespace qel::qt {
namespace {

struct PaletteColor {
  QPalette::ColorRole role = QPalette::NoRole;
  QPalette::ColorGroup group = QPalette::Active;
};

/// By system colour index.
constexpr std::array palette_colors = {
    PaletteColor{QPalette::Window},                          // 0 scroll bar
    PaletteColor{QPalette::Mid},                             // 1 desktop
    PaletteColor{QPalette::Highlight},                       // 2 active caption
    PaletteColor{QPalette::Window, QPalette::Inactive},      // 3 inactive caption
    PaletteColor{QPalette::Window},                          // 4 menu
    PaletteColor{QPalette::Base},                            // 5 window background
    PaletteColor{QPalette::Shadow},                          // 6 window frame
    PaletteColor{QPalette::WindowText},                      // 7 menu text
    PaletteColor{QPalette::Text},                            // 8 window text
    PaletteColor{QPalette::HighlightedText},                 // 9 caption text
    PaletteColor{QPalette::Window},                          // 10 active border
    PaletteColor{QPalette::Window, QPalette::Inactive},      // 11 inactive border
    PaletteColor{QPalette::Mid},                             // 12 application workspace
    PaletteColor{QPalette::Highlight},                       // 13 highlight
    PaletteColor{QPalette::HighlightedText},                 // 14 highlighted text
    PaletteColor{QPalette::Button},                          // 15 button face
    PaletteColor{QPalette::Dark},                            // 16 button shadow
    PaletteColor{QPalette::Text, QPalette::Disabled},        // 17 greyed text
    PaletteColor{QPalette::ButtonText},                      // 18 button text
    PaletteColor{QPalette::WindowText, QPalette::Inactive},  // 19 inactive caption text
    PaletteColor{QPalette::Light},                           // 20 button highlight
    PaletteColor{QPalette::Shadow},                          // 21 dark shadow
    PaletteColor{QPalette::Midlight},                        // 22 light edge
    PaletteColor{QPalette::ToolTipText},                     // 23 tool tip text
    PaletteColor{QPalette::ToolTipBase},                     // 24 tool tip background
};

class ColorsOfPalette : public platform::SystemColors {
 public:
  Color color(std::int32_t index) const override { return QtPlatform::system_color_value(index); }
};

class UnknownStyles : public platform::VisualStyles {
 public:
  std::optional<std::u16string> color_scheme() const override {
    throw Error(Error::object_not_set, "QtPlatform", "This system has no visual styles.");
  }
};

/// Recognises symbol fonts by the font database, or by name where the database lacks them.
class FontsOfDatabase : public platform::MeasuringSurface {
 public:
  void put_TestFont(std::u16string_view name) override {
    family_ = to_qt(name);
    by_name_->put_TestFont(name);
  }
  std::uintptr_t get_hDC() const override { return 0; }
  platform::CharacterSet test_font_character_set() const override {
    if (!QFontDatabase::hasFamily(family_)) return by_name_->test_font_character_set();
    const auto systems = QFontDatabase::writingSystems(family_);
    const bool is_symbol =
        systems.contains(QFontDatabase::Symbol) && !systems.contains(QFontDatabase::Latin);
    return is_symbol ? platform::CharacterSet::symbol : platform::CharacterSet::ansi;
  }

 private:
  QString family_;
  std::shared_ptr<platform::MeasuringSurface> by_name_ =
      headless::HeadlessPlatform().create_measuring_surface();
};

/// The smallest device that text can be measured on.
struct PaintedPixel {
  QImage image{1, 1, QImage::Format_RGB32};
  QPainter painter{&image};
  PainterCanvas canvas{painter};
};

std::int32_t twips_per_pixel(double dots_per_inch) {
  constexpr double twips_per_inch = 1440;
  return dots_per_inch > 0 ? static_cast<std::int32_t>(std::lround(twips_per_inch / dots_per_inch))
                           : 15;
}

}  // namespace

std::shared_ptr<const QtPlatform> QtPlatform::shared() {
  static const auto platform = std::make_shared<const QtPlatform>();
  return platform;
}

std::shared_ptr<const platform::Platform> QtPlatform::use() {
  auto current = Common::current_platform();
  if (std::dynamic_pointer_cast<const QtPlatform>(current)) return current;
  Common::set_platform(shared());
  return shared();
}

Color QtPlatform::system_color_value(std::int32_t index) {
  if (index < 0 || static_cast<std::size_t>(index) >= palette_colors.size()) return 0;
  const PaletteColor& wanted = palette_colors[static_cast<std::size_t>(index)];
  return from_qt(QGuiApplication::palette().color(wanted.group, wanted.role));
}

const platform::SystemColors& QtPlatform::system_colors() const {
  static const ColorsOfPalette colors;
  return colors;
}

const platform::VisualStyles& QtPlatform::visual_styles() const {
  static const UnknownStyles styles;
  return styles;
}

platform::Clipboard& QtPlatform::clipboard() const {
  static Clipboard clipboard;
  return clipboard;
}

platform::Screen QtPlatform::screen() const {
  const QScreen* screen = QGuiApplication::primaryScreen();
  if (screen == nullptr) return {};
  const QSize size = screen->size();
  return {size.width(), size.height(), twips_per_pixel(screen->logicalDotsPerInchX()),
          twips_per_pixel(screen->logicalDotsPerInchY())};
}

std::shared_ptr<platform::RichEdit> QtPlatform::create_rich_edit(
    platform::WindowHandle owner) const {
  // NOLINTNEXTLINE(performance-no-int-to-ptr): a handle is an address.
  return BoxView::create(reinterpret_cast<QWidget*>(owner));
}

std::shared_ptr<platform::MeasuringSurface> QtPlatform::create_measuring_surface() const {
  return std::make_shared<FontsOfDatabase>();
}

std::shared_ptr<platform::Canvas> QtPlatform::create_measuring_canvas() const {
  const auto pixel = std::make_shared<PaintedPixel>();
  return {pixel, &pixel->canvas};
}

std::unique_ptr<platform::EditorWindow> QtPlatform::create_editor_window(
    const platform::EditorDescription& description) const {
  return std::make_unique<EditorWindow>(description);
}

}  // namespace qel::qt
