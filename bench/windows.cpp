// A box in a window of the system, beside the window's bare control, in the same run.

#include <windows.h>
// Needs the types of the other.
#include <richedit.h>

#include <algorithm>
#include <chrono>
#include <cstdio>
#include <cstring>
#include <memory>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "Documents.h"
#include "qel/base/Scan.h"
#include "qel/headless/Shared.h"
#include "qel/platform/Common.h"
#include "qel/qel.h"
#include "qel/richtext/RtfBytes.h"
#include "windows/BoxWindow.h"
#include "windows/WindowHandle.h"

namespace qel::bench {
namespace {

using platform::Scope;

constexpr int repetitions = 5;
constexpr int keystrokes = 20;

HWND form() {
  static const HWND window =
      CreateWindowExW(0, L"STATIC", L"Form", WS_OVERLAPPEDWINDOW | WS_VISIBLE | WS_CLIPCHILDREN, 0,
                      0, 700, 500, nullptr, nullptr, GetModuleHandleW(nullptr), nullptr);
  return window;
}

/// The median of several runs, in milliseconds.
template <class Work>
double median_time(int runs, Work work) {
  std::vector<double> times;
  for (int i = 0; i < runs; ++i) {
    const auto start = std::chrono::steady_clock::now();
    work();
    const std::chrono::duration<double, std::milli> took =
        std::chrono::steady_clock::now() - start;
    times.push_back(took.count());
  }
  std::sort(times.begin(), times.end());
  return times[times.size() / 2];
}

DWORD CALLBACK read_on(DWORD_PTR cookie, BYTE* buffer, LONG asked, LONG* read) {
  auto& rest = *reinterpret_cast<std::string_view*>(cookie);
  *read = static_cast<LONG>(std::min(rest.size(), static_cast<std::size_t>(asked)));
  std::memcpy(buffer, rest.data(), static_cast<std::size_t>(*read));
  rest.remove_prefix(static_cast<std::size_t>(*read));
  return 0;
}

void stream(HWND window, std::string_view rtf) {
  EDITSTREAM stream = {reinterpret_cast<DWORD_PTR>(&rtf), 0, read_on};
  SendMessageW(window, EM_STREAMIN, SF_RTF, reinterpret_cast<LPARAM>(&stream));
  UpdateWindow(window);
}

double time_of_key(HWND window, WPARAM middle) {
  SetFocus(window);
  SendMessageW(window, EM_SETSEL, middle, static_cast<LPARAM>(middle));
  return median_time(keystrokes, [&] {
    SendMessageW(window, WM_CHAR, 'x', 0);
    UpdateWindow(window);
  });
}

/// Makes the window handle what it has put off.
void finish(HWND window) {
  CHARFORMAT2W format = {};
  format.cbSize = sizeof format;
  SendMessageW(window, EM_GETCHARFORMAT, SCF_SELECTION, reinterpret_cast<LPARAM>(&format));
}

struct Times {
  double shown = 0;
  double complete = 0;
  double key = 0;
};

Times times_of_bare(std::string_view rtf, WPARAM middle) {
  const HWND window = CreateWindowExW(
      0, MSFTEDIT_CLASS, L"",
      WS_CHILD | WS_VISIBLE | WS_VSCROLL | ES_MULTILINE | ES_AUTOVSCROLL | ES_NOOLEDRAGDROP, 0, 0,
      600, 400, form(), nullptr, GetModuleHandleW(nullptr), nullptr);
  SendMessageW(window, EM_EXLIMITTEXT, 0, 0x7FFFFFFE);
  SendMessageW(window, EM_SETUNDOLIMIT, 0, 0);
  Times times;
  times.shown = median_time(repetitions, [&] { stream(window, rtf); });
  times.complete = times.shown;
  times.key = time_of_key(window, middle);
  DestroyWindow(window);
  return times;
}

Times times_of_box(box::Box& box, std::u16string_view rtf, WPARAM middle) {
  const HWND window = windows::native_window(box.window());
  Times times;
  std::vector<double> complete;
  times.shown = median_time(repetitions, [&] {
    box.put_TextRTF(std::u16string(rtf));
    UpdateWindow(window);
  });
  times.complete = times.shown + median_time(1, [&] { finish(window); });
  times.key = time_of_key(window, middle);
  return times;
}

void compare(const char* name, std::u16string_view markup) {
  QELIndexFonts fonts;
  const QELIndexColors colors;
  const Common::ConversionSlots slots;
  headless::OwnClipboard clipboard;
  const auto box = windows::BoxWindow::create(form(), clipboard);
  platform::BoxAppearance appearance = box->appearance();
  appearance.width = 600;
  appearance.height = 400;
  appearance.scroll_bars = 2;
  box->put_appearance(appearance);
  const std::u16string rtf = RTFParser().QELToRTF(std::u16string(markup), fonts, colors);
  box->put_TextRTF(rtf);
  const auto middle = static_cast<WPARAM>(box->text().size() / 2);
  const Times ours = times_of_box(*box, rtf, middle);
  const Times bare = times_of_bare(richtext::rtf_to_bytes(box->get_TextRTF()), middle);
  const auto row = [&](const char* what, double its, double other) {
    std::printf("%-12s %-14s %9.1f ms %9.1f ms %6.2f\n", name, what, its, other, its / other);
  };
  row("shown", ours.shown, bare.shown);
  row("complete", ours.complete, bare.complete);
  row("key", ours.key, bare.key);
  std::fflush(stdout);
}

void run() {
  LoadLibraryW(L"msftedit.dll");
  std::printf("%-12s %-14s %12s %12s %6s\n", "", "", "box", "control", "ratio");
  const std::u16string& markup = documents(small_size).markup;
  compare("paragraphs", markup);
  compare("one", replace_all(markup, u"/nl", u" "));
}

}  // namespace
}  // namespace qel::bench

int main() {
  qel::bench::run();
  return 0;
}
