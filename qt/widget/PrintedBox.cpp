// A box's text, printed.

#include "qel/convert/Convert.h"
#include "qel/qt/Printing.h"
#include "qel/qt/TextBox.h"
#include "qt/platform/Text.h"

namespace qel::qt {
namespace {

/// All that the box shows, breaks and tabs too, whatever the control's switches say of markup.
std::u16string markup_of(const QELTextbox& control, const QELIndexFonts& fonts) {
  convert::Options options;
  options.fonts = fonts;
  options.colors = control.get_Colors();
  return convert::markup_from_rtf(control.CurrentRichTextBox()->get_TextRTF(), options);
}

std::vector<TextAlignment> alignments_of(const richtext::Document& content) {
  std::vector<TextAlignment> alignments;
  for (std::size_t at = 0; at <= content.size();) {
    alignments.push_back(static_cast<TextAlignment>(content.alignment_at(at)));
    const std::size_t end = content.text().find(u"\r\n", at);
    if (end == std::u16string::npos) break;
    at = end + 2;
  }
  return alignments;
}

}  // namespace

PrintSection section_of(const TextBox& box) {
  const QELTextbox& control = box.control();
  const richtext::Document content =
      control.CurrentRichTextBox()->content(platform::Scope::document);
  return {{}, to_qt(markup_of(control, options_of(box).fonts)), alignments_of(content)};
}

PrintOptions options_of(const TextBox& box, const QString& title) {
  const QELTextbox& control = box.control();
  PrintOptions options;
  options.title = title;
  options.fonts = *control.get_Fonts();
  // Elsewhere, text without a font is in that of the table.
  if (control.get_Lossless()) {
    options.fonts.put_Font(0, control.get_FontName());
    options.fonts.put_FontSize(control.get_FontSize());
  }
  options.colors = control.get_Colors();
  return options;
}

QByteArray pdf_of(const TextBox& box, const QString& title) {
  return pdf_of({section_of(box)}, options_of(box, title));
}

bool print(TextBox& box, const QString& title) {
  return print(box.window(), {section_of(box)}, options_of(box, title));
}

void preview(TextBox& box, const QString& title) {
  preview(box.window(), {section_of(box)}, options_of(box, title));
}

}  // namespace qel::qt
