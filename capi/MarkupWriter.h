#pragma once

#include <string>

#include "Buffer.h"
#include "qel/base/Utf8.h"
#include "qel/convert/MarkupOutput.h"

namespace qel::capi {

/// Writes runs that were read from markup as markup in UTF-8.
class MarkupWriter : private convert::MarkupOutput<char16_t> {
 public:
  /// `bytes` has to outlive this object.
  explicit MarkupWriter(Buffer& bytes)
      : MarkupOutput(style_codes::CodeSet::lossless, true), bytes_(bytes) {}

  void text(std::u16string_view text, const style_codes::CodeState& state) override {
    MarkupOutput::text(text, state);
    if (size() >= enough) pass_on();
  }
  void line_break(const style_codes::CodeState& state) override {
    MarkupOutput::line_break(state);
    if (size() >= enough) pass_on();
  }
  /// With `is_cut`, more of the text may be put behind its end.
  void finish(bool is_cut) {
    MarkupOutput::finish(is_cut);
    drain_all([this](std::u16string_view text) { append(text); });
  }

 private:
  static constexpr std::size_t enough = std::size_t{1} << 14U;

  void finish() override { finish(false); }
  void pass_on() {
    drain([this](std::u16string_view text) { append(text); });
  }
  void append(std::u16string_view text) {
    scratch_.clear();
    append_utf8(scratch_, text);
    bytes_.append(scratch_);
  }

  Buffer& bytes_;
  std::string scratch_;
};

}  // namespace qel::capi
