#include "windows/Clipboard.h"

#include <windows.h>

#include "qel/base/Error.h"
#include "windows/GlobalMemory.h"
#include "windows/HtmlFormat.h"
#ifdef QEL_WINDOWS_READS_HTML
#include "qel/base/Utf8.h"
#include "qel/html/HtmlReader.h"
#include "qel/richtext/DocumentReader.h"
#endif

namespace qel::windows {
namespace {

/// The platform's error number for a clipboard that cannot be opened.
constexpr std::uint32_t clipboard_not_open = 521;

/// The clipboard, open as long as this lives.
class OpenClipboard {
 public:
  explicit OpenClipboard(HWND owner) {
    // Other programs may open it briefly to look at new content.
    constexpr int tries = 10;
    constexpr DWORD pause = 10;
    for (int i = 0; i < tries && !is_open_; ++i) {
      if (i > 0) Sleep(pause);
      is_open_ = ::OpenClipboard(owner) != FALSE;
    }
  }
  OpenClipboard(const OpenClipboard&) = delete;
  OpenClipboard& operator=(const OpenClipboard&) = delete;
  ~OpenClipboard() {
    if (is_open_) CloseClipboard();
  }

  explicit operator bool() const { return is_open_; }

 private:
  bool is_open_ = false;
};

/// An invisible window: only the clipboard's owner can put something there.
class Owner {
 public:
  Owner()
      : window_(CreateWindowExW(0, L"STATIC", nullptr, 0, 0, 0, 0, 0, HWND_MESSAGE, nullptr,
                                nullptr, nullptr)) {}
  Owner(const Owner&) = delete;
  Owner& operator=(const Owner&) = delete;
  ~Owner() { DestroyWindow(window_); }

  HWND window() const { return window_; }

 private:
  HWND window_;
};

std::optional<std::u16string> content(UINT format) {
  if (IsClipboardFormatAvailable(format) == FALSE) return {};
  const OpenClipboard clipboard(nullptr);
  if (!clipboard) return {};
  const HANDLE block = GetClipboardData(format);
  return block == nullptr ? std::nullopt : std::optional(read_block(block, format));
}

bool put(std::u16string_view value, UINT format) {
  const HGLOBAL block = block_of(value, format);
  if (block == nullptr) return false;
  if (SetClipboardData(format, block) != nullptr) return true;
  GlobalFree(block);
  return false;
}

}  // namespace

std::optional<std::u16string> Clipboard::rtf() const { return content(rtf_clipboard_format()); }

std::optional<std::u16string> Clipboard::html() const { return content(html_clipboard_format()); }

std::optional<std::u16string> Clipboard::text() const { return content(CF_UNICODETEXT); }

void Clipboard::put(std::u16string_view text, std::u16string_view rtf) {
  platform::DragData data;
  data.put(platform::rtf_format, rtf);
  const auto html = offered_html(data);
  const Owner owner;
  const windows::OpenClipboard clipboard(owner.window());
  // Cutting must not lose text that did not get there. Programs that take the first format that
  // they know get the best.
  if (!clipboard || EmptyClipboard() == FALSE || !windows::put(rtf, rtf_clipboard_format()) ||
      (html && !windows::put(*html, html_clipboard_format())) ||
      !windows::put(text, CF_UNICODETEXT)) {
    throw Error(clipboard_not_open, "Clipboard", "The clipboard is in use.");
  }
}

std::optional<richtext::Document> Clipboard::read_html(
    [[maybe_unused]] std::u16string_view html,
    [[maybe_unused]] const richtext::CharFormat& base) const {
#ifdef QEL_WINDOWS_READS_HTML
  richtext::Document document;
  richtext::DocumentBuilder builder(document);
  // The mark overrides what the HTML says of the encoding that it once had.
  html::read_html("\xEF\xBB\xBF" + to_utf8(html), base, builder);
  document.release_unused();
  return document;
#else
  return {};
#endif
}

}  // namespace qel::windows
