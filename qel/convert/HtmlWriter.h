#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <memory>
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

template <class Char>
struct HtmlTags;

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
/// U+FFFD. Texts and HTML are in UTF-16, or in valid UTF-8.
template <class Char>
class BasicHtmlWriter final : public BasicRunSink<Char> {
 public:
  /// Appends to `out`, which has to outlive this object, and may be emptied between calls. The head
  /// of a document is written at once.
  BasicHtmlWriter(std::basic_string<Char>& out, const QELIndexFonts& fonts,
                  const QELIndexColors& colors, const HtmlOptions& options = {});
  /// The same with tags that have been made of tables and these options.
  BasicHtmlWriter(std::basic_string<Char>& out, std::shared_ptr<const HtmlTags<Char>> tags,
                  const HtmlOptions& options);
  BasicHtmlWriter(const BasicHtmlWriter&) = delete;
  BasicHtmlWriter& operator=(const BasicHtmlWriter&) = delete;

  void text(std::basic_string_view<Char> text, const style_codes::CodeState& state) override;
  void line_break(const style_codes::CodeState& state) override;
  void finish() override;

 private:
  using String = std::basic_string<Char>;
  using View = std::basic_string_view<Char>;
  /// Attributes, colour and font in one number.
  using Format = std::uint32_t;

  Format in_html(const style_codes::CodeState& state) const;
  bool is_left_out(Format format) const;
  View without_forbidden(View text);
  View without_mark(View text);
  void enter(Format format, bool text_goes_on);
  void change(Format format);
  void close_from(std::size_t depth);
  void append(View text);
  std::size_t append_special(View text);
  void append_visible(View text);
  void append_tabs(std::size_t count);
  void end_tabs();
  void hold_blank();
  void release(bool text_goes_on);
  void write_blanks(bool text_goes_on);

  String& out_;
  HtmlOptions options_;
  unsigned nameless_fonts_ = 0;  // unused entries, as bits
  unsigned left_out_ = 0;        // the colours, as bits
  std::shared_ptr<const HtmlTags<Char>> tags_;

  Format format_ = 0;                   // of the elements that are open,
  std::array<std::uint8_t, 9> open_{};  // the outermost first
  std::size_t depth_ = 0;
  std::size_t held_blanks_ = 0;  // what follows says how they are written
  bool is_in_tabs_ = false;      // whether the element of tabs is open: more may follow
  bool would_collapse_ = true;   // whether the next plain blank would not be shown
  bool is_line_empty_ = true;
  bool is_in_paragraph_ = false;
  bool wrote_paragraph_ = false;
};

using HtmlWriter = BasicHtmlWriter<char16_t>;

extern template class BasicHtmlWriter<char>;
extern template class BasicHtmlWriter<char16_t>;

}  // namespace qel::convert
