#pragma once

#include <windows.h>

#include <utility>

namespace qel::windows {

/// A font that is deleted with this object.
class Font {
 public:
  Font() = default;
  explicit Font(const LOGFONTW& description) : handle_(CreateFontIndirectW(&description)) {}
  Font(Font&& other) noexcept : handle_(std::exchange(other.handle_, nullptr)) {}
  Font& operator=(Font&& other) noexcept {
    std::swap(handle_, other.handle_);
    return *this;
  }
  ~Font() {
    if (handle_ != nullptr) DeleteObject(handle_);
  }

  HFONT handle() const { return handle_; }

 private:
  HFONT handle_ = nullptr;
};

/// Selects a font in a device context for as long as it lives.
class SelectedFont {
 public:
  SelectedFont(HDC context, HFONT font) : context_(context), before_(SelectObject(context, font)) {}
  SelectedFont(const SelectedFont&) = delete;
  SelectedFont& operator=(const SelectedFont&) = delete;
  ~SelectedFont() {
    if (before_ != nullptr) SelectObject(context_, before_);
  }

 private:
  HDC context_;
  HGDIOBJ before_;
};

}  // namespace qel::windows
