#include "Picture.h"

#include <memory>
#include <optional>

#include "qel/headless/SvgCanvas.h"
#include "qel/text/TextAndFormatting.h"

namespace qel::command {

std::string drawn(const Picture& picture, const Tables& tables, std::u16string_view markup) {
  const auto canvas = std::make_shared<headless::SvgCanvas>(
      picture.width, picture.margin,
      picture.transparent ? std::nullopt : std::optional(rgb(255, 255, 255)));
  TextAndFormatting layout;
  layout.put_Canvas(canvas);
  layout.SetFontAndColors(tables.fonts, *tables.colors);
  layout.put_Align(picture.align);
  layout.put_LabelID(picture.label);
  layout.put_RevealCodes(picture.reveal_codes);
  layout.put_ShowHiddenText(!picture.hides_hidden);
  layout.put_IgnoreColors(picture.one_color);
  layout.put_Lossless(picture.way == Way::lossless);
  layout.put_WordWrap(picture.wraps);
  layout.WriteParagraph(markup, 0, 0, picture.width, picture.indent);
  return canvas->svg();
}

}  // namespace qel::command
