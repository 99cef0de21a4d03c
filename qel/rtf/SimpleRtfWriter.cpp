#include "qel/rtf/SimpleRtfWriter.h"

#include <utility>

#include "qel/base/Scan.h"
#include "qel/rtf/Characters.h"

namespace qel::rtf {

SimpleRtfWriter::SimpleRtfWriter(const RTFParser& parser, QELIndexFonts& fonts,
                                 const QELIndexColors& colors, Origin origin)
    : parser_(parser),
      fonts_(fonts),
      colors_(colors),
      walk_(rtf_spelling, fonts, colors, origin, parser.way(), body_) {}

void SimpleRtfWriter::add(const richtext::CharFormat& format, std::u16string_view text) {
  walk_.enter(format);
  append_rtf_characters(body_, text, parser_);
}

std::u16string SimpleRtfWriter::finish(platform::MeasuringSurface& surface) {
  walk_.close();
  std::u16string head = u"{\\rtf1 ";
  if (walk_.wrote_font()) head.append(fonts_.font_table(&surface, parser_.way()));
  if (walk_.wrote_color()) head.append(colors_.get_ColorTable());
  std::u16string document = std::move(body_);
  document.insert(0, head).push_back(u'}');
  // Text may look like the words that they move.
  if (parser_.get_Lossless()) return document;
  // The last of the three finds nothing, as underline is switched off with another word. It is part
  // of the format all the same.
  document = replace_all(std::move(document), u"\\par \\b0 ", u"\\b0 \\par ");
  document = replace_all(std::move(document), u"\\par \\i0 ", u"\\i0 \\par ");
  return replace_all(std::move(document), u"\\par \\u0 ", u"\\u0 \\par ");
}

}  // namespace qel::rtf
