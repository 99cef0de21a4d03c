#include "qel/convert/HtmlWriter.h"

#include <algorithm>
#include <bit>
#include <type_traits>
#include <utility>

#include "qel/base/Ascii.h"
#include "qel/base/Utf16.h"
#include "qel/base/Utf8.h"
#include "qel/convert/HtmlCharacters.h"
#include "qel/convert/HtmlTags.h"
#include "qel/model/ReservedColors.h"

namespace qel::convert {
namespace {

using style_codes::CodeState;
/// Attributes, colour and font in one number.
using Format = std::uint32_t;

namespace elements = html_elements;
constexpr unsigned attribute_bits = (1U << elements::attribute_count) - 1;

template <class Char>
constexpr std::array<std::basic_string_view<Char>, elements::count> end_tags = {
    {ascii<Char, "</b>">, ascii<Char, "</i>">, ascii<Char, "</u>">, ascii<Char, "</span>">,
     ascii<Char, "</s>">, ascii<Char, "</sub>">, ascii<Char, "</sup>">, ascii<Char, "</span>">,
     ascii<Char, "</span>">}};

template <class Char>
constexpr auto end_of_span = ascii<Char, "</span>">;
// Browsers write and understand these two marks.
template <class Char>
constexpr auto blanks_span = ascii<Char, "<span class=\"Apple-converted-space\">">;
template <class Char>
constexpr auto tabs_span = ascii<Char, "<span class=\"Apple-tab-span\" style=\"white-space:pre\">">;

// What cannot be written as an escape in a literal of either kind.
template <class Char>
constexpr std::basic_string_view<Char> byte_order_mark;
template <>
constexpr std::u16string_view byte_order_mark<char16_t> = u"\uFEFF";
template <>
constexpr std::string_view byte_order_mark<char> = "\xEF\xBB\xBF";

/// Writes a character of one unit, with an entity where it needs one.
void append_escaped(std::u16string& out, char16_t c) {
  const std::u16string_view entity = entity_of(c);
  if (!entity.empty()) {
    out.append(entity);
  } else {
    out.push_back((c & 0xF800U) == 0xD800U ? u'\uFFFD' : c);
  }
}
void append_escaped(std::string& out, char c) {
  const std::u16string_view entity = entity_of(static_cast<unsigned char>(c));
  if (entity.empty()) {
    out.push_back(c);
  } else {
    append_utf8(out, entity);
  }
}

/// The length of the surrogate pair or of the sequence at the beginning of the text; 0 where there
/// is none.
std::size_t whole_length(std::u16string_view text) { return is_pair_at(text, 0) ? 2 : 0; }
std::size_t whole_length(std::string_view text) { return text.starts_with('\xC2') ? 2 : 0; }

/// Whether it takes a closer look to tell what a text with this unit at its beginning begins with.
template <class Char>
bool is_rare(Char first) {
  const auto unit = static_cast<std::make_unsigned_t<Char>>(first);
  return unit < ' ' || unit >= 0x7F;
}

constexpr unsigned color_shift = 8;
constexpr unsigned font_shift = 12;
constexpr unsigned index_mask = 0xF;
unsigned color_of(Format format) { return format >> color_shift & index_mask; }
unsigned font_of(Format format) { return format >> font_shift & index_mask; }

/// The state as HTML shows it, in one number. An index that no table has stands for the default.
Format shown(const CodeState& state) {
  const auto index = [](std::int16_t number) {
    const auto known = static_cast<std::uint16_t>(number);
    return known < elements::index_count ? unsigned{known} : 0U;
  };
  const unsigned attributes = state.attributes & attribute_bits;
  const bool is_raised = (attributes & style_codes::superscript_bit) != 0;
  return (is_raised ? attributes & ~unsigned{style_codes::subscript_bit} : attributes) |
         index(state.color) << color_shift | index(state.font) << font_shift;
}

/// The elements that show a format, as bits.
unsigned elements_of(Format format) {
  return (format & attribute_bits) | unsigned{color_of(format) != 0} << elements::color |
         unsigned{font_of(format) != 0} << elements::font;
}

/// The place of an element's tag among all of them.
std::size_t slot_of(std::size_t element, Format format) {
  if (element < elements::color) return element;
  return element == elements::color ? elements::first_color_tag + color_of(format)
                                    : elements::first_font_tag + font_of(format);
}

}  // namespace

template <class Char>
BasicHtmlWriter<Char>::BasicHtmlWriter(std::basic_string<Char>& out, const QELIndexFonts& fonts,
                                       const QELIndexColors& colors, const HtmlOptions& options)
    : BasicHtmlWriter(out, std::make_shared<const HtmlTags<Char>>(fonts, colors, options),
                      options) {}

template <class Char>
BasicHtmlWriter<Char>::BasicHtmlWriter(std::basic_string<Char>& out,
                                       std::shared_ptr<const HtmlTags<Char>> tags,
                                       const HtmlOptions& options)
    : out_(out), options_(options), tags_(std::move(tags)) {
  out_.append(tags_->head);
  if (options.without_ignored) left_out_ |= 1U << unsigned{ignored_color};
  if (options.without_hidden) left_out_ |= 1U << unsigned{hidden_color};
  if (options.without_note) left_out_ |= 1U << unsigned{note_color};
}

template <class Char>
void BasicHtmlWriter<Char>::text(View text, const CodeState& state) {
  const Format format = in_html(state);
  if (is_left_out(format)) return;
  if (is_rare(text.front())) {
    text = without_forbidden(text);
    if (text.empty()) return;
  }
  enter(format, text.front() != ' ' && text.front() != '\t');
  if (is_line_empty_) {
    is_line_empty_ = false;
    text = without_mark(text);
  }
  append(text);
}

template <class Char>
auto BasicHtmlWriter<Char>::in_html(const CodeState& state) const -> Format {
  const Format format = shown(state);
  const bool has_font = (tags_->nameless_fonts >> font_of(format) & 1U) == 0;
  return has_font ? format : format & ~(index_mask << font_shift);
}

template <class Char>
bool BasicHtmlWriter<Char>::is_left_out(Format format) const {
  return (left_out_ >> color_of(format) & 1U) != 0;
}

/// The text without the control characters at its beginning.
template <class Char>
auto BasicHtmlWriter<Char>::without_forbidden(View text) -> View {
  while (!text.empty()) {
    const std::size_t length = forbidden_length(text);
    if (length == 0) break;
    text.remove_prefix(length);
  }
  return text;
}

/// Writes a byte order mark, which in front of all other text would be taken for what it is there.
template <class Char>
auto BasicHtmlWriter<Char>::without_mark(View text) -> View {
  if (!text.starts_with(byte_order_mark<Char>)) return text;
  append_visible(ascii<Char, "&#xFEFF;">);
  return text.substr(byte_order_mark<Char>.size());
}

template <class Char>
void BasicHtmlWriter<Char>::line_break(const CodeState& state) {
  release(false);
  const Format format = in_html(state);
  const Format next = is_left_out(format) ? format_ : format;
  if (!options_.paragraphs) {
    enter(next, false);
    out_.append(ascii<Char, "<br>">);
  } else {
    // A break at the end of a paragraph is not seen, but it has the format, and fills a paragraph
    // that would have no height.
    if (is_line_empty_ || next != format_) {
      enter(next, false);
      out_.append(ascii<Char, "<br>">);
    }
    close_from(0);
    out_.append(ascii<Char, "</p>">);
    is_in_paragraph_ = false;
  }
  would_collapse_ = true;
  is_line_empty_ = true;
}

template <class Char>
void BasicHtmlWriter<Char>::finish() {
  release(false);
  if (wrote_paragraph_ && !is_in_paragraph_) {
    enter(0, false);
    out_.append(ascii<Char, "<br>">);
  }
  close_from(0);
  if (is_in_paragraph_) out_.append(ascii<Char, "</p>">);
  if (options_.whole_document) out_.append(ascii<Char, "</body>\n</html>\n">);
}

template <class Char>
void BasicHtmlWriter<Char>::enter(Format format, bool text_goes_on) {
  if (options_.paragraphs && !is_in_paragraph_) {
    out_.append(ascii<Char, "<p>">);
    is_in_paragraph_ = true;
    wrote_paragraph_ = true;
  }
  if (format == format_) return;
  release(text_goes_on);
  change(format);
}

template <class Char>
void BasicHtmlWriter<Char>::change(Format format) {
  unsigned wanted = elements_of(format);
  unsigned staying = wanted;
  if (color_of(format) != color_of(format_)) staying &= ~(1U << elements::color);
  if (font_of(format) != font_of(format_)) staying &= ~(1U << elements::font);
  std::size_t kept = 0;
  while (kept < depth_ && (staying >> open_[kept] & 1U) != 0) {
    wanted &= ~(1U << open_[kept]);
    ++kept;
  }
  close_from(kept);
  for (; wanted != 0; wanted &= wanted - 1) {
    const auto element = static_cast<std::size_t>(std::countr_zero(wanted));
    out_.append(tags_->begin[slot_of(element, format)]);
    open_[depth_++] = static_cast<std::uint8_t>(element);
  }
  format_ = format;
}

template <class Char>
void BasicHtmlWriter<Char>::close_from(std::size_t depth) {
  while (depth_ > depth) out_.append(end_tags<Char>[open_[--depth_]]);
  if (depth == 0) format_ = 0;
}

template <class Char>
void BasicHtmlWriter<Char>::append(View text) {
  for (std::size_t at = 0; at < text.size();) {
    const bool is_blank = text[at] == ' ';
    // Only a first blank is a plain one.
    const bool may_be_plain = held_blanks_ == 0 && !would_collapse_;
    const std::size_t end = is_blank && !may_be_plain ? at : end_of_copy(text, at);
    if (end > at + is_blank) {
      const std::size_t blanks = text[end - 1] == ' ' ? 1 : 0;
      append_visible(text.substr(at, end - at - blanks));
      held_blanks_ = blanks;
      at = end;
    } else if (is_blank) {
      hold_blank();
      ++at;
    } else {
      at += append_special(text.substr(at));
    }
  }
}

template <class Char>
void BasicHtmlWriter<Char>::hold_blank() {
  if (is_in_tabs_) end_tabs();
  constexpr std::size_t most_held_blanks = 4096;
  if (++held_blanks_ == most_held_blanks) release(false);
}

/// Writes the character or tabs that the text begins with, and returns their length.
template <class Char>
std::size_t BasicHtmlWriter<Char>::append_special(View text) {
  const Char first = text.front();
  if (first == '\t') {
    const std::size_t count = std::min(text.find_first_not_of('\t'), text.size());
    append_tabs(count);
    return count;
  }
  if (const std::size_t length = forbidden_length(text)) return length;
  if (const std::size_t length = whole_length(text)) {
    append_visible(text.substr(0, length));
    return length;
  }
  append_visible({});
  append_escaped(out_, first);
  return 1;
}

template <class Char>
void BasicHtmlWriter<Char>::append_visible(View text) {
  if (held_blanks_ > 0 || is_in_tabs_) release(true);
  out_.append(text);
  would_collapse_ = false;
}

template <class Char>
void BasicHtmlWriter<Char>::append_tabs(std::size_t count) {
  if (!is_in_tabs_) {
    release(false);
    out_.append(tabs_span<Char>);
    is_in_tabs_ = true;
    would_collapse_ = false;
  }
  out_.append(count, Char{'\t'});
}

template <class Char>
void BasicHtmlWriter<Char>::end_tabs() {
  out_.append(end_of_span<Char>);
  is_in_tabs_ = false;
}

template <class Char>
void BasicHtmlWriter<Char>::release(bool text_goes_on) {
  if (is_in_tabs_) {
    end_tabs();
  } else if (held_blanks_ == 1 && text_goes_on && !would_collapse_) {
    out_.push_back(' ');
    would_collapse_ = true;
    held_blanks_ = 0;
  } else if (held_blanks_ > 0) {
    write_blanks(text_goes_on);
  }
}

template <class Char>
void BasicHtmlWriter<Char>::write_blanks(bool text_goes_on) {
  // The last one before text is plain, so that the line may be broken there.
  const bool has_plain = text_goes_on && !(would_collapse_ && held_blanks_ == 1);
  const std::size_t marked = held_blanks_ - (has_plain ? 1 : 0);
  if (marked > 0) {
    out_.append(blanks_span<Char>);
    for (std::size_t i = 0; i < marked; ++i) out_.append(ascii<Char, "&nbsp;">);
    out_.append(end_of_span<Char>);
  }
  if (has_plain) out_.push_back(' ');
  would_collapse_ = has_plain;
  held_blanks_ = 0;
}

template class BasicHtmlWriter<char>;
template class BasicHtmlWriter<char16_t>;

}  // namespace qel::convert
