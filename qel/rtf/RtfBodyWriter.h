#pragma once

#include <string>
#include <string_view>

#include "qel/base/Ascii.h"
#include "qel/model/QELCode.h"
#include "qel/model/RunSink.h"
#include "qel/platform/MeasuringSurface.h"
#include "qel/tables/QELIndexColors.h"
#include "qel/tables/QELIndexFonts.h"

namespace qel::rtf {

/// What stands before the body of a document: its tables, and the default font and size. Raises an
/// error when that size in half-points is negative or does not fit 16 bits.
std::u16string document_head(QELIndexFonts& fonts, const QELIndexColors& colors,
                             platform::MeasuringSurface& surface, Way way);
/// What stands behind it.
inline constexpr AsciiLiteral document_end("}}");

/// Writes runs as the body of an RTF document, with the words of the code table and of small
/// capitals. Text that is raised and lowered at once is raised. From UTF-8 comes RTF in ASCII, from
/// UTF-16 RTF that holds characters.
template <class Char>
class BasicRtfBodyWriter final : public BasicRunSink<Char> {
 public:
  /// Appends to `out`, which may be emptied between two calls.
  explicit BasicRtfBodyWriter(std::basic_string<Char>& out) : out_(out) {}

  void text(std::basic_string_view<Char> text, const style_codes::CodeState& state) override;
  void line_break(const style_codes::CodeState& state) override;
  void finish() override { enter({}); }

 private:
  void enter(style_codes::CodeState state);
  void append_index(std::basic_string_view<Char> word, int index, int number);

  std::basic_string<Char>& out_;
  style_codes::CodeState last_;
};

using RtfBodyWriter = BasicRtfBodyWriter<char16_t>;

}  // namespace qel::rtf
