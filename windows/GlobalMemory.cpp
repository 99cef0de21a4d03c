#include "windows/GlobalMemory.h"

#include <algorithm>
#include <cstring>

#include "qel/richtext/RtfBytes.h"
#include "windows/HtmlFormat.h"
#include "windows/Text.h"

namespace qel::windows {
namespace {

/// A block's memory while it is being used.
class Lock {
 public:
  explicit Lock(HGLOBAL block) : block_(block), memory_(GlobalLock(block)) {}
  Lock(const Lock&) = delete;
  Lock& operator=(const Lock&) = delete;
  ~Lock() {
    if (memory_ != nullptr) GlobalUnlock(block_);
  }

  void* memory() const { return memory_; }

 private:
  HGLOBAL block_;
  void* memory_;
};

template <class Char>
HGLOBAL copy(std::basic_string_view<Char> text) {
  const std::size_t size = text.size() * sizeof(Char);
  const HGLOBAL block = GlobalAlloc(GMEM_MOVEABLE | GMEM_ZEROINIT, size + sizeof(Char));
  if (block == nullptr) return nullptr;
  const Lock lock(block);
  if (size > 0) std::memcpy(lock.memory(), text.data(), size);
  return block;
}

template <class Char>
std::basic_string<Char> text_in(HGLOBAL block) {
  const Lock lock(block);
  if (lock.memory() == nullptr) return {};
  const auto* const begin = static_cast<const Char*>(lock.memory());
  const auto* const end = begin + GlobalSize(block) / sizeof(Char);
  return {begin, std::find(begin, end, Char{})};
}

std::string to_system_code_page(std::u16string_view text) {
  const auto size = static_cast<int>(text.size());
  const wchar_t* const from = wide(text).data();
  std::string bytes(static_cast<std::size_t>(
                        WideCharToMultiByte(CP_ACP, 0, from, size, nullptr, 0, nullptr, nullptr)),
                    '\0');
  WideCharToMultiByte(CP_ACP, 0, from, size, bytes.data(), static_cast<int>(bytes.size()), nullptr,
                      nullptr);
  return bytes;
}

std::u16string from_system_code_page(const std::string& bytes) {
  const auto size = static_cast<int>(bytes.size());
  std::wstring text(
      static_cast<std::size_t>(MultiByteToWideChar(CP_ACP, 0, bytes.data(), size, nullptr, 0)),
      L'\0');
  MultiByteToWideChar(CP_ACP, 0, bytes.data(), size, text.data(), static_cast<int>(text.size()));
  return std::u16string(utf16(text.data(), text.size()));
}

}  // namespace

UINT rtf_clipboard_format() {
  static const UINT format = RegisterClipboardFormatW(L"Rich Text Format");
  return format;
}

UINT html_clipboard_format() {
  static const UINT format = RegisterClipboardFormatW(L"HTML Format");
  return format;
}

HGLOBAL block_of(std::u16string_view value, UINT clipboard_format) {
  if (clipboard_format == CF_UNICODETEXT) return copy(value);
  if (clipboard_format == html_clipboard_format()) return copy<char>(html_to_bytes(value));
  return copy(std::string_view(clipboard_format == CF_TEXT ? to_system_code_page(value)
                                                           : richtext::rtf_to_bytes(value)));
}

std::u16string read_block(HGLOBAL block, UINT clipboard_format) {
  if (clipboard_format == CF_UNICODETEXT) return text_in<char16_t>(block);
  const std::string bytes = text_in<char>(block);
  if (clipboard_format == html_clipboard_format()) return html_from_bytes(bytes);
  return clipboard_format == CF_TEXT ? from_system_code_page(bytes)
                                     : richtext::rtf_from_bytes(bytes);
}

}  // namespace qel::windows
