// Work on formatted text: what cutting, joining, changing case and wrapping keep.

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <memory>
#include <string>
#include <vector>

#include "Input.h"
#include "qel/headless/FixedCanvas.h"
#include "qel/headless/SvgCanvas.h"
#include "qel/text/QELText.h"

namespace {

using qel::QELText;
using qel::TextAndFormatting;
using qel::fuzz::Input;
using qel::fuzz::require;

/// Whether joining what was cut apart could make a code, or unmake one.
bool is_ambiguous(const std::u16string& plain) {
  return plain.find_first_of(u"~/") != std::u16string::npos;
}

void check_cuts(QELText& tools, const std::u16string& text, const Input& input) {
  const std::u16string plain = tools.PlainText(text);
  const auto length = static_cast<std::int16_t>(plain.size());
  const std::int16_t at = input.number(0, 0, length);
  std::int16_t before = at;
  auto behind = static_cast<std::int16_t>(length - at);
  const std::u16string left = tools.LeftStr(text, before);
  const std::u16string right = tools.RightStr(text, behind);
  const auto start = static_cast<std::int16_t>(at + 1);
  const std::u16string stuffed = tools.Stuff(text, start, 0, u"new", nullptr);
  if (is_ambiguous(plain)) return;
  require(tools.PlainText(left) == plain.substr(0, static_cast<std::size_t>(at)), "left");
  require(tools.PlainText(right) == plain.substr(static_cast<std::size_t>(at)), "right");
  require(tools.PlainText(tools.Stuff(stuffed, start, 3, u"", nullptr)) == plain,
          "what was put in comes out again");
  std::u16string joined;
  for (const std::u16string& part : tools.Split(text, u"a")) joined += tools.PlainText(part);
  std::u16string without_delimiters = plain;
  std::erase(without_delimiters, u'a');
  require(joined == without_delimiters, "splitting loses delimiters only");
}

void check_case(QELText& tools, const std::u16string& text, const Input& input) {
  const std::int16_t start = input.number(1, -1, 50);
  const std::int16_t length = input.number(2, -1, 50);
  const std::size_t size = tools.PlainText(text).size();
  for (const std::u16string& changed :
       {tools.LowerCase(text, start, length), tools.UpperCase(text, start, length),
        tools.ChangeCase(text, start, length), tools.TitleCase(text, start, length, true),
        tools.InitialCap(text, start, length), tools.FirstLetterToUppercase(text, start, length),
        tools.FirstLetterToLowercase(text, start, length), tools.AutoTitleCase(text)}) {
    require(tools.PlainText(changed).size() == size || is_ambiguous(tools.PlainText(text)),
            "a change of case keeps the length");
  }
  require(tools.AutoTitleCaseRTF(text).size() <= 10 * text.size(), "titles in RTF");
  tools.AutoInitialCapRTF(text);
  tools.put_QELText(text);
  tools.ToggleTextAttribute(input.number(3, -1, 32), start, length);
  require(
      tools.get_StyleDecoderObj()->get_Text().size() == size || is_ambiguous(tools.PlainText(text)),
      "a toggle keeps the length");
}

/// The characters of @p text but its blanks; sorted where some may run from right to left, since a
/// line is drawn in the order of the screen and lines divide such texts elsewhere.
std::u16string drawn_characters(std::u16string text) {
  constexpr char16_t first_right_to_left = 0x590;
  std::erase(text, u' ');
  const auto may_run_left = [](char16_t unit) { return unit >= first_right_to_left; };
  if (std::any_of(text.begin(), text.end(), may_run_left)) std::sort(text.begin(), text.end());
  return text;
}

/// Visible characters but for the blanks, which are in no code.
std::ptrdiff_t count_letters(const std::u16string& text) {
  return TextAndFormatting::fmtLen(text) - std::count(text.begin(), text.end(), u' ');
}

void check_wrap(const std::u16string& text, const Input& input) {
  TextAndFormatting layout;
  const auto canvas = std::make_shared<qel::headless::FixedCanvas>();
  layout.put_Canvas(canvas);
  const auto width = static_cast<float>(input.number(4, -5, 300));
  const auto indent = static_cast<float>(input.number(5, -5, 50));
  const std::vector<std::u16string> lines = layout.all_lines(text, width, indent);
  std::ptrdiff_t letters = 0;
  for (const std::u16string& line : lines) {
    require(TextAndFormatting::fmtLen(line) > 0, "every line has a character");
    letters += count_letters(line);
  }
  require(letters == count_letters(text), "lines lose blanks at the breaks only");
  layout.WriteParagraph(text, 0, 0, width, indent);
  std::u16string wrapped;
  for (const auto& drawn : canvas->texts()) wrapped += drawn.text;
  canvas->clear();
  layout.put_WordWrap(false);
  layout.WriteParagraph(text, 0, 0, width, indent);
  std::u16string unwrapped;
  for (const auto& drawn : canvas->texts()) unwrapped += drawn.text;
  require(drawn_characters(wrapped) == drawn_characters(unwrapped),
          "drawing shows all of the text");
  const auto svg = std::make_shared<qel::headless::SvgCanvas>(width);
  layout.put_Canvas(svg);
  layout.WriteParagraph(text, 0, 0, width, indent);
  require(svg->svg().find('\0') == std::string::npos, "no character that XML forbids");
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  if (size > 0x4000) return 0;  // positions have 16 bits
  const Input input(data, size);
  const std::u16string text = input.text();
  QELText tools;
  check_cuts(tools, text, input);
  check_case(tools, text, input);
  check_wrap(text, input);
  return 0;
}
