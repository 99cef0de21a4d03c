#pragma once

#include <cstdint>
#include <memory>

#include "qel/embedded/EmbeddedPlatform.h"
#include "qel/embedded/RichEdit.h"

namespace qel::test {

/// A box that a test can press keys in.
class KeyedBox : public embedded::RichEdit {
 public:
  void listen(platform::BoxListener* listener) override {
    listener_ = listener;
    RichEdit::listen(listener);
  }
  platform::BoxListener& listener() const { return *listener_; }

  /// Presses a key; returns what is left of its code.
  int press(int key, int shift) const {
    auto code = static_cast<std::int16_t>(key);
    auto mask = static_cast<std::int16_t>(shift);
    listener_->on_key_down(code, mask);
    return code;
  }

 private:
  platform::BoxListener* listener_ = nullptr;
};

class KeyedPlatform : public embedded::EmbeddedPlatform {
 public:
  std::shared_ptr<platform::RichEdit> create_rich_edit(platform::WindowHandle) const override {
    return std::make_shared<KeyedBox>();
  }
};

}  // namespace qel::test
