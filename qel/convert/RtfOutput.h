#pragma once

#include "qel/convert/FormatUse.h"
#include "qel/convert/Options.h"
#include "qel/convert/Writer.h"
#include "qel/rtf/RTFParser.h"
#include "qel/rtf/RtfBodyWriter.h"
#include "qel/rtf/SimpleRtfWriter.h"

namespace qel::convert {

/// What a document with the tables of the options begins with.
std::u16string rtf_head(const Options& options);

/// Writes RTF in the lossless way: a whole document, or its body alone.
template <class Char>
class RtfOutput final : public BasicWriter<Char> {
 public:
  struct Body {};
  explicit RtfOutput(Body /*alone*/) : body_(this->out()) {}
  /// `options` have to outlive this object.
  explicit RtfOutput(const Options& options);

  void text(std::basic_string_view<Char> text, const style_codes::CodeState& state) override {
    used_.add(state);
    body_.text(text, state);
  }
  void line_break(const style_codes::CodeState& state) override { body_.line_break(state); }
  void finish() override;
  void count_lacking(Dropped& dropped) const override {
    if (fonts_ != nullptr) dropped.fonts += used_.fonts_lacking(*fonts_);
  }

 private:
  const QELIndexFonts* fonts_ = nullptr;  // of a document
  FormatUse used_;
  rtf::BasicRtfBodyWriter<Char> body_;
};

/// Writes reduced RTF. All of it at the end, as only then it is known which tables it needs.
class SimpleRtfOutput : public Writer {
 public:
  /// `options` have to outlive this object.
  explicit SimpleRtfOutput(const Options& options);

  void text(std::u16string_view text, const style_codes::CodeState& state) override {
    used_.add(state);
    writer_.text(text, state);
  }
  void line_break(const style_codes::CodeState& state) override { writer_.line_break(state); }
  void finish() override;
  void count_lacking(Dropped& dropped) const override {
    dropped.fonts += used_.fonts_lacking(options_.fonts);
  }

 private:
  const Options& options_;
  FormatUse used_;
  RTFParser parser_;
  rtf::SimpleRtfWriter writer_;
};

}  // namespace qel::convert
