#pragma once

#include <cstddef>
#include <string>
#include <string_view>

#include "qel/platform/MeasuringSurface.h"
#include "qel/richtext/CharFormat.h"
#include "qel/rtf/RTFParser.h"
#include "qel/rtf/Walk.h"
#include "qel/tables/QELIndexColors.h"
#include "qel/tables/QELIndexFonts.h"

namespace qel::rtf {

/// Writes a text, run by run, as RTF with only the control words that the parser itself writes: the
/// result of `RTFParser::SimpleRTF`.
class SimpleRtfWriter {
 public:
  /// The arguments must outlive the writer.
  SimpleRtfWriter(const RTFParser& parser, QELIndexFonts& fonts, const QELIndexColors& colors,
                  Origin origin);
  SimpleRtfWriter(const SimpleRtfWriter&) = delete;
  SimpleRtfWriter& operator=(const SimpleRtfWriter&) = delete;

  void reserve(std::size_t length) { body_.reserve(length); }
  void add(const richtext::CharFormat& format, std::u16string_view text);
  /// The document, with the tables that it needs.
  std::u16string finish(platform::MeasuringSurface& surface);

 private:
  const RTFParser& parser_;
  QELIndexFonts& fonts_;
  const QELIndexColors& colors_;
  std::u16string body_ = u"\\f0 ";
  FormatWalk walk_;
};

}  // namespace qel::rtf
