#include "qel/convert/HtmlWriter.h"

#include <algorithm>
#include <bit>

#include "qel/base/Records.h"
#include "qel/base/Scan.h"
#include "qel/base/Utf16.h"
#include "qel/model/ReservedColors.h"

namespace qel::convert {
namespace {

using style_codes::CodeState;

// Elements are numbered in the order in which they are opened: the attributes by their bits, then
// colour and font.
constexpr std::size_t attribute_count = 7;
constexpr std::size_t color_element = 7;
constexpr std::size_t font_element = 8;
constexpr unsigned attribute_bits = (1U << attribute_count) - 1;

struct Tags {
  std::u16string_view begin;
  std::u16string_view end;
};

constexpr std::array<Tags, attribute_count> attribute_tags = {{
    {u"<b>", u"</b>"},
    {u"<i>", u"</i>"},
    {u"<u>", u"</u>"},
    {u"<span style=\"font-variant:small-caps\">", u"</span>"},
    {u"<s>", u"</s>"},
    {u"<sub>", u"</sub>"},
    {u"<sup>", u"</sup>"},
}};

constexpr std::u16string_view end_of_span = u"</span>";
// Browsers write and understand these two marks.
constexpr std::u16string_view blanks_span = u"<span class=\"Apple-converted-space\">";
constexpr std::u16string_view tabs_span =
    u"<span class=\"Apple-tab-span\" style=\"white-space:pre\">";

/// Whether a character, or which of a block of characters, cannot be copied as it is: one that is
/// escaped or forbidden, or half of a surrogate pair.
template <class Character>
auto is_special(Character c) {
  static_assert((u'"' ^ u'&') == 4 && (u'<' ^ u'>') == 2);
  return ((c & std::uint16_t{0xFF60}) == std::uint16_t{0}) |  // controls, also from 0x80 on
         (c == std::uint16_t{0x7F}) | ((c & std::uint16_t{0xFFFB}) == std::uint16_t{u'"'}) |
         ((c & std::uint16_t{0xFFFD}) == std::uint16_t{u'<'}) |
         ((c & std::uint16_t{0xF800}) == std::uint16_t{0xD800});
}

constexpr bool is_forbidden(char16_t c) {
  return (c < u' ' && c != u'\t') || (c >= 0x7F && c < 0xA0);
}

#if defined(__GNUC__)
constexpr std::size_t block_size = 8;

/// Which of eight characters cannot be copied, or are blanks that have another behind them; two
/// bits for each.
std::uint32_t stops_in_block(const char16_t* characters, bool is_blank_behind) {
  const CharacterBlock block = load_block(characters);
  const std::uint32_t blanks = bits_of(block == std::uint16_t{u' '});
  const std::uint32_t blanks_behind = blanks >> 2U | (is_blank_behind ? 0xC000U : 0U);
  return bits_of(is_special(block)) | (blanks & blanks_behind);
}
#endif

#if defined(__SSE2__)
constexpr std::size_t packed_size = 16;

/// Whether sixteen characters are ASCII and can be copied.
bool is_copied_ascii(const char16_t* characters, bool is_blank_behind) {
  const auto all = [](char c) { return _mm_set1_epi8(c); };
  const __m128i packed = load_packed(characters);
  const auto equal = [&](__m128i masked, char c) { return _mm_cmpeq_epi8(masked, all(c)); };
  const __m128i quotes = equal(_mm_and_si128(packed, all('\xFB')), '"');
  const __m128i brackets = equal(_mm_and_si128(packed, all('\xFD')), '<');
  // Controls, and what is not ASCII.
  const __m128i others = _mm_or_si128(_mm_cmplt_epi8(packed, all(' ')), equal(packed, '\x7F'));
  const __m128i stops = _mm_or_si128(_mm_or_si128(quotes, brackets), others);
  const auto blanks = static_cast<std::uint32_t>(_mm_movemask_epi8(equal(packed, ' ')));
  const std::uint32_t blanks_behind = blanks >> 1U | (is_blank_behind ? 0x8000U : 0U);
  return _mm_movemask_epi8(stops) == 0 && (blanks & blanks_behind) == 0;
}
#endif

/// Where the text that can be copied ends: before a special character, or a blank that has another
/// behind it.
std::size_t end_of_copy(std::u16string_view text, std::size_t at) {
#if defined(__GNUC__)
  const auto position = [](std::size_t begin, std::uint32_t bits) {
    return begin + static_cast<std::size_t>(std::countr_zero(bits)) / 2;
  };
  for (; at + block_size < text.size(); at += block_size) {
#if defined(__SSE2__)
    while (at + packed_size < text.size() &&
           is_copied_ascii(text.data() + at, text[at + packed_size] == u' ')) {
      at += packed_size;
    }
    if (at + block_size >= text.size()) break;
#endif
    const std::uint32_t bits = stops_in_block(text.data() + at, text[at + block_size] == u' ');
    if (bits != 0) return position(at, bits);
  }
  if (text.size() >= block_size) {
    // The last block overlaps what has been looked at.
    const std::size_t begin = text.size() - block_size;
    const std::uint32_t bits = stops_in_block(text.data() + begin, false) >> (2 * (at - begin));
    return bits == 0 ? text.size() : position(at, bits);
  }
#endif
  for (; at < text.size(); ++at) {
    const auto c = static_cast<std::uint16_t>(text[at]);
    if (is_special(c)) break;
    if (c == u' ' && at + 1 < text.size() && text[at + 1] == u' ') break;
  }
  return at;
}

void append_escaped(std::u16string& out, char16_t c) {
  switch (c) {
    case u'&':
      out.append(u"&amp;");
      return;
    case u'<':
      out.append(u"&lt;");
      return;
    case u'>':
      out.append(u"&gt;");
      return;
    case u'"':
      out.append(u"&quot;");
      return;
    default:
      out.push_back(c);
  }
}

constexpr char16_t hex_digit(int value) { return u"0123456789abcdef"[value & 0xF]; }

std::u16string css_color(Color color) {
  std::u16string text = u"color:#";
  for (const int part : {red_of(color), green_of(color), blue_of(color)}) {
    text.push_back(hex_digit(part >> 4));
    text.push_back(hex_digit(part));
  }
  return text;
}

/// A declaration for a place where `&`, `<` and `>` are text, as in a style sheet.
std::u16string css_font(std::u16string_view name) {
  std::u16string text = u"font-family:'";
  for (std::size_t at = 0; at < name.size();) {
    const char32_t character = next_character(name, at);
    const bool is_plain = character >= U' ' && character != U'\'' && character != U'\\' &&
                          character != U'<' && (character < 0x7F || character >= 0xA0);
    if (!is_plain) {
      text.append({u'\\', hex_digit(static_cast<int>(character >> 4)),
                   hex_digit(static_cast<int>(character)), u' '});
    } else if (units_of(character) == 2) {
      text.append(name.substr(at - 2, 2));
    } else {
      text.push_back(static_cast<char16_t>(character));
    }
  }
  return text.append(u"'");
}

std::u16string css_defaults(const QELIndexFonts& fonts, const QELIndexColors& colors) {
  return css_font(fonts.get_DefaultFont())
      .append(u";font-size:")
      .append(records::write(fonts.get_FontSize()))
      .append(u"pt;")
      .append(css_color(colors.get_DefaultColor()));
}

std::u16string tag_with(std::u16string_view beginning, std::u16string_view value) {
  std::u16string tag(beginning);
  tag.append(u"=\"");
  for (const char16_t c : value) append_escaped(tag, c);
  return tag.append(u"\">");
}

std::u16string class_of(char16_t letter, std::size_t index) {
  return {u'q', u'e', u'l', u'-', letter, static_cast<char16_t>(u'0' + index)};
}

/// Whether an entry of the table is used.
bool has_name(const QELIndexFonts& fonts, std::size_t index) {
  const std::u16string name = fonts.get_Font(static_cast<std::int16_t>(index));
  return !name.empty() && name != QELIndexFonts::unused;
}

/// The state as HTML shows it. An index that no table has stands for the default.
CodeState shown(CodeState state) {
  constexpr std::int16_t last_index = 9;
  if (state.font < 0 || state.font > last_index) state.font = 0;
  if (state.color < 0 || state.color > last_index) state.color = 0;
  unsigned bits = state.attributes & attribute_bits;
  if ((bits & style_codes::superscript_bit) != 0) bits &= ~unsigned{style_codes::subscript_bit};
  state.attributes = static_cast<std::uint8_t>(bits);
  return state;
}

}  // namespace

HtmlWriter::HtmlWriter(std::u16string& out, const QELIndexFonts& fonts,
                       const QELIndexColors& colors, const HtmlOptions& options)
    : out_(out), options_(options) {
  const auto names = fonts.distinct_names();
  for (std::size_t i = 0; i < names.size(); ++i) {
    const Color color = colors.get_Color(static_cast<std::int16_t>(i));
    const std::u16string_view begin = options.classes ? u"<span class" : u"<span style";
    font_tags_[i] = tag_with(begin, options.classes ? class_of(u'f', i) : css_font(names[i]));
    if (!options.classes && !has_name(fonts, i)) nameless_fonts_ |= 1U << i;
    color_tags_[i] = tag_with(begin, options.classes ? class_of(u'y', i) : css_color(color));
  }
  if (options.whole_document) write_head(fonts, colors);
}

void HtmlWriter::write_head(const QELIndexFonts& fonts, const QELIndexColors& colors) {
  out_.append(u"<!DOCTYPE html>\n<html>\n<head>\n<meta charset=\"utf-8\">\n");
  if (!options_.classes) {
    out_.append(u"</head>\n");
    out_.append(tag_with(u"<body style", css_defaults(fonts, colors)));
    return;
  }
  const auto names = fonts.distinct_names();
  out_.append(u"<style>\nbody{").append(css_defaults(fonts, colors)).append(u"}\n");
  for (std::size_t i = 1; i < names.size(); ++i) {
    const Color color = colors.get_Color(static_cast<std::int16_t>(i));
    if (has_name(fonts, i)) {
      out_.append(u".").append(class_of(u'f', i)).append(u"{");
      out_.append(css_font(names[i])).append(u"}\n");
    }
    out_.append(u".").append(class_of(u'y', i)).append(u"{").append(css_color(color));
    out_.append(u"}\n");
  }
  out_.append(u"</style>\n</head>\n<body>");
}

bool HtmlWriter::is_left_out(const CodeState& state) const {
  return (options_.without_ignored && state.color == ignored_color) ||
         (options_.without_hidden && state.color == hidden_color) ||
         (options_.without_note && state.color == note_color);
}

CodeState HtmlWriter::in_html(const CodeState& state) const {
  CodeState visible = shown(state);
  if ((nameless_fonts_ >> static_cast<unsigned>(visible.font) & 1U) != 0) visible.font = 0;
  return visible;
}

void HtmlWriter::text(std::u16string_view text, const CodeState& state) {
  while (!text.empty() && is_forbidden(text.front())) text.remove_prefix(1);
  if (text.empty() || is_left_out(state)) return;
  enter(in_html(state), text.front() != u' ' && text.front() != u'\t');
  if (is_line_empty_ && text.front() == u'\uFEFF') {
    // In front of all other text it would be taken for a byte order mark.
    append_visible(u"&#xFEFF;");
    text.remove_prefix(1);
  }
  is_line_empty_ = false;
  append(text);
}

void HtmlWriter::line_break(const CodeState& state) {
  release_blanks(false);
  const CodeState next = is_left_out(state) ? state_ : in_html(state);
  if (!options_.paragraphs) {
    enter(next, false);
    out_.append(u"<br>");
  } else {
    // A break at the end of a paragraph is not seen, but it has the format, and fills a paragraph
    // that would have no height.
    if (is_line_empty_ || next != state_) {
      enter(next, false);
      out_.append(u"<br>");
    }
    close_from(0);
    out_.append(u"</p>");
    is_in_paragraph_ = false;
  }
  would_collapse_ = true;
  is_line_empty_ = true;
}

void HtmlWriter::finish() {
  release_blanks(false);
  if (wrote_paragraph_ && !is_in_paragraph_) {
    enter({}, false);
    out_.append(u"<br>");
  }
  close_from(0);
  if (is_in_paragraph_) out_.append(u"</p>");
  if (options_.whole_document) out_.append(u"</body>\n</html>\n");
}

void HtmlWriter::enter(const CodeState& state, bool text_goes_on) {
  if (options_.paragraphs && !is_in_paragraph_) {
    out_.append(u"<p>");
    is_in_paragraph_ = true;
    wrote_paragraph_ = true;
  }
  if (state == state_) return;
  release_blanks(text_goes_on);
  change(state);
}

void HtmlWriter::change(const CodeState& state) {
  unsigned wanted = state.attributes;
  if (state.color != 0) wanted |= 1U << color_element;
  if (state.font != 0) wanted |= 1U << font_element;
  unsigned staying = wanted;
  if (state.color != state_.color) staying &= ~(1U << color_element);
  if (state.font != state_.font) staying &= ~(1U << font_element);
  std::size_t kept = 0;
  while (kept < depth_ && (staying >> open_[kept] & 1U) != 0) {
    wanted &= ~(1U << open_[kept]);
    ++kept;
  }
  close_from(kept);
  for (; wanted != 0; wanted &= wanted - 1) {
    const auto element = static_cast<std::uint8_t>(std::countr_zero(wanted));
    out_.append(tag_of(element, state));
    open_[depth_++] = element;
  }
  state_ = state;
}

void HtmlWriter::close_from(std::size_t depth) {
  while (depth_ > depth) {
    const std::size_t element = open_[--depth_];
    out_.append(element < attribute_count ? attribute_tags[element].end : end_of_span);
  }
  if (depth == 0) state_ = {};
}

std::u16string_view HtmlWriter::tag_of(std::size_t element, const CodeState& state) const {
  if (element == color_element) return color_tags_[static_cast<std::size_t>(state.color)];
  if (element == font_element) return font_tags_[static_cast<std::size_t>(state.font)];
  return attribute_tags[element].begin;
}

void HtmlWriter::append(std::u16string_view text) {
  constexpr std::size_t most_held_blanks = 4096;
  for (std::size_t at = 0; at < text.size();) {
    if (text[at] == u' ') {
      if (++held_blanks_ == most_held_blanks) release_blanks(false);
      ++at;
      continue;
    }
    const std::size_t end = end_of_copy(text, at);
    if (end == at) {
      at += append_special(text.substr(at));
      continue;
    }
    const std::size_t blanks = text[end - 1] == u' ' ? 1 : 0;
    append_visible(text.substr(at, end - at - blanks));
    held_blanks_ = blanks;
    at = end;
  }
}

/// Writes the character or tabs that the text begins with, and returns their length.
std::size_t HtmlWriter::append_special(std::u16string_view text) {
  const char16_t first = text.front();
  if (first == u'\t') {
    const std::size_t count = std::min(text.find_first_not_of(u'\t'), text.size());
    append_tabs(count);
    return count;
  }
  if (is_forbidden(first)) return 1;
  if (is_pair_at(text, 0)) {
    append_visible(text.substr(0, 2));
    return 2;
  }
  append_visible({});
  append_escaped(out_, (first & 0xF800U) == 0xD800U ? u'\uFFFD' : first);
  return 1;
}

void HtmlWriter::append_visible(std::u16string_view text) {
  if (held_blanks_ > 0) release_blanks(true);
  out_.append(text);
  would_collapse_ = false;
}

void HtmlWriter::append_tabs(std::size_t count) {
  release_blanks(false);
  out_.append(tabs_span).append(count, u'\t').append(end_of_span);
  would_collapse_ = false;
}

void HtmlWriter::release_blanks(bool text_goes_on) {
  if (held_blanks_ == 0) return;
  // The last one before text is plain, so that the line may be broken there.
  const bool has_plain = text_goes_on && !(would_collapse_ && held_blanks_ == 1);
  const std::size_t marked = held_blanks_ - (has_plain ? 1 : 0);
  if (marked > 0) {
    out_.append(blanks_span);
    for (std::size_t i = 0; i < marked; ++i) out_.append(u"&nbsp;");
    out_.append(end_of_span);
  }
  if (has_plain) out_.push_back(u' ');
  would_collapse_ = has_plain;
  held_blanks_ = 0;
}

}  // namespace qel::convert
