#include "qel/text/TextAndFormatting.h"

#include <algorithm>
#include <string>
#include <utility>

#include "qel/base/CaseMapping.h"
#include "qel/base/Error.h"
#include "qel/base/Records.h"
#include "qel/base/Search.h"
#include "qel/platform/Common.h"
#include "qel/text/Paragraph.h"
#include "qel/text/ParagraphWriter.h"
#include "qel/text/RememberedLines.h"
#include "qel/text/Typesetter.h"
#include "qel/text/VisibleCharacters.h"

namespace qel {

TextAndFormatting::TextAndFormatting() = default;
TextAndFormatting::~TextAndFormatting() = default;

void TextAndFormatting::put_Canvas(std::shared_ptr<platform::Canvas> Value) {
  lines_.reset();
  canvas_ = std::move(Value);
}

void TextAndFormatting::SetFontAndColors(const QELIndexFonts& Fonts, const QELIndexColors& Colors) {
  SetFonts(Fonts);
  SetColors(Colors);
}

namespace {

void put_default_font(platform::Canvas& canvas, const TextAndFormatting& engine) {
  canvas.put_FontName(engine.get_DefaultFont());
  canvas.put_FontSize(engine.get_DefaultFontSize());
}

}  // namespace

platform::Canvas& TextAndFormatting::measuring_canvas() const {
  if (canvas_) return *canvas_;
  auto platform = Common::current_platform();
  if (platform != own_canvas_platform_) {
    auto canvas = platform->create_measuring_canvas();
    lines_.reset();
    own_canvas_ = std::move(canvas);
    own_canvas_platform_ = std::move(platform);
  }
  put_default_font(*own_canvas_, *this);
  return *own_canvas_;
}

platform::Canvas& TextAndFormatting::measuring_canvas_in_default_font() const {
  platform::Canvas& canvas_to_use = measuring_canvas();
  put_default_font(canvas_to_use, *this);
  return canvas_to_use;
}

float TextAndFormatting::fmtTextWidth(std::u16string_view Text) const {
  Typesetter typesetter(measuring_canvas(), *fonts_);
  return reveal_codes_ ? typesetter.revealed_width(Text)
                       : typesetter.markup_width(Text, show_hidden_text_, way_);
}

float TextAndFormatting::TextHeight(std::u16string_view Text) const {
  Typesetter typesetter(measuring_canvas(), *fonts_);
  const Paragraph paragraph(Text, {reveal_codes_, show_hidden_text_, way_});
  float height = line_height({}, typesetter);
  for (const ParagraphLine& line : paragraph.lines({0, 0, false}, typesetter)) {
    height = std::max(height, line_height(line, typesetter));
  }
  return height;
}

RememberedLines& TextAndFormatting::lines_of(std::u16string_view text, float width, float indent,
                                             const platform::Canvas& on) const {
  LineSettings settings(on, *fonts_, width, indent, reveal_codes_, show_hidden_text_, way_);
  if (!lines_ || !lines_->are_of(text, settings)) {
    lines_ = std::make_unique<RememberedLines>(text, std::move(settings), on, *fonts_);
  }
  return *lines_;
}

std::int16_t TextAndFormatting::LineCount(std::u16string_view Text, float Width,
                                          float Indent) const {
  const auto& lines = lines_of(Text, Width, Indent, measuring_canvas()).all();
  return static_cast<std::int16_t>(lines.size());
}

std::u16string TextAndFormatting::GetLine(std::u16string_view Text, float Width, float Indent,
                                          std::int16_t LineNumber) const {
  RememberedLines& lines = lines_of(Text, Width, Indent, measuring_canvas_in_default_font());
  const auto number = static_cast<std::size_t>(std::max<std::int16_t>(LineNumber, 0));
  return std::u16string(lines.line(number).value_or(u""));
}

std::vector<std::u16string> TextAndFormatting::all_lines(std::u16string_view Text, float Width,
                                                         float Indent) const {
  const auto& lines = lines_of(Text, Width, Indent, measuring_canvas_in_default_font()).all();
  return {lines.begin(), lines.end()};
}

float TextAndFormatting::WriteParagraph(std::u16string_view Text, float X, float Y, float Width,
                                        float Indent) {
  if (!canvas_) {
    throw Error(Error::object_not_set, "TextAndFormatting", "WriteParagraph: there is no Canvas");
  }
  platform::Canvas& to = *canvas_;
  put_default_font(to, *this);
  Typesetter typesetter(to, *fonts_);
  const Paragraph paragraph(Text, {reveal_codes_, show_hidden_text_, way_});
  const auto lines = paragraph.lines({Width, Indent, word_wrap_}, typesetter);
  lines_printed_ = static_cast<std::int16_t>(lines.size());
  ParagraphWriter writer(to, typesetter, {X, Width, align_});
  writer.set_colors(*colors_, ignore_colors_, label_id_);
  return writer.write(lines, Y);
}

std::int16_t TextAndFormatting::fmtLen(std::u16string_view Text) {
  return static_cast<std::int16_t>(visible::length(Text));
}

namespace {

/// The visible position of a match at `position` in the markup.
std::int16_t visible_position(std::u16string_view text, std::size_t position) {
  if (text.empty() || position == std::u16string_view::npos) return 0;
  return static_cast<std::int16_t>(visible::length(text.substr(0, position + 1)));
}

}  // namespace

std::int16_t TextAndFormatting::fmtInStr(std::u16string_view Text, std::u16string_view SearchText) {
  return visible_position(Text, find_text(Text, SearchText));
}

std::int16_t TextAndFormatting::fmtRevInStr(std::u16string_view Text,
                                            std::u16string_view SearchText) {
  return visible_position(Text, SearchText.empty() ? 0 : find_last_text(Text, SearchText));
}

std::u16string TextAndFormatting::fmtLeft(std::u16string_view Text, std::int16_t Count) {
  if (Count > 0) return std::u16string(visible::left(Text, static_cast<std::size_t>(Count)));
  const bool stops_at_code = Count == 0 && visible::has_code_at(Text, 0);
  return std::u16string(stops_at_code ? Text.substr(0, 3) : Text);
}

std::u16string TextAndFormatting::fmtRight(std::u16string_view Text, std::int16_t Count) {
  if (Count < 0) return std::u16string(Text);
  return std::u16string(visible::right(Text, static_cast<std::size_t>(Count)));
}

std::u16string TextAndFormatting::fmtMid(std::u16string_view Text, std::int16_t Start,
                                         std::int16_t Length) {
  if (Start < 1 || Length < 0) return {};
  const auto before = static_cast<std::size_t>(Start - 1);
  return std::u16string(Length == 0 ? visible::mid(Text, before)
                                    : visible::mid(Text, before, static_cast<std::size_t>(Length)));
}

bool TextAndFormatting::IsSortCode(std::u16string_view Text) {
  return Text == u"/y0" || Text == u"/y1" || Text == u"/y2";
}

bool TextAndFormatting::IsEscapeCode(std::u16string_view Text) {
  return visible::is_escape_code(Text);
}

std::u16string TextAndFormatting::RomanToArabic(std::u16string_view Text) {
  const std::u16string lower = to_lower(Text);
  std::u16string_view rest = lower;
  std::int32_t total = 0;
  const auto take = [&](std::u16string_view digits, std::int32_t value) {
    if (!rest.starts_with(digits)) return;
    total += value;
    rest.remove_prefix(digits.size());
  };
  std::int32_t value = 1000;
  char16_t before = u' ';         // the letter of the value above
  char16_t before_before = u' ';  // and of the one above that
  bool next_is_half = true;
  for (const char16_t letter : std::u16string_view(u"mdclxvi")) {
    take(std::u16string(4, letter), 4 * value);
    take(std::u16string(3, letter), 3 * value);
    take(std::u16string(2, letter), 2 * value);
    take(std::u16string{letter, before}, 4 * value);
    take(std::u16string{letter, before_before}, 9 * value);
    take(std::u16string(1, letter), value);
    value /= next_is_half ? 2 : 5;
    next_is_half = !next_is_half;
    before_before = before;
    before = letter;
  }
  return rest.empty() ? records::from_integer(total) : std::u16string();
}

}  // namespace qel
