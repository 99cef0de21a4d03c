#include "qel/control/QELTextbox.h"

#include <algorithm>
#include <utility>

#include "qel/base/Error.h"
#include "qel/base/Hex.h"
#include "qel/control/Conversion.h"
#include "qel/headless/HeadlessPlatform.h"
#include "qel/richtext/CodePage.h"

namespace qel {

using platform::BoxAppearance;

QELTextbox::QELTextbox(platform::ControlSite& site,
                       std::shared_ptr<const platform::Platform> platform)
    : site_(site),
      platform_(std::move(platform)),
      surface_(platform_->create_measuring_surface()),
      // The same on every platform, so that conversions are too.
      converter_(headless::HeadlessPlatform().create_rich_edit(0)) {
  for (auto& box : boxes_) box = platform_->create_rich_edit(site_.window());
  listen_to_boxes();
  change_boxes([](BoxAppearance& box) { box = BoxAppearance(); });
  BoxAppearance first = appearance();
  first.multiline = false;
  boxes_[single_line]->put_appearance(first);
  show_active_box();
  Resize();
  Common::publish(surface_, converter_);
}

namespace {

template <class Change>
void change_box(platform::RichEdit& box, Change change) {
  // The listener may change the appearance, too.
  box.settle();
  BoxAppearance appearance = box.appearance();
  change(appearance);
  box.put_appearance(appearance);
}

}  // namespace

template <class Change>
void QELTextbox::change_boxes(Change change) {
  for (const auto& box : boxes_) change_box(*box, change);
}

template <class Value>
void QELTextbox::put_in_boxes(Value BoxAppearance::*field, const Value& value,
                              std::u16string_view name) {
  change_boxes([&](BoxAppearance& box) { box.*field = value; });
  site_.property_changed(name);
}

void QELTextbox::put_in_parser(void (RTFParser::*put)(bool), bool value, std::u16string_view name) {
  (parser_.*put)(value);
  site_.property_changed(name);
}

void QELTextbox::put_in_colors(std::int16_t index, void (QELIndexColors::*put)(Color), Color value,
                               std::u16string_view name) {
  const Color before = colors_->get_Color(index);
  try {
    (*colors_.*put)(value);
  } catch (const Error&) {
    // The table keeps its old colour, and the host need not know.
  }
  const Color after = colors_->get_Color(index);
  if (get_Lossless() && before != after) change_color(before, after);
  site_.property_changed(name);
}

void QELTextbox::change_color(Color before, Color after) {
  const Scoped holding(changes_held_, true);
  for (const auto& box : boxes_) {
    const platform::Range selection = box->selection();
    richtext::Document content = box->content(platform::Scope::document);
    bool has_color = false;
    content.change_formats({0, content.size()}, [&](const richtext::CharFormat& format) {
      richtext::FormatChange change;
      if (format.color == before) change.color = after;
      has_color = has_color || change.color.has_value();
      return change;
    });
    if (!has_color) continue;
    box->put_content(platform::Scope::document, std::move(content));
    box->select(selection);
  }
}

void QELTextbox::show_active_box() {
  for (std::size_t i = 0; i < boxes_.size(); ++i) {
    BoxAppearance appearance = boxes_[i]->appearance();
    appearance.visible = i == active_;
    boxes_[i]->put_appearance(appearance);
  }
}

void QELTextbox::InitProperties() {
  act_on_styles_ = act_on_fonts_ = act_on_colors_ = act_on_plain_ = allow_edits_ = enabled_ = true;
  reveal_codes_ = show_editor_ = paste_text_only_ = smart_quotes_ = false;
  parser_ = RTFParser();
  parser_.put_Lossless(lossless_at_first_);
  assigned_.reset();
  back_color_ = system_color(5);
  fore_color_ = system_color(8);
  border_style_ = 1;
  theme_ = 0;
  active_ = single_line;
  change_boxes([](BoxAppearance& box) {
    const bool multiline = box.multiline;
    box = BoxAppearance();
    box.multiline = multiline;
  });
  const Scoped holding(changes_held_, true);
  for (const auto& box : boxes_) {
    box->put_Text(u"");
    box->put_alignment(richtext::Alignment::left);
  }
  show_active_box();
  Resize();
  compute_border_color();
}

void QELTextbox::put_Text(std::u16string_view Value) {
  assigned_.reset();
  CurrentRichTextBox()->put_Text(Value);
  site_.property_changed(u"Text");
}

void QELTextbox::begin_lossless() {
  lossless_at_first_ = true;
  parser_.put_Lossless(true);
}

Conversion QELTextbox::conversion() const {
  Conversion conversion = {parser_, *fonts_, *colors_};
  if (get_Lossless()) {
    conversion.fonts.put_DefaultFont(get_FontName());
    conversion.fonts.put_FontSize(get_FontSize());
  }
  return conversion;
}

std::u16string QELTextbox::get_TextQEL() const {
  if (reveal_codes_) return get_Text();
  Conversion converting = conversion();
  std::u16string markup = converting.markup_in(*CurrentRichTextBox());
  const bool may_be_untouched = assigned_ && get_Lossless() && assigned_->box == active_;
  if (!may_be_untouched || assigned_->markup == markup) return markup;
  if (!assigned_->in_box) {
    assigned_->in_box = converting.markup_of(converting.content_of(assigned_->markup, {}));
  }
  return *assigned_->in_box == markup ? assigned_->markup : markup;
}

void QELTextbox::put_TextQEL(std::u16string_view Value) {
  platform::RichEdit& box = *CurrentRichTextBox();
  if (reveal_codes_) {
    box.put_Text(Value);
  } else {
    const auto [format, alignment] = box.text_defaults(platform::Scope::document);
    richtext::Document content = conversion().content_of(Value, format);
    // Markup knows no alignment: the one at the beginning of the text stays.
    content.align({0, content.size()}, alignment);
    assigned_.reset();
    if (get_Lossless()) assigned_ = {active_, std::u16string(Value), {}};
    box.put_content(platform::Scope::document, std::move(content));
  }
  site_.property_changed(u"TextQEL");
}

std::u16string QELTextbox::get_TextRTF() const {
  if (!site_.is_run_time()) return {};
  return conversion().simple_rtf_in(*CurrentRichTextBox(), platform::Scope::document);
}

void QELTextbox::put_TextRTF(std::u16string_view Value) {
  if (!site_.is_run_time()) return;
  assigned_.reset();
  CurrentRichTextBox()->put_TextRTF(Value);
}

std::int32_t QELTextbox::get_SelAlignment() const {
  return static_cast<std::int32_t>(
      CurrentRichTextBox()->alignment().value_or(richtext::Alignment::left));
}

void QELTextbox::put_SelAlignment(std::int32_t Value) {
  const bool is_known = Value >= 0 && Value <= 2;
  if (is_known) CurrentRichTextBox()->put_alignment(static_cast<richtext::Alignment>(Value));
  site_.property_changed(u"SelAlignment");
}

void QELTextbox::show_what_is_allowed() {
  change_boxes([this](BoxAppearance& box) {
    box.read_only = !allow_edits_;
    box.enabled = enabled_;
  });
  // The window of a disabled box could not be closed by its keys.
  if (!editor_box_) return;
  change_box(*editor_box_,
             [this](BoxAppearance& box) { box.read_only = !allow_edits_ || !enabled_; });
}

void QELTextbox::put_AllowEdits(bool Value) {
  allow_edits_ = Value;
  show_what_is_allowed();
  site_.property_changed(u"AllowEdits");
}

void QELTextbox::put_Enabled(bool Value) {
  enabled_ = Value;
  site_.put_enabled(Value);
  show_what_is_allowed();
  compute_border_color();
  Refresh();
  site_.property_changed(u"Enabled");
}

void QELTextbox::put_TabStop(bool Value) {
  put_in_boxes(&BoxAppearance::tab_stop, Value, u"TabStop");
}

void QELTextbox::put_Multiline(bool Value) {
  active_ = Value ? multi_line : single_line;
  if (editor_box_) change_box(*editor_box_, [=](BoxAppearance& box) { box.takes_breaks = Value; });
  show_active_box();
  Refresh();
  site_.property_changed(u"Multiline");
  raise_selection();
}

void QELTextbox::put_OLEDragMode(std::int32_t Value) {
  put_in_boxes(&BoxAppearance::drag_mode, Value, u"OLEDragMode");
}

void QELTextbox::put_OLEDropMode(std::int32_t Value) {
  put_in_boxes(&BoxAppearance::drop_mode, Value, u"OLEDropMode");
}

void QELTextbox::put_BackColor(Color Value) {
  change_boxes([Value](BoxAppearance& box) { box.back_color = Value; });
  store(back_color_, Value, u"BackColor");
}

void QELTextbox::put_BorderStyle(std::int32_t Value) {
  border_style_ = Value;
  Resize();
  Refresh();
  site_.property_changed(u"BorderStyle");
}

void QELTextbox::put_FontName(std::u16string_view Value) {
  std::vector<std::pair<std::u16string, std::u16string>> fonts;
  if (get_Lossless()) {
    // The names of fonts in the boxes depend on that of the control, from which they differ.
    QELIndexFonts table = conversion().fonts;
    const auto before = table.distinct_names();
    table.put_DefaultFont(Value);
    const auto after = table.distinct_names();
    for (std::size_t i = 1; i < before.size(); ++i) fonts.emplace_back(before[i], after[i]);
  }
  change_boxes([&](BoxAppearance& box) {
    box.fonts_of_text = fonts;
    box.font_name = Value;
  });
  site_.property_changed(u"FontName");
}

void QELTextbox::put_FontSize(float Value) {
  constexpr float largest = 16383;  // the largest that RTF can express
  if (Value > 0 && Value <= largest) {
    change_boxes([Value](BoxAppearance& box) { box.font_size = Value; });
  }
  site_.property_changed(u"FontSize");
}

void QELTextbox::put_ScrollBars(std::int32_t Value) {
  put_in_boxes(&BoxAppearance::scroll_bars, Value, u"ScrollBars");
}

void QELTextbox::put_XPTheme(std::int32_t Value) {
  theme_ = Value;
  Refresh();
  site_.property_changed(u"XPTheme");
}

std::u16string QELTextbox::XPThemeColor() const {
  try {
    const auto scheme = platform_->visual_styles().color_scheme();
    if (!scheme) return {};
    if (*scheme == u"HomeStead") return u"Green";
    if (*scheme == u"NormalColor") return u"Blue";
    return *scheme == u"Metallic" ? u"Silver" : u"Unknown";
  } catch (const std::exception&) {
    return u"Blue";
  }
}

void QELTextbox::compute_border_color() {
  enum Scheme : std::int32_t { blue = 1, green = 2, silver = 3 };
  std::int32_t scheme = theme_;
  if (scheme == 0) {
    const std::u16string color = XPThemeColor();
    scheme = color == u"Green" ? green : color == u"Silver" ? silver : blue;
  }
  if (!enabled_) {
    border_color_ = rgb(201, 199, 186);
  } else if (scheme == green) {
    border_color_ = rgb(144, 193, 84);
  } else if (scheme == blue || scheme == silver) {
    border_color_ = rgb(127, 157, 185);
  }
}

void QELTextbox::put_IgnoreColor(Color Value) {
  put_in_colors(ignored_color, &QELIndexColors::put_IgnoredColor, Value, u"IgnoreColor");
}

void QELTextbox::put_HideColor(Color Value) {
  put_in_colors(hidden_color, &QELIndexColors::put_HiddenColor, Value, u"HideColor");
}

void QELTextbox::put_NoteColor(Color Value) {
  put_in_colors(note_color, &QELIndexColors::put_NoteColor, Value, u"NoteColor");
}

void QELTextbox::put_RecognizeCRLF(bool Value) {
  put_in_parser(&RTFParser::put_RecognizeCRLF, Value, u"RecognizeCRLF");
}

void QELTextbox::put_RecognizeTabs(bool Value) {
  put_in_parser(&RTFParser::put_RecognizeTabs, Value, u"RecognizeTabs");
}

void QELTextbox::put_ConvertNLToSpace(bool Value) {
  put_in_parser(&RTFParser::put_ConvertNLToSpace, Value, u"ConvertNLToSpace");
}

void QELTextbox::put_ConvertTabsToSpace(bool Value) {
  put_in_parser(&RTFParser::put_ConvertTabsToSpace, Value, u"ConvertTabsToSpace");
}

std::u16string QELTextbox::QELToRTF(std::u16string_view Text) const {
  return parser_.QELToRTF(Text, *fonts_, *colors_);
}

std::u16string QELTextbox::QELToRTFWithoutTables(std::u16string_view Text) const {
  return parser_.QELToRTFWithoutTables(Text);
}

std::u16string QELTextbox::RTFToQEL(std::u16string_view RTF) const {
  std::u16string markup = parser_.RTFToQEL(RTF, *fonts_, *colors_);
  constexpr std::size_t line_break = 2;  // CR LF
  if (markup.ends_with(u'\n')) markup.resize(markup.size() - std::min(line_break, markup.size()));
  return markup;
}

std::u16string QELTextbox::HexToChar(std::u16string_view Text) {
  if (Text.empty()) return {};
  const int number =
      16 * std::max(hex_value(Text.front()), 0) + std::max(hex_value(Text.back()), 0);
  if (number < u' ') return {};
  return std::u16string(1, richtext::decode_western(static_cast<std::uint8_t>(number)));
}

void QELTextbox::Resize() {
  const platform::ControlExtent extent = site_.extent();
  const bool has_border = border_style_ != 0;
  change_boxes([&](BoxAppearance& box) {
    box.left = has_border ? 1 : 0;
    box.top = has_border ? 2 : 0;
    box.width = extent.width - (has_border ? 2 : 1);
    box.height = extent.height - (has_border ? 4 : 1);
  });
}

ControlFrame QELTextbox::frame() const {
  const auto [width, height] = site_.extent();
  return {width - 1, height - 1, border_style_ == 1 ? border_color_ : back_color_};
}

}  // namespace qel
