#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>

#include "qel/model/RunSink.h"
#include "qel/model/StyleCodes.h"
#include "qel/tables/QELIndexColors.h"
#include "qel/tables/QELIndexFonts.h"

namespace qel::convert {

/// What HTML is made of a text.
struct HtmlOptions {
  /// A document with a head, and a body in the default font, size and colour; else a fragment to
  /// put into some page, whose font and colour it takes.
  bool whole_document = false;
  /// Each line is a paragraph (`<p>`); else lines end with `<br>`.
  bool paragraphs = false;
  /// Fonts and colours are the classes "qel-f1" to "qel-f9" and "qel-y1" to "qel-y9", for which a
  /// document has a style sheet; else styles in the elements themselves.
  bool classes = false;
  /// Text of these kinds is left out (see `ReservedColor`); line breaks within it stay.
  bool without_ignored = false;
  bool without_hidden = false;
  bool without_note = false;
};

/// Writes a text as HTML while it comes.
///
/// Elements (`b i u s sub sup`, `span` for small capitals, colours and fonts) lie within each other
/// in the order in which markup switches its codes on; what goes on behind an element that ends is
/// opened again. Plain text has no elements. Text that is raised and lowered at once is raised.
///
/// A blank that a browser would not show (at the edge of a line, or behind another) becomes a
/// no-break space in a span that marks it: so it is seen wherever the HTML goes, also where styles
/// are dropped, and a reader can tell it from a no-break space of the text. Tabs are kept by
/// `white-space:pre`. Control characters, which HTML forbids, are dropped; a lone surrogate becomes
/// U+FFFD.
class HtmlWriter : public RunSink {
 public:
  /// Appends to `out`, which has to outlive this object, and may be emptied between calls. The head
  /// of a document is written at once.
  HtmlWriter(std::u16string& out, const QELIndexFonts& fonts, const QELIndexColors& colors,
             const HtmlOptions& options = {});
  HtmlWriter(const HtmlWriter&) = delete;
  HtmlWriter& operator=(const HtmlWriter&) = delete;

  void text(std::u16string_view text, const style_codes::CodeState& state) override;
  void line_break(const style_codes::CodeState& state) override;
  void finish() override;

 private:
  static constexpr std::size_t element_count = 9;

  void write_head(const QELIndexFonts& fonts, const QELIndexColors& colors);
  bool is_left_out(const style_codes::CodeState& state) const;
  style_codes::CodeState in_html(const style_codes::CodeState& state) const;
  void enter(const style_codes::CodeState& state, bool text_goes_on);
  void change(const style_codes::CodeState& state);
  void close_from(std::size_t depth);
  std::u16string_view tag_of(std::size_t element, const style_codes::CodeState& state) const;
  void append(std::u16string_view text);
  std::size_t append_special(std::u16string_view text);
  void append_visible(std::u16string_view text);
  void append_tabs(std::size_t count);
  void release_blanks(bool text_goes_on);

  std::u16string& out_;
  HtmlOptions options_;
  std::array<std::u16string, 10> font_tags_;
  std::array<std::u16string, 10> color_tags_;
  unsigned nameless_fonts_ = 0;  // unused entries, as bits

  style_codes::CodeState state_;                    // of the elements that are open,
  std::array<std::uint8_t, element_count> open_{};  // the outermost first
  std::size_t depth_ = 0;
  std::size_t held_blanks_ = 0;  // what follows says how they are written
  bool would_collapse_ = true;   // whether the next plain blank would not be shown
  bool is_line_empty_ = true;
  bool is_in_paragraph_ = false;
  bool wrote_paragraph_ = false;
};

}  // namespace qel::convert
