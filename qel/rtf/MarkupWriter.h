#pragma once

#include <cstddef>
#include <optional>
#include <string>
#include <string_view>

#include "qel/model/LosslessMarkup.h"
#include "qel/model/RunSink.h"
#include "qel/richtext/CharFormat.h"
#include "qel/rtf/RTFParser.h"
#include "qel/rtf/TableIndexes.h"
#include "qel/rtf/Walk.h"

namespace qel::rtf {

/// Writes runs as markup, as `RTFParser::RTFToQEL` does with what it reads. Breaks may also come
/// within a text.
class MarkupWriter : public RunSink {
 public:
  /// `parser` must outlive the writer.
  explicit MarkupWriter(const RTFParser& parser);
  MarkupWriter(const MarkupWriter&) = delete;
  MarkupWriter& operator=(const MarkupWriter&) = delete;

  void reserve(std::size_t length) { markup_.reserve(length); }
  void text(std::u16string_view text, const style_codes::CodeState& state) override;
  void line_break(const style_codes::CodeState& state) override { text(u"\r\n", state); }
  void finish() override { finish(true); }

  /// Appends what looks like a code to this converter, but is text.
  void protected_slash() { markup_.append(u"\\\\"); }
  /// Closes all codes. A blank at the end is dropped only if it `may` be.
  void finish(bool may_drop_blank);
  /// Whether the text so far ends with a break.
  bool ends_with_break() const { return ends_with_break_; }
  /// The markup. Empty for a text that is nothing but a break that is not recognised.
  std::u16string take() { return std::move(markup_); }

 private:
  const RTFParser& parser_;
  std::u16string markup_;
  FormatWalk walk_;
  std::optional<LosslessMarkup> lossless_;
  std::u16string beginning_;  // of the text: enough to tell whether it is only a break
  bool ends_with_break_ = false;
};

/// Writes the runs of a box as markup.
///
/// In the stated way, it comes out as if the box's RTF had been loaded: a code that stands in it as
/// text gets two backslashes for its slash, unless RTF would need a control word within it. But a
/// blank at the end is dropped only where it stands for a break.
class BoxMarkupWriter {
 public:
  /// The arguments must outlive the writer.
  BoxMarkupWriter(const RTFParser& parser, const QELIndexFonts& fonts,
                  const QELIndexColors& colors);

  void add(const richtext::CharFormat& format, std::u16string_view text);
  std::u16string finish();

 private:
  void add_protected(const richtext::CharFormat& format, std::u16string_view text);

  bool is_lossless_;
  TableIndexes indexes_;
  MarkupWriter writer_;
  std::u16string held_;  // begins with a slash; the next run may complete the code,
  richtext::CharFormat held_format_;
};

}  // namespace qel::rtf
