#include "windows/WindowsPlatform.h"

#include <windows.h>

#include "windows/BoxWindow.h"
#include "windows/Clipboard.h"
#include "windows/DeviceCanvas.h"
#include "windows/EditorWindow.h"
#include "windows/TestFont.h"
#include "windows/VisualStyles.h"
#include "windows/WindowHandle.h"

namespace qel::windows {
namespace {

class Colors : public platform::SystemColors {
 public:
  Color color(std::int32_t index) const override {
    return GetSysColorBrush(index) == nullptr ? 0 : static_cast<Color>(GetSysColor(index));
  }
};

struct DeviceInMemory {
  TestFont owner;
  DeviceCanvas canvas{reinterpret_cast<HDC>(owner.get_hDC())};
};

std::int32_t twips_per_pixel(int dots_per_inch) {
  constexpr int twips_per_inch = 1440;
  return dots_per_inch > 0 ? (twips_per_inch + dots_per_inch / 2) / dots_per_inch : 15;
}

}  // namespace

std::shared_ptr<const WindowsPlatform> WindowsPlatform::shared() {
  static const auto platform = std::make_shared<const WindowsPlatform>();
  return platform;
}

const platform::SystemColors& WindowsPlatform::system_colors() const {
  static const Colors colors;
  return colors;
}

const platform::VisualStyles& WindowsPlatform::visual_styles() const {
  static const VisualStyles styles;
  return styles;
}

platform::Clipboard& WindowsPlatform::clipboard() const {
  static Clipboard clipboard;
  return clipboard;
}

platform::Screen WindowsPlatform::screen() const {
  const HDC context = GetDC(nullptr);
  const platform::Screen screen = {GetSystemMetrics(SM_CXSCREEN), GetSystemMetrics(SM_CYSCREEN),
                                   twips_per_pixel(GetDeviceCaps(context, LOGPIXELSX)),
                                   twips_per_pixel(GetDeviceCaps(context, LOGPIXELSY))};
  ReleaseDC(nullptr, context);
  return screen;
}

std::shared_ptr<platform::RichEdit> WindowsPlatform::create_rich_edit(
    platform::WindowHandle owner) const {
  return BoxWindow::create(native_window(owner), clipboard());
}

std::shared_ptr<platform::MeasuringSurface> WindowsPlatform::create_measuring_surface() const {
  return std::make_shared<TestFont>();
}

std::shared_ptr<platform::Canvas> WindowsPlatform::create_measuring_canvas() const {
  const auto device = std::make_shared<DeviceInMemory>();
  return {device, &device->canvas};
}

std::unique_ptr<platform::EditorWindow> WindowsPlatform::create_editor_window(
    const platform::EditorDescription& description) const {
  return std::make_unique<EditorWindow>(description);
}

}  // namespace qel::windows
