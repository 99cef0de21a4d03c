#pragma once

#include <cstddef>
#include <string>
#include <string_view>

#include "qel/model/RunSink.h"
#include "qel/platform/MeasuringSurface.h"
#include "qel/rtf/RTFParser.h"
#include "qel/rtf/Walk.h"
#include "qel/tables/QELIndexColors.h"
#include "qel/tables/QELIndexFonts.h"

namespace qel::rtf {

/// Writes runs as RTF with only the control words that the parser itself writes: the result of
/// `RTFParser::SimpleRTF`. Breaks may also come within a text. Text that is raised and lowered at
/// once is raised.
class SimpleRtfWriter : public RunSink {
 public:
  /// `parser` must outlive the writer.
  explicit SimpleRtfWriter(const RTFParser& parser)
      : parser_(parser), walk_(rtf_spelling, parser.way(), body_) {}
  SimpleRtfWriter(const SimpleRtfWriter&) = delete;
  SimpleRtfWriter& operator=(const SimpleRtfWriter&) = delete;

  void reserve(std::size_t length) { body_.reserve(length); }
  void text(std::u16string_view text, const style_codes::CodeState& state) override;
  void line_break(const style_codes::CodeState& state) override { text(u"\r\n", state); }
  void finish() override { walk_.close(); }

  /// The document, with the tables that it needs.
  std::u16string document(QELIndexFonts& fonts, const QELIndexColors& colors,
                          platform::MeasuringSurface& surface);

 private:
  const RTFParser& parser_;
  std::u16string body_ = u"\\f0 ";
  FormatWalk walk_;
};

}  // namespace qel::rtf
