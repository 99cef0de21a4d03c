#include "TreeReader.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <cstring>
#include <string_view>
#include <utility>

#include "Ascii.h"
#include "qel/base/Records.h"
#include "qel/base/Utf8.h"
#include "qel/richtext/FieldInstructions.h"

namespace qel::html {
namespace {

constexpr std::u16string_view rule = u"\u2014\u2014\u2014";

std::optional<int> parse_integer(std::string_view text) {
  text = trimmed(text);
  int number = 0;
  const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), number);
  if (error != std::errc()) return {};
  return number;
}

/// The input was made valid, and so are characters by their numbers.
std::u16string characters_of(std::string_view text) {
  return from_utf8(text, [](std::uint8_t byte) { return char16_t{byte}; });
}

std::u16string roman(int number) {
  constexpr std::array<std::pair<int, std::u16string_view>, 13> digits = {{{1000, u"m"},
                                                                           {900, u"cm"},
                                                                           {500, u"d"},
                                                                           {400, u"cd"},
                                                                           {100, u"c"},
                                                                           {90, u"xc"},
                                                                           {50, u"l"},
                                                                           {40, u"xl"},
                                                                           {10, u"x"},
                                                                           {9, u"ix"},
                                                                           {5, u"v"},
                                                                           {4, u"iv"},
                                                                           {1, u"i"}}};
  std::u16string text;
  for (const auto& [value, digit] : digits) {
    for (; number >= value; number -= value) text.append(digit);
  }
  return text;
}

/// a to z, aa and on.
std::u16string letters(int number) {
  std::u16string text;
  for (; number > 0; number = (number - 1) / 26) {
    text.insert(text.begin(), static_cast<char16_t>(u'a' + (number - 1) % 26));
  }
  return text;
}

std::u16string in_capitals(std::u16string text) {
  for (char16_t& c : text) c = static_cast<char16_t>(c - u'a' + u'A');
  return text;
}

/// The style of a list for its "type".
std::string_view style_of_type(std::string_view type) {
  if (type == "a") return "lower-alpha";
  if (type == "A") return "upper-alpha";
  if (type == "i") return "lower-roman";
  if (type == "I") return "upper-roman";
  return type;
}

std::u16string number_in(std::string_view style, int number) {
  const bool is_roman = number > 0 && number < 4000;
  if (equals(style, "lower-roman") && is_roman) return roman(number);
  if (equals(style, "upper-roman") && is_roman) return in_capitals(roman(number));
  const bool is_lower = equals(style, "lower-alpha") || equals(style, "lower-latin");
  const bool is_upper = equals(style, "upper-alpha") || equals(style, "upper-latin");
  if (is_lower && number > 0) return letters(number);
  if (is_upper && number > 0) return in_capitals(letters(number));
  return records::from_integer(number);
}

/// The mark of a list item; empty for none.
std::u16string mark_of(std::string_view style, bool is_ordered, int number) {
  if (equals(style, "none")) return {};
  if (equals(style, "disc") || (style.empty() && !is_ordered)) return u"\u2022";
  if (equals(style, "circle")) return u"\u25E6";
  if (equals(style, "square")) return u"\u25AA";
  const bool is_number = is_ordered || begins_with(style, "lower") || begins_with(style, "upper") ||
                         begins_with(style, "decimal");
  return is_number ? number_in(style, number).append(u".") : u"\u2022";
}

bool is_list(GumboTag tag) {
  return tag == GUMBO_TAG_UL || tag == GUMBO_TAG_OL || tag == GUMBO_TAG_DIR ||
         tag == GUMBO_TAG_MENU;
}

/// Characters of text that is not displayed.
std::size_t length_of_text(const GumboElement& element) {
  std::size_t length = 0;
  std::vector<const GumboElement*> left = {&element};
  while (!left.empty()) {
    const GumboVector& children = left.back()->children;
    left.pop_back();
    for (unsigned i = 0; i < children.length; ++i) {
      const auto& child = *static_cast<const GumboNode*>(children.data[i]);
      if (child.type == GUMBO_NODE_ELEMENT) left.push_back(&child.v.element);
      if (child.type == GUMBO_NODE_TEXT) length += characters_of(child.v.text.text).size();
    }
  }
  return length;
}

bool is_cell(GumboTag tag) { return tag == GUMBO_TAG_TD || tag == GUMBO_TAG_TH; }

}  // namespace

TreeReader::TreeReader(const StyleSheet& sheet, const richtext::CharFormat& base,
                       richtext::DocumentSink& sink)
    : rules_(sheet, base), sink_(sink), lines_(sink) {
  open_.emplace_back();
  open_.back().style.format = base;
}

