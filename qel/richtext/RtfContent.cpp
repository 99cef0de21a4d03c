#include "qel/richtext/RtfContent.h"

#include <algorithm>
#include <utility>

#include "qel/richtext/CodePage.h"
#include "qel/richtext/FieldInstructions.h"

namespace qel::richtext {
namespace {

/// Characters that the mark of a list item, the instruction of a symbol or a link, or a property
/// does not exceed.
constexpr std::size_t enough_instruction = 4000;

void append_some(std::u16string& out, std::u16string_view text) {
  out.append(text.substr(0, enough_instruction - std::min(out.size(), enough_instruction)));
}

}  // namespace

void RtfContent::open_group() {
  flush_bytes();
  replacements_due_ = 0;
  properties_.open_group();
}

void RtfContent::close_group() {
  flush_bytes();
  replacements_due_ = 0;
  const Destination was = destination();
  const Alignment alignment = properties_.state().alignment;
  properties_.close_group();
  while (!asides_.empty() && asides_.size() > properties_.state().asides) end_aside(alignment);
  if (was != destination()) end_destination(was, alignment);
}

void RtfContent::finish() {
  flush_bytes();
  while (!asides_.empty()) end_aside(properties_.state().alignment);
  sink_.finish(properties_.last_alignment());
}

void RtfContent::do_word(const KnownWord& word, Parameter parameter, std::uint64_t token) {
  flush_bytes();
  if (!sets_property(word.action)) return add_word(word, parameter);
  const bool was_in_shape = destination() == Destination::shape;
  properties_.set(word, parameter, token);
  if (was_in_shape && properties_.is_text()) {
    add_alternative_text();
    separate_lines(properties_.state().alignment);
  }
}

void RtfContent::add_word(const KnownWord& word, Parameter parameter) {
  switch (word.action) {
    case WordAction::add_character:
      return add_character(static_cast<char16_t>(word.argument));
    case WordAction::add_unicode:
      return add_unicode(parameter);
    case WordAction::add_break:
      if (word.argument == 0 || last_ != u'\0') add_break();
      return;
    case WordAction::end_cell:
      return end_cell();
    case WordAction::end_row:
      return end_row();
    case WordAction::begin_aside:
      return begin_aside(static_cast<Aside>(word.argument));
    case WordAction::begin_object:
      return begin_object();
    case WordAction::begin_picture:
      return begin_picture();
    case WordAction::begin_picture_properties:
      return begin_picture_properties();
    case WordAction::begin_property_part:
      return begin_property_part(static_cast<Destination>(word.argument));
    default:
      return;
  }
}

void RtfContent::end_destination(Destination destination, Alignment alignment) {
  switch (destination) {
    case Destination::text:
      if (this->destination() == Destination::shape) separate_lines(alignment);
      return;
    case Destination::skipped:
      skipped_ = nullptr;
      return;
    case Destination::list_text:
      return add_list_text();
    case Destination::field_instruction:
      return add_field();
    case Destination::property_value:
      return end_property();
    case Destination::shape:
    case Destination::picture:
      return add_alternative_text();
    default:
      return;
  }
}

void RtfContent::add_character(char16_t character) {
  if (!takes_replacement() && !completes_character(character)) add_unit(character);
}

void RtfContent::add_unicode(Parameter code) {
  if (!code.given) return;
  flush_bytes();
  replacements_due_ = properties_.state().replacement_length;
  if (code.value > 0xFFFF && code.value <= 0x10FFFF) {
    const std::int32_t offset = code.value - 0x10000;
    add_unit(static_cast<char16_t>(0xD800 + (offset >> 10)));
    add_unit(static_cast<char16_t>(0xDC00 + (offset & 0x3FF)));
    return;
  }
  const auto unit = static_cast<char16_t>(code.value);
  if (unit >= 0xF000 && unit <= 0xF0FF) {
    add_coded({&unit, 1});
  } else {
    add_unit(unit);
  }
}

void RtfContent::add_break() {
  flush_bytes();
  if (!properties_.is_shown() || (!asides_.empty() && break_in_aside())) return;
  sink_.paragraph_break(properties_.format(), properties_.state().alignment);
  properties_.note_shown();
  last_ = u'\0';
  line_end_.reset();
}

void RtfContent::end_cell() {
  if (properties_.is_shown()) ++counts_.cells;
  add_unit(u'\t');
}

void RtfContent::end_row() {
  if (properties_.is_shown()) ++counts_.rows;
  add_break();
}

/// A text box stands on lines of its own, whether or not its text ends in a break.
void RtfContent::separate_lines(Alignment alignment) {
  if (last_ != u'\0' && !line_end_) line_end_ = {properties_.format(), alignment};
}

void RtfContent::add_line_end() {
  sink_.paragraph_break(line_end_->format, line_end_->alignment);
  line_end_.reset();
  last_ = u'\0';
}

void RtfContent::add_text(std::u16string_view text) {
  if (text.empty()) return;
  flush_bytes();
  if (!properties_.is_shown()) return add_unshown(text);
  if (!asides_.empty()) text = enter_asides(text);
  if (text.empty()) return;
  show(text, properties_.format());
  properties_.note_shown();
}

void RtfContent::add_unshown(std::u16string_view text) {
  if (!properties_.is_text()) return add_table_text(text);
  const bool is_hidden = (properties_.state().character.flags & CharState::hidden) != 0;
  (is_hidden ? counts_.hidden : counts_.deleted) += text.size();
}

/// The usual case, without any detour.
void RtfContent::add_coded_ascii(std::string_view text) {
  if (!properties_.is_shown() || !asides_.empty() || properties_.symbol_font() != nullptr) {
    return add_coded(std::u16string(text.begin(), text.end()));
  }
  if (text.empty()) return;
  flush_bytes();
  if (line_end_) add_line_end();
  sink_.ascii(text, properties_.format());
  last_ = static_cast<char16_t>(text.back());
  properties_.note_shown();
}

void RtfContent::add_coded(std::u16string_view text) {
  const bool is_seen = properties_.is_shown() || destination() == Destination::list_text;
  const SymbolFont* const font = is_seen ? properties_.symbol_font() : nullptr;
  if (font != nullptr) {
    add_text(font->in_unicode(text));
  } else {
    add_text(text);
  }
}

/// Drops NUL, which ends a text for many who may get to see it.
void RtfContent::add_unit(char16_t unit) {
  if (unit == u'\0') return;
  if (unit == u'\r' || unit == u'\n') {
    add_break();
  } else {
    add_text({&unit, 1});
  }
}

void RtfContent::add_byte(std::uint8_t byte) {
  if (destination() == Destination::skipped) return note_skipped();
  const CodePage& code_page = properties_.code_page();
  if (pending_bytes_.empty() && code_page.length_from(byte) == 1) {
    add_decoded(code_page.decode_single(byte));
    return;
  }
  pending_bytes_.push_back(static_cast<char>(byte));
  if (code_page.may_go_on(pending_bytes_)) return;
  const std::string bytes = std::exchange(pending_bytes_, {});
  std::u16string text = code_page.decode(bytes);
  if (text.empty()) text = in_western(bytes);
  for (const char16_t unit : text) add_decoded(unit);
}

bool RtfContent::completes_pending(char16_t unit) {
  if (unit >= 0x80) return false;
  const auto byte = static_cast<std::uint8_t>(unit);
  const std::string bytes = pending_bytes_ + static_cast<char>(byte);
  const CodePage& code_page = properties_.code_page();
  if (!code_page.has(bytes) && !code_page.may_go_on(bytes)) return false;
  add_byte(byte);
  return true;
}

void RtfContent::add_decoded(char16_t unit) {
  if (unit < u' ') {
    add_unit(unit);
  } else if (destination() == Destination::font_table) {
    properties_.fonts().add_to_name({&unit, 1});  // an escaped semicolon does not end the name
  } else {
    add_coded({&unit, 1});
  }
}

void RtfContent::give_up_bytes() {
  for (const char16_t unit : in_western(std::exchange(pending_bytes_, {}))) add_unit(unit);
}

/// The characters of bytes that the code page does not have.
std::u16string RtfContent::in_western(std::string_view bytes) {
  if (properties_.is_shown()) ++counts_.unknown;
  return decode_each_western(bytes);
}

void RtfContent::add_list_text() {
  std::u16string mark = std::exchange(list_text_, {});
  if (mark.find_first_not_of(u" \t\u00A0") == std::u16string::npos) return;
  // The bullets of symbol fonts are not bullets in any other font.
  std::replace_if(
      mark.begin(), mark.end(),
      [](char16_t c) { return c == u'\u00B7' || (c >= 0xF000 && c <= 0xF0FF); }, u'\u2022');
  add_text(mark);
}

void RtfContent::add_field() {
  const std::u16string instruction = std::exchange(instruction_, {});
  const std::u16string symbol = symbol_of_field(instruction);
  if (symbol.empty()) return begin_link(address_of_field(instruction));
  add_text(symbol);
  properties_.note_field_shown();
}

void RtfContent::add_table_text(std::u16string_view text) {
  if (destination() == Destination::color_table) properties_.colors().read_text(text);
  if (destination() == Destination::font_table) properties_.fonts().read_text(text);
  if (destination() == Destination::list_text) append_some(list_text_, text);
  if (destination() == Destination::field_instruction) append_some(instruction_, text);
  if (destination() == Destination::property_name) append_some(property_name_, text);
  if (destination() == Destination::property_value) append_some(property_value_, text);
}

}  // namespace qel::richtext
