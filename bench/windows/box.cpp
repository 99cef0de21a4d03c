// A box in a window of the system, beside the window's bare control, in the same run.

#include <windows.h>
// Needs the types of the other.
#include <richedit.h>

#include <algorithm>
#include <chrono>
#include <cstdio>
#include <cstring>
#include <functional>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include "bench/Documents.h"
#include "qel/base/Scan.h"
#include "qel/headless/Shared.h"
#include "qel/platform/Common.h"
#include "qel/qel.h"
#include "qel/richtext/RtfBytes.h"
#include "windows/BoxWindow.h"
#include "windows/WindowHandle.h"

namespace qel::bench {
namespace {

HWND form() {
  static const HWND window =
      CreateWindowExW(0, L"STATIC", L"Form", WS_OVERLAPPEDWINDOW | WS_VISIBLE | WS_CLIPCHILDREN, 0,
                      0, 700, 500, nullptr, nullptr, GetModuleHandleW(nullptr), nullptr);
  return window;
}

struct Subject {
  HWND window;
  std::function<void(HWND window)> work;
};

double time_of(const Subject& subject) {
  SetFocus(subject.window);
  UpdateWindow(subject.window);
  const auto start = std::chrono::steady_clock::now();
  subject.work(subject.window);
  const std::chrono::duration<double, std::milli> took = std::chrono::steady_clock::now() - start;
  return took.count();
}

double median(std::vector<double> times) {
  std::sort(times.begin(), times.end());
  return times[times.size() / 2];
}

/// Prints the medians of both in milliseconds. They take turns, since the load of the machine
/// changes.
void compare(const std::string& what, int runs, const Subject& box, const Subject& control) {
  std::vector<double> of_box;
  std::vector<double> of_control;
  for (int i = 0; i < runs; ++i) {
    of_box.push_back(time_of(box));
    of_control.push_back(time_of(control));
  }
  const double ours = median(of_box);
  const double other = median(of_control);
  std::printf("%-32s %9.2f %9.2f %7.2f\n", what.c_str(), ours, other, ours / other);
  std::fflush(stdout);
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

/// Has the box's window show all that is in the box.
void finish(HWND window) {
  SendMessageW(window, EM_FORMATRANGE, FALSE, 0);
  UpdateWindow(window);
}

void press_key(HWND window) {
  SendMessageW(window, WM_CHAR, 'x', 0);
  UpdateWindow(window);
}

HWND bare_control() {
  const HWND window = CreateWindowExW(
      0, MSFTEDIT_CLASS, L"",
      WS_CHILD | WS_VISIBLE | WS_VSCROLL | ES_MULTILINE | ES_AUTOVSCROLL | ES_NOOLEDRAGDROP, 0, 0,
      600, 400, form(), nullptr, GetModuleHandleW(nullptr), nullptr);
  SendMessageW(window, EM_EXLIMITTEXT, 0, 0x7FFFFFFE);
  SendMessageW(window, EM_SETUNDOLIMIT, 0, 0);
  return window;
}

std::shared_ptr<box::Box> new_box(platform::Clipboard& clipboard) {
  auto box = windows::BoxWindow::create(form(), clipboard);
  platform::BoxAppearance appearance = box->appearance();
  appearance.width = 600;
  appearance.height = 400;
  appearance.scroll_bars = 2;
  box->put_appearance(appearance);
  return box;
}

void measure(const std::string& name, std::u16string_view markup, int keys) {
  constexpr int loads = 5;
  QELIndexFonts fonts;
  const QELIndexColors colors;
  const Common::ConversionSlots slots;
  headless::OwnClipboard clipboard;
  const auto box = new_box(clipboard);
  box->put_TextRTF(RTFParser().QELToRTF(std::u16string(markup), fonts, colors));
  const richtext::Document content = box->content(platform::Scope::document);
  const std::string rtf = richtext::rtf_to_bytes(box->get_TextRTF());
  const HWND window = windows::native_window(box->window());
  const HWND bare = bare_control();
  const auto show = [&](HWND shown) {
    box->put_content(platform::Scope::document, content);
    finish(shown);
  };
  const auto read = [&](HWND shown) { stream(shown, rtf); };
  compare(name + ": shown", loads, {window, show}, {bare, read});
  const auto middle = static_cast<LPARAM>(box->text().size() / 2);
  for (const HWND edited : {window, bare}) {
    SendMessageW(edited, EM_SETSEL, static_cast<WPARAM>(middle), middle);
  }
  compare(name + ": a key", keys, {window, press_key}, {bare, press_key});
  DestroyWindow(bare);
}

void run() {
  constexpr int keys = 51;
  constexpr int slow_keys = 11;
  LoadLibraryW(L"msftedit.dll");
  std::printf("%-32s %9s %9s %7s\n", "milliseconds", "box", "control", "ratio");
  const std::u16string& markup = documents(small_size).markup;
  measure("100 kB in paragraphs", markup, keys);
  measure("100 kB in one paragraph", replace_all(markup, u"/nl", u" "), slow_keys);
}

}  // namespace
}  // namespace qel::bench

int main() {
  qel::bench::run();
  return 0;
}