void TreeReader::read(const GumboNode& root) {
  enter(root.v.element);
  while (open_.size() > 1) {
    Frame& frame = open_.back();
    const GumboVector& children = frame.element->children;
    if (frame.next == children.length) {
      leave();
      continue;
    }
    const auto& child = *static_cast<const GumboNode*>(children.data[frame.next++]);
    if (child.type == GUMBO_NODE_ELEMENT) {
      enter(child.v.element);
    } else if (child.type == GUMBO_NODE_TEXT || child.type == GUMBO_NODE_WHITESPACE) {
      text(child.v.text.text);
    }
  }
  lines_.finish();
}

void TreeReader::enter(const GumboElement& element) {
  Style style = rules_.style_of(element, open_.back().style);
  if (style.is_hidden) {
    dropped_.hidden += length_of_text(element);
    return;
  }
  if (element.tag == GUMBO_TAG_BR) {
    if (attribute(element, "class") != "Apple-interchange-newline") {
      lines_.line_break(text_style(style));
    }
    return;
  }
  Frame frame;
  frame.element = &element;
  if (is_list(element.tag)) {
    ++style.list_depth;
    style.list_style = style_of_type(attribute(element, "type"));
    const Declarations declarations(attribute(element, "style"));
    std::string_view own = declarations[Property::list_style];
    if (!own.empty()) style.list_style = take_word(own);
    frame.number = parse_integer(attribute(element, "start")).value_or(1);
  }
  if (style.is_block) lines_.block_edge();
  if (element.tag == GUMBO_TAG_LI) begin_item(open_.back(), element, style);
  if (element.tag == GUMBO_TAG_TR) frame.outer_row_has_content = lines_.begin_row();
  if (is_cell(element.tag)) lines_.begin_cell(!std::exchange(open_.back().has_cell, true));
  if (element.tag == GUMBO_TAG_HR) lines_.text(rule, text_style(style));
  frame.style = std::move(style);
  open_.push_back(std::move(frame));
  count(element);
  if (element.tag == GUMBO_TAG_SPAN) begin_link(element);
  if (element.tag == GUMBO_TAG_IMG) text(attribute(element, "alt").data());
}

void TreeReader::count(const GumboElement& element) {
  if (element.tag == GUMBO_TAG_IMG) ++dropped_.pictures;
  if (element.tag == GUMBO_TAG_TR) ++dropped_.rows;
  if (is_cell(element.tag)) ++dropped_.cells;
}

void TreeReader::begin_link(const GumboElement& element) {
  const std::string_view address = trimmed(attribute(element, "href"));
  if (address.empty() || address.starts_with('#')) return;
  end_link();
  link_ = {open_.size(), characters_of(address), {}};
}

void TreeReader::end_link() {
  if (!link_) return;
  constexpr std::u16string_view blanks = u" \t\r\n\f";
  std::u16string_view shown = link_->shown;
  shown.remove_prefix(std::min(shown.find_first_not_of(blanks), shown.size()));
  shown = shown.substr(0, shown.find_last_not_of(blanks) + 1);
  if (!richtext::says_address(shown, link_->address)) ++dropped_.links;
  link_.reset();
}

void TreeReader::begin_item(Frame& list, const GumboElement& item, Style& style) {
  const bool is_ordered = list.element != nullptr && list.element->tag == GUMBO_TAG_OL;
  list.number = parse_integer(attribute(item, "value")).value_or(list.number);
  std::u16string mark = mark_of(style.list_style, is_ordered, list.number++);
  if (mark.empty()) return;
  const int indentation = std::max(style.list_depth - 1, 0);
  mark.insert(0, static_cast<std::size_t>(indentation), u'\t');
  mark.push_back(u'\t');
  lines_.begin_item(std::move(mark), text_style(style).format);
}

void TreeReader::leave() {
  const Frame& frame = open_.back();
  const GumboTag tag = frame.element->tag;
  if (tag == GUMBO_TAG_LI) lines_.end_item();
  if (tag == GUMBO_TAG_TR) lines_.end_row(frame.outer_row_has_content);
  if (frame.style.is_block) lines_.block_edge();
  if (link_ && link_->depth == open_.size()) end_link();
  open_.pop_back();
}

void TreeReader::text(const char* text) {
  if (text == nullptr) return;
  const std::u16string characters = characters_of(text);
  if (link_ && link_->shown.size() <= link_->address.size()) link_->shown.append(characters);
  lines_.text(characters, text_style(open_.back().style));
}

LineWriter::TextStyle TreeReader::text_style(Style& style) {
  if (!style.format_id) style.format_id = sink_.intern(style.format);
  return {*style.format_id, style.alignment, style.keeps_blanks, style.keeps_lines,
          style.has_marked_blanks};
}

}  // namespace qel::html
