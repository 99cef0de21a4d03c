#pragma once

#include <functional>
#include <optional>
#include <string>
#include <string_view>
#include <utility>

#include "qel/platform/Clipboard.h"

namespace qel::headless {

class Drag;

/// A clipboard in memory that no other program sees.
class OwnClipboard : public platform::Clipboard {
 public:
  using HtmlReading =
      std::function<richtext::Document(std::u16string_view html, const richtext::CharFormat& base)>;

  std::optional<std::u16string> rtf() const override { return rtf_; }
  std::optional<std::u16string> html() const override { return html_; }
  std::optional<std::u16string> text() const override { return text_; }
  void put(std::u16string_view text, std::u16string_view rtf) override {
    text_ = text;
    rtf_ = rtf;
    html_.reset();
  }
  /// What a program that knows only plain text puts there.
  void put_text(std::u16string_view text) {
    text_ = text;
    rtf_.reset();
    html_.reset();
  }
  /// What a browser puts there.
  void put_html(std::u16string_view text, std::u16string_view html) {
    put_text(text);
    html_ = html;
  }

  /// Reads HTML from now on; the library has no reader of its own.
  void put_html_reader(HtmlReading reader) { reader_ = std::move(reader); }
  std::optional<richtext::Document> read_html(std::u16string_view html,
                                              const richtext::CharFormat& base) const override {
    return reader_ ? std::optional(reader_(html, base)) : std::nullopt;
  }

 private:
  std::optional<std::u16string> rtf_;
  std::optional<std::u16string> html_;
  std::optional<std::u16string> text_;
  HtmlReading reader_;
};

/// What the boxes of a platform without windows share.
struct Shared {
  OwnClipboard clipboard;
  /// Plays the part of the user who drags: moves over boxes and drops. Without one, no drag arrives
  /// anywhere.
  std::function<void(Drag&)> dragger;
};

}  // namespace qel::headless
