#pragma once

#include <windows.h>

#include <cstddef>
#include <string>
#include <string_view>

/// Passes text between the library and Windows: both are UTF-16, so nothing is converted.
namespace qel::windows {

static_assert(sizeof(wchar_t) == sizeof(char16_t));

/// Each is valid as long as `text`.
inline const wchar_t* wide(const std::u16string& text) {
  return reinterpret_cast<const wchar_t*>(text.c_str());
}
inline std::wstring_view wide(std::u16string_view text) {
  return {reinterpret_cast<const wchar_t*>(text.data()), text.size()};
}
inline std::u16string_view utf16(const wchar_t* text, std::size_t size) {
  return {reinterpret_cast<const char16_t*>(text), size};
}
inline std::u16string_view utf16(const wchar_t* text) {
  return utf16(text, std::wstring_view(text).size());
}

}  // namespace qel::windows
