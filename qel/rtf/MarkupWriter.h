#pragma once

#include <cstddef>
#include <optional>
#include <string>
#include <string_view>

#include "qel/model/LosslessMarkup.h"
#include "qel/richtext/CharFormat.h"
#include "qel/rtf/RTFParser.h"
#include "qel/rtf/Walk.h"
#include "qel/tables/QELIndexColors.h"
#include "qel/tables/QELIndexFonts.h"

namespace qel::rtf {

/// Writes a text as markup, run by run, as `RTFParser::RTFToQEL` does with what it has loaded.
///
/// In the stated way, text from a box comes out as if its RTF had been loaded: a code that stands
/// in it as text gets two backslashes for its slash, unless RTF would need a control word within
/// it. But a blank at the end is dropped only where it stands for a break.
class MarkupWriter {
 public:
  /// The arguments must outlive the writer.
  MarkupWriter(const RTFParser& parser, const QELIndexFonts& fonts, const QELIndexColors& colors,
               Origin origin);
  MarkupWriter(const MarkupWriter&) = delete;
  MarkupWriter& operator=(const MarkupWriter&) = delete;

  void reserve(std::size_t length) { markup_.reserve(length); }
  void add(const richtext::CharFormat& format, std::u16string_view text);
  /// The markup, with all codes closed. Empty for a text that is nothing but a break that is not
  /// recognised.
  std::u16string finish();

 private:
  void append_protected(const richtext::CharFormat& format, std::u16string_view text);
  void append(std::u16string_view text);

  const RTFParser& parser_;
  Origin origin_;
  std::u16string markup_;
  FormatWalk walk_;
  std::optional<LosslessMarkup> lossless_;
  std::u16string beginning_;  // of the text: enough to tell whether it is only a break
  bool ends_with_break_ = false;
  std::u16string held_;  // begins with a slash; the next run may complete the code,
  richtext::CharFormat held_format_;
};

}  // namespace qel::rtf
