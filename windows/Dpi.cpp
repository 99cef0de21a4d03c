#include "windows/Dpi.h"

namespace qel::windows {
namespace {

/// A function that old systems do not have; null there.
template <class Function>
Function* system_function(const char* name) {
  const FARPROC found = GetProcAddress(GetModuleHandleW(L"user32.dll"), name);
  return reinterpret_cast<Function*>(reinterpret_cast<void*>(found));
}

}  // namespace

int dpi_of_screen() {
  const HDC context = GetDC(nullptr);
  const int dpi = GetDeviceCaps(context, LOGPIXELSY);
  ReleaseDC(nullptr, context);
  return dpi > 0 ? dpi : usual_dpi;
}

int dpi_of(HWND window) {
  using GetDpi = UINT WINAPI(HWND);
  static GetDpi* const get = system_function<GetDpi>("GetDpiForWindow");
  const int dpi = get == nullptr ? 0 : static_cast<int>(get(window));
  return dpi > 0 ? dpi : dpi_of_screen();
}

LOGFONTW message_font(int dpi) {
  NONCLIENTMETRICSW metrics = {};
  metrics.cbSize = sizeof metrics;
  SystemParametersInfoW(SPI_GETNONCLIENTMETRICS, sizeof metrics, &metrics, 0);
  metrics.lfMessageFont.lfHeight = MulDiv(metrics.lfMessageFont.lfHeight, dpi, dpi_of_screen());
  return metrics.lfMessageFont;
}

}  // namespace qel::windows
