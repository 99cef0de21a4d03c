#include "qel/rtf/SimpleRtfWriter.h"

#include <utility>

#include "qel/base/Scan.h"
#include "qel/rtf/Characters.h"
#include "qel/rtf/CodeTable.h"

namespace qel::rtf {

void SimpleRtfWriter::text(std::u16string_view text, const style_codes::CodeState& state) {
  walk_.enter(shown_state(state));
  append_rtf_characters(body_, text, parser_);
}

std::u16string SimpleRtfWriter::document(QELIndexFonts& fonts, const QELIndexColors& colors,
                                         platform::MeasuringSurface& surface) {
  std::u16string head = u"{\\rtf1 ";
  if (walk_.wrote_font()) head.append(fonts.font_table(&surface, parser_.way()));
  if (walk_.wrote_color()) head.append(colors.get_ColorTable());
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
