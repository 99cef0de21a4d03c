#include "qel/richtext/RtfReader.h"

#include <algorithm>
#include <cstddef>
#include <optional>
#include <string>
#include <utility>

#include "qel/richtext/CodePage.h"
#include "qel/richtext/FieldInstructions.h"
#include "qel/richtext/RtfProperties.h"
#include "qel/richtext/RtfState.h"
#include "qel/richtext/RtfTokens.h"
#include "qel/richtext/RtfWords.h"

namespace qel::richtext {
namespace {

/// Characters that the mark of a list item, the instruction of a symbol or a link, or a property
/// does not exceed.
constexpr std::size_t enough_instruction = 4000;

void append_some(std::u16string& out, std::u16string_view text) {
  out.append(text.substr(0, enough_instruction - std::min(out.size(), enough_instruction)));
}

bool begins_destination(const KnownWord* word) {
  if (word == nullptr) return false;
  const WordAction action = word->action;
  return action == WordAction::set_destination || action == WordAction::begin_text_part ||
         (action >= WordAction::begin_aside && action <= WordAction::begin_picture_properties);
}

}  // namespace

std::size_t RtfReader::read(std::u16string_view rtf, bool is_last) {
  scanner_ = RtfScanner(rtf, units_ == Units::bytes ? RtfScanner::last_ascii : RtfScanner::last);
  is_last_ = is_last;
  is_incomplete_ = false;
  if (!is_begun_ && extent_ == Extent::document) scanner_.skip(rtf.find(u'{'));
  is_begun_ = is_begun_ || !scanner_.at_end();
  if (is_word_cut_) skip_rest_of_word();
  skip_binary_data();
  while (!scanner_.at_end() && !is_closed_ && !is_incomplete_) read_token();
  return scanner_.position();
}

/// Of a word that is longer than any, the beginning has been read.
void RtfReader::skip_rest_of_word() {
  const auto is_in_word = [](char16_t c) {
    return (c >= u'a' && c <= u'z') || (c >= u'A' && c <= u'Z') || (c >= u'0' && c <= u'9') ||
           c == u'-';
  };
  while (!scanner_.at_end() && is_in_word(scanner_.peek())) scanner_.skip(1);
  if (scanner_.at_end()) return;
  if (scanner_.peek() == u' ') scanner_.skip(1);
  is_word_cut_ = false;
}

void RtfReader::finish() {
  flush_bytes();
  while (!asides_.empty()) end_aside(properties_.state().alignment);
  sink_.finish(properties_.last_alignment());
}

void RtfReader::read_token() {
  const bool at_start = std::exchange(at_group_start_, false);
  token_ = scanner_.position();
  ++tokens_;
  switch (scanner_.peek()) {
    case u'{':
      open_group();
      at_group_start_ = true;
      break;
    case u'}':
      close_group();
      break;
    case u'\\':
      read_control(at_start);
      break;
    case u'\t':
      scanner_.skip(1);
      add_character(u'\t');
      break;
    case u'\r':
    case u'\n':
    case u'\0':
      scanner_.skip(1);
      at_group_start_ = at_start;
      break;
    default:
      read_text();
  }
}

void RtfReader::read_text() {
  const bool is_dropped = !properties_.is_text() &&
                          (destination() == Destination::skipped || has_text_parts(destination()));
  if (is_dropped) {
    scanner_.skip_plain_text();
    note_skipped();
    return;
  }
  if (takes_replacement()) {
    scanner_.skip(1);
    return;
  }
  if (units_ == Units::bytes && scanner_.peek() >= 0x80) {
    read_raw_byte();
    return;
  }
  std::u16string_view text = scanner_.plain_text();
  if (completes_character(text.front())) text.remove_prefix(1);
  add_coded(text);
}

void RtfReader::read_control(bool at_start) {
  constexpr std::size_t longest_symbol = 4;
  constexpr std::size_t longest_word = 4096;  // that is kept until it ends
  const auto wait = [&] {
    scanner_.go_to(token_);
    --tokens_;
    at_group_start_ = at_start;
    is_incomplete_ = true;
  };
  scanner_.skip(1);
  const char16_t first = scanner_.at_end() ? u'\0' : scanner_.peek();
  if ((first < u'a' || first > u'z') && (first < u'A' || first > u'Z')) {
    if (!is_last_ && scanner_.left() < longest_symbol - 1) return wait();
    at_group_start_ = at_start;
    if (!scanner_.at_end()) read_symbol();
  } else {
    const ControlWord word = scanner_.control_word();
    // A sign may begin the number.
    const bool ends_in_sign = scanner_.left() == 1 && scanner_.peek() == u'-';
    const bool goes_on = !is_last_ && (scanner_.at_end() || ends_in_sign);
    is_word_cut_ = goes_on && scanner_.position() - token_ > longest_word;
    if (goes_on && !is_word_cut_) return wait();
    at_group_start_ = at_start;
    read_word(word);
  }
  at_group_start_ = false;
}

void RtfReader::read_word(const ControlWord& word) {
  const KnownWord* const known = find_word(word.key);
  if (known != nullptr && known->action == WordAction::skip_binary) {
    skip_binary(word.parameter);
    return;
  }
  if (std::exchange(starred_, false) && !begins_destination(known)) {
    properties_.skip_group();
    return;
  }
  if (destination() == Destination::skipped) {
    if (known != nullptr && known->action == WordAction::add_unicode) note_skipped();
    return;
  }
  // Any word may be a replacement character, except one that begins the next character.
  const bool begins_character = known != nullptr && known->action == WordAction::add_unicode;
  if (known == nullptr || (!begins_character && replacements_due_ > 0)) {
    takes_replacement();
    return;
  }
  flush_bytes();
  if (sets_property(known->action)) {
    const bool was_in_shape = destination() == Destination::shape;
    properties_.set(*known, word.parameter, tokens_);
    if (was_in_shape && properties_.is_text()) {
      add_alternative_text();
      separate_lines(properties_.state().alignment);
    }
  } else {
    add_word(*known, word.parameter);
  }
}

void RtfReader::add_word(const KnownWord& word, Parameter parameter) {
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

void RtfReader::read_symbol() {
  const char16_t symbol = scanner_.next();
  switch (symbol) {
    case u'\'':
      read_hex_byte();
      return;
    case u'*':
      starred_ = at_group_start_;
      return;
    case u'\\':
    case u'{':
    case u'}':
    case u'\t':
      add_character(symbol);
      return;
    case u'~':
      add_character(0x00A0);
      return;
    case u'-':
      add_character(0x00AD);
      return;
    case u'_':
      add_character(0x2011);
      return;
    case u'\r':
      if (!scanner_.at_end() && scanner_.peek() == u'\n') scanner_.skip(1);
      [[fallthrough]];
    case u'\n':
      if (!takes_replacement()) add_break();
      return;
    default:
      // Not a symbol of RTF, which has bytes below 0x80 only.
      if (units_ == Units::bytes && symbol >= 0x80) add_byte(static_cast<std::uint8_t>(symbol));
      return;
  }
}

void RtfReader::read_hex_byte() {
  const int byte = scanner_.hex_byte();
  if (byte < 0 || takes_replacement()) return;
  add_byte(static_cast<std::uint8_t>(byte));
}

void RtfReader::read_raw_byte() { add_byte(static_cast<std::uint8_t>(scanner_.next())); }

void RtfReader::skip_binary(Parameter count) {
  if (count.value_or(0) > 0) binary_due_ = static_cast<std::size_t>(count.value);
  skip_binary_data();
  takes_replacement();
}

void RtfReader::skip_binary_data() {
  const std::size_t here = std::min(binary_due_, scanner_.left());
  scanner_.skip(here);
  binary_due_ -= here;
}

void RtfReader::open_group() {
  scanner_.skip(1);
  flush_bytes();
  replacements_due_ = 0;
  starred_ = false;
  properties_.open_group();
}

void RtfReader::close_group() {
  scanner_.skip(1);
  flush_bytes();
  replacements_due_ = 0;
  starred_ = false;
  const Destination was = destination();
  const Alignment alignment = properties_.state().alignment;
  properties_.close_group();
  is_closed_ = extent_ == Extent::document && !properties_.is_in_group();
  while (!asides_.empty() && asides_.size() > properties_.state().asides) end_aside(alignment);
  if (was != destination()) end_destination(was, alignment);
}

void RtfReader::end_destination(Destination destination, Alignment alignment) {
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

void RtfReader::add_character(char16_t character) {
  if (!takes_replacement() && !completes_character(character)) add_unit(character);
}

void RtfReader::add_unicode(Parameter code) {
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

void RtfReader::add_break() {
  flush_bytes();
  if (!properties_.is_shown() || (!asides_.empty() && break_in_aside())) return;
  sink_.paragraph_break(properties_.format(), properties_.state().alignment);
  properties_.note_shown();
  last_ = u'\0';
  line_end_.reset();
}

void RtfReader::end_cell() {
  if (properties_.is_shown()) ++counts_.cells;
  add_unit(u'\t');
}

void RtfReader::end_row() {
  if (properties_.is_shown()) ++counts_.rows;
  add_break();
}

/// A text box stands on lines of its own, whether or not its text ends in a break.
void RtfReader::separate_lines(Alignment alignment) {
  if (last_ != u'\0' && !line_end_) line_end_ = {properties_.format(), alignment};
}

void RtfReader::add_line_end() {
  sink_.paragraph_break(line_end_->format, line_end_->alignment);
  line_end_.reset();
  last_ = u'\0';
}

void RtfReader::add_text(std::u16string_view text) {
  if (text.empty()) return;
  flush_bytes();
  if (!properties_.is_shown()) return add_unshown(text);
  if (!asides_.empty()) text = enter_asides(text);
  if (text.empty()) return;
  show(text, properties_.format());
  properties_.note_shown();
}

void RtfReader::add_unshown(std::u16string_view text) {
  if (!properties_.is_text()) return add_table_text(text);
  const bool is_hidden = (properties_.state().character.flags & CharState::hidden) != 0;
  (is_hidden ? counts_.hidden : counts_.deleted) += text.size();
}

/// Adds text whose characters are numbers, which a font of symbols gives other pictures.
void RtfReader::add_coded(std::u16string_view text) {
  const bool is_seen = properties_.is_shown() || destination() == Destination::list_text;
  const SymbolFont* const font = is_seen ? properties_.symbol_font() : nullptr;
  if (font != nullptr) {
    add_text(font->in_unicode(text));
  } else {
    add_text(text);
  }
}

/// Drops NUL, which ends a text for many who may get to see it.
void RtfReader::add_unit(char16_t unit) {
  if (unit == u'\0') return;
  if (unit == u'\r' || unit == u'\n') {
    add_break();
  } else {
    add_text({&unit, 1});
  }
}

void RtfReader::add_byte(std::uint8_t byte) {
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

bool RtfReader::completes_pending(char16_t unit) {
  if (unit >= 0x80) return false;
  const auto byte = static_cast<std::uint8_t>(unit);
  const std::string bytes = pending_bytes_ + static_cast<char>(byte);
  const CodePage& code_page = properties_.code_page();
  if (!code_page.has(bytes) && !code_page.may_go_on(bytes)) return false;
  add_byte(byte);
  return true;
}

void RtfReader::add_decoded(char16_t unit) {
  if (unit < u' ') {
    add_unit(unit);
  } else if (destination() == Destination::font_table) {
    properties_.fonts().add_to_name({&unit, 1});  // an escaped semicolon does not end the name
  } else {
    add_coded({&unit, 1});
  }
}

void RtfReader::give_up_bytes() {
  for (const char16_t unit : in_western(std::exchange(pending_bytes_, {}))) add_unit(unit);
}

/// The characters of bytes that the code page does not have.
std::u16string RtfReader::in_western(std::string_view bytes) {
  if (properties_.is_shown()) ++counts_.unknown;
  return decode_each_western(bytes);
}

void RtfReader::add_list_text() {
  std::u16string mark = std::exchange(list_text_, {});
  if (mark.find_first_not_of(u" \t\u00A0") == std::u16string::npos) return;
  // The bullets of symbol fonts are not bullets in any other font.
  std::replace_if(
      mark.begin(), mark.end(),
      [](char16_t c) { return c == u'\u00B7' || (c >= 0xF000 && c <= 0xF0FF); }, u'\u2022');
  add_text(mark);
}

void RtfReader::add_field() {
  const std::u16string instruction = std::exchange(instruction_, {});
  const std::u16string symbol = symbol_of_field(instruction);
  if (symbol.empty()) return begin_link(address_of_field(instruction));
  add_text(symbol);
  properties_.note_field_shown();
}

void RtfReader::add_table_text(std::u16string_view text) {
  if (destination() == Destination::color_table) properties_.colors().read_text(text);
  if (destination() == Destination::font_table) properties_.fonts().read_text(text);
  if (destination() == Destination::list_text) append_some(list_text_, text);
  if (destination() == Destination::field_instruction) append_some(instruction_, text);
  if (destination() == Destination::property_name) append_some(property_name_, text);
  if (destination() == Destination::property_value) append_some(property_value_, text);
}

void read_rtf(std::u16string_view rtf, const CharFormat& base, DocumentSink& sink) {
  RtfReader reader(base, sink, RtfReader::Extent::document);
  reader.read(rtf, true);
  reader.finish();
}

}  // namespace qel::richtext
