#pragma once

#include <functional>
#include <optional>
#include <string>
#include <string_view>

#include "qel/platform/Clipboard.h"

namespace qel::headless {

class Drag;

/// A clipboard in memory that no other program sees.
class OwnClipboard : public platform::Clipboard {
 public:
  std::optional<std::u16string> rtf() const override { return rtf_; }
  std::optional<std::u16string> text() const override { return text_; }
  void put(std::u16string_view text, std::u16string_view rtf) override {
    text_ = text;
    rtf_ = rtf;
  }
  /// What a program that knows only plain text puts there.
  void put_text(std::u16string_view text) {
    text_ = text;
    rtf_.reset();
  }

 private:
  std::optional<std::u16string> rtf_;
  std::optional<std::u16string> text_;
};

/// What the boxes of a platform without windows share.
struct Shared {
  OwnClipboard clipboard;
  /// Plays the part of the user who drags: moves over boxes and drops. Without one, no drag arrives
  /// anywhere.
  std::function<void(Drag&)> dragger;
};

}  // namespace qel::headless
