#pragma once

#include <gtest/gtest.h>
#include <windows.h>
// Needs the types of the other.
#include <richedit.h>

#include <algorithm>
#include <cmath>
#include <cstdint>
#include <memory>
#include <string>

#include "BoxInWindow.h"
#include "qel/headless/Shared.h"
#include "support/Text.h"
#include "windows/BoxWindow.h"
#include "windows/Positions.h"
#include "windows/Text.h"

namespace qel::test {

inline HWND form() {
  static const HWND window =
      CreateWindowExW(0, L"STATIC", L"Form", WS_OVERLAPPEDWINDOW | WS_VISIBLE | WS_CLIPCHILDREN, 0,
                      0, 600, 400, nullptr, nullptr, GetModuleHandleW(nullptr), nullptr);
  return window;
}

/// Boxes on a window that all tests share.
class BoxesInWindows : public testing::Test {
 protected:
  std::shared_ptr<box::Box> new_box(HWND owner = form()) {
    auto box = windows::BoxWindow::create(owner, clipboard_);
    platform::BoxAppearance appearance = box->appearance();
    appearance.width = 300;
    appearance.height = 200;
    box->put_appearance(appearance);
    return box;
  }

  headless::OwnClipboard clipboard_;
};

/// Asks the window directly, as another program would.
class Window {
 public:
  explicit Window(const platform::RichEdit& box) : window_(window_of(box)) {}

  LRESULT send(UINT message, WPARAM parameter = 0, LPARAM data = 0) const {
    return SendMessageW(window_, message, parameter, data);
  }
  std::u16string text() const {
    std::u16string text(100000, u'\0');
    GETTEXTEX asked = {static_cast<DWORD>(text.size() * 2), GT_DEFAULT, 1200, nullptr, nullptr};
    const LRESULT size =
        send(EM_GETTEXTEX, reinterpret_cast<WPARAM>(&asked), reinterpret_cast<LPARAM>(text.data()));
    return text.substr(0, static_cast<std::size_t>(size));
  }
  void replace(const std::u16string& text) const {
    send(EM_REPLACESEL, FALSE, reinterpret_cast<LPARAM>(windows::wide(text)));
  }
  void select(long start, long end) const {
    CHARRANGE range = {start, end};
    send(EM_EXSETSEL, 0, reinterpret_cast<LPARAM>(&range));
  }
  /// Describes the format of a stretch as the window itself reports it; "mixed" for several
  /// formats.
  std::string format(long start, long end) const {
    select(start, end);
    CHARFORMAT2W format = {};
    format.cbSize = sizeof format;
    send(EM_GETCHARFORMAT, SCF_SELECTION, reinterpret_cast<LPARAM>(&format));
    constexpr DWORD all = CFM_BOLD | CFM_ITALIC | CFM_UNDERLINE | CFM_STRIKEOUT | CFM_SMALLCAPS |
                          CFM_COLOR | CFM_OFFSET | CFM_SIZE | CFM_FACE;
    if ((format.dwMask & all) != all) return "mixed";
    const bool is_automatic = (format.dwEffects & CFE_AUTOCOLOR) != 0;
    const DWORD color = is_automatic ? 0 : format.crTextColor;
    return line((format.dwEffects & CFE_BOLD) != 0, (format.dwEffects & CFE_ITALIC) != 0,
                (format.dwEffects & CFE_UNDERLINE) != 0, (format.dwEffects & CFE_STRIKEOUT) != 0,
                (format.dwEffects & CFE_SMALLCAPS) != 0, static_cast<long>(color), format.yOffset,
                format.yHeight, std::u16string(windows::utf16(format.szFaceName)));
  }
  static std::string line(bool bold, bool italic, bool underline, bool strike, bool capitals,
                          long color, long offset, long twips, const std::u16string& font) {
    return std::string(bold ? "b" : "-") + (italic ? "i" : "-") + (underline ? "u" : "-") +
           (strike ? "s" : "-") + (capitals ? "c" : "-") + " color " + std::to_string(color) +
           " offset " + std::to_string(offset) + " size " + std::to_string(twips) + " " +
           shown(font);
  }
  WORD alignment(long at) const {
    select(at, at);
    PARAFORMAT2 format = {};
    format.cbSize = sizeof format;
    send(EM_GETPARAFORMAT, 0, reinterpret_cast<LPARAM>(&format));
    return format.wAlignment;
  }

 private:
  HWND window_;
};

/// Compares everything in the window with the box.
inline void expect_shown(platform::RichEdit& box) {
  const Window window(box);
  const platform::Range selection = box.selection();
  const std::u16string text = box.get_Text();
  ASSERT_EQ(window.text(), windows::native_text(text));
  const auto native = [&](std::int32_t position) {
    const auto before = std::u16string_view(text).substr(0, static_cast<std::size_t>(position));
    return static_cast<long>(position - std::count(before.begin(), before.end(), u'\n'));
  };
  box.visit_runs(0, [&](const platform::FormatRun& run) {
    const richtext::CharFormat& format = run.format;
    const auto end = run.start + static_cast<std::int32_t>(run.text.size());
    EXPECT_EQ(window.format(native(run.start), native(end)),
              Window::line(format.bold, format.italic, format.underline, format.strike_through,
                           format.small_caps, format.color, format.offset,
                           std::lround(format.size * 20), format.font_name))
        << "from " << run.start << " to " << end;
    return true;
  });
  for (std::size_t start = 0; start != std::u16string::npos;) {
    const auto at = static_cast<std::int32_t>(start);
    constexpr WORD expected[] = {PFA_LEFT, PFA_RIGHT, PFA_CENTER};
    const WORD shown = window.alignment(native(at));
    box.select({at, 0});
    EXPECT_EQ(shown,
              expected[static_cast<int>(box.alignment().value_or(richtext::Alignment::left))])
        << "at " << at;
    start = text.find(u'\n', start);
    if (start != std::u16string::npos) ++start;
  }
  box.select(selection);
}

}  // namespace qel::test
