#include "qel/richtext/RtfReader.h"

#include <algorithm>
#include <array>
#include <cstddef>
#include <string>
#include <utility>
#include <vector>

#include "qel/richtext/CodePage.h"
#include "qel/richtext/RtfFormats.h"
#include "qel/richtext/RtfState.h"
#include "qel/richtext/RtfTokens.h"
#include "qel/richtext/RtfWords.h"

namespace qel::richtext {
namespace {

/// Groups nested more deeply than this are read, but restore nothing when they end.
constexpr std::size_t deepest_group = 10'000;
/// A larger count of replacement characters is broken input.
constexpr std::int32_t longest_replacement = 32;

bool begins_destination(const KnownWord* word) {
  return word != nullptr && (word->action == WordAction::set_destination ||
                             word->action == WordAction::begin_unicode_part);
}

class Reader {
 public:
  Reader(std::u16string_view rtf, const CharFormat& base, RtfSink& sink, std::size_t& token,
         bool is_document)
      : scanner_(rtf),
        sink_(sink),
        token_(token),
        is_document_(is_document),
        formats_(base, sink) {}

  void read() {
    while (!scanner_.at_end() && !finished_) read_token();
    flush_bytes();
    sink_.finish(last_alignment_);
  }

 private:
  using Handler = void (Reader::*)(std::int32_t argument, Parameter parameter);
  /// One for each `WordAction`, in the same order.
  static const std::array<Handler, static_cast<std::size_t>(WordAction::count)> handlers;

  void read_token();
  void read_text();
  void read_control();
  void read_symbol();
  void read_hex_byte();
  void open_group();
  void close_group();

  // Handlers of control words.
  void set_flag(std::int32_t flag, Parameter parameter);
  void clear_flag(std::int32_t flag, Parameter parameter);
  void set_offset(std::int32_t sign, Parameter half_points);
  void set_fixed_offset(std::int32_t half_points, Parameter parameter);
  void set_font(std::int32_t argument, Parameter number);
  void set_size(std::int32_t argument, Parameter half_points);
  void set_color(std::int32_t argument, Parameter number);
  void set_plain(std::int32_t argument, Parameter parameter);
  void set_alignment(std::int32_t alignment, Parameter parameter);
  void set_default_font(std::int32_t argument, Parameter number);
  void set_code_page(std::int32_t number, Parameter parameter);
  void set_character_set(std::int32_t argument, Parameter number);
  void set_font_code_page(std::int32_t argument, Parameter number);
  void set_color_component(std::int32_t component, Parameter value);
  void set_replacement_length(std::int32_t argument, Parameter count);
  void set_destination(std::int32_t destination, Parameter parameter);
  void begin_unicode_part(std::int32_t argument, Parameter parameter);
  void add_character(std::int32_t character, Parameter parameter);
  void add_unicode(std::int32_t argument, Parameter code);
  void add_break(std::int32_t only_after_text, Parameter parameter);
  void skip_binary(std::int32_t argument, Parameter count);

  bool takes_replacement();
  void add_text(std::u16string_view text);
  void add_unit(char16_t unit);
  void add_byte(std::uint8_t byte);
  void add_decoded(char16_t unit);
  /// Gives up waiting for the rest of a character.
  void flush_bytes() {
    if (!pending_bytes_.empty()) give_up_bytes();
  }
  void give_up_bytes();
  void add_table_text(std::u16string_view text);
  void add_list_text();
  bool is_shown() const {
    return state_.destination == Destination::text &&
           (state_.character.flags & (CharState::hidden | CharState::deleted)) == 0;
  }

  RtfSink::FormatId format() { return formats_.id_of(state_.character); }

  RtfScanner scanner_;
  RtfSink& sink_;
  std::size_t& token_;
  bool is_document_;
  RtfFormats formats_;

  GroupState state_;
  std::vector<GroupState> groups_;
  std::size_t groups_beyond_ = 0;
  bool finished_ = false;
  bool starred_ = false;
  bool at_group_start_ = false;
  /// Alignment of the paragraph being read. The end of a group does not undo it: the text is there.
  Alignment last_alignment_ = Alignment::left;
  bool line_has_text_ = false;
  std::size_t offset_word_end_ = 0;  // position behind the last "\up" or "\dn"

  std::size_t font_group_ = 0;  // depth of the group with the current entry of the font table
  std::u16string list_text_;

  std::int32_t replacements_due_ = 0;
  std::string pending_bytes_;  // the beginning of a character that takes several
};

const std::array<Reader::Handler, static_cast<std::size_t>(WordAction::count)> Reader::handlers = {
    &Reader::set_flag,
    &Reader::clear_flag,
    &Reader::set_offset,
    &Reader::set_fixed_offset,
    &Reader::set_font,
    &Reader::set_size,
    &Reader::set_color,
    &Reader::set_plain,
    &Reader::set_alignment,
    &Reader::set_default_font,
    &Reader::set_code_page,
    &Reader::set_character_set,
    &Reader::set_font_code_page,
    &Reader::set_color_component,
    &Reader::set_replacement_length,
    &Reader::set_destination,
    &Reader::begin_unicode_part,
    &Reader::add_character,
    &Reader::add_unicode,
    &Reader::add_break,
    &Reader::skip_binary,
};

void Reader::read_token() {
  const bool at_start = std::exchange(at_group_start_, false);
  token_ = scanner_.position();
  switch (scanner_.peek()) {
    case u'{':
      open_group();
      at_group_start_ = true;
      break;
    case u'}':
      close_group();
      break;
    case u'\\':
      at_group_start_ = at_start;
      read_control();
      at_group_start_ = false;
      break;
    case u'\t':
      scanner_.skip(1);
      add_character(u'\t', {});
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

void Reader::read_text() {
  if (state_.destination == Destination::skipped ||
      state_.destination == Destination::unicode_pair) {
    scanner_.skip_plain_text();
    return;
  }
  if (takes_replacement()) {
    scanner_.skip(1);
    return;
  }
  std::u16string_view text = scanner_.plain_text();
  // The second byte of a character may be one that elsewhere stands for itself.
  while (!pending_bytes_.empty() && !text.empty() && text.front() < 0x80) {
    add_byte(static_cast<std::uint8_t>(text.front()));
    text.remove_prefix(1);
  }
  add_text(text);
}

void Reader::read_control() {
  scanner_.skip(1);
  if (scanner_.at_end()) return;
  const char16_t first = scanner_.peek();
  if ((first < u'a' || first > u'z') && (first < u'A' || first > u'Z')) {
    read_symbol();
    return;
  }
  const ControlWord word = scanner_.control_word();
  const KnownWord* const known = find_word(word.key);
  if (known != nullptr && known->action == WordAction::skip_binary) {
    skip_binary(0, word.parameter);
    return;
  }
  if (std::exchange(starred_, false) && !begins_destination(known)) {
    state_.destination = Destination::skipped;
    return;
  }
  if (state_.destination == Destination::skipped) return;
  // Any word may be a replacement character, except one that begins the next character.
  const bool begins_character = known != nullptr && known->action == WordAction::add_unicode;
  if (known == nullptr || (!begins_character && replacements_due_ > 0)) {
    takes_replacement();
    return;
  }
  flush_bytes();
  (this->*handlers[static_cast<std::size_t>(known->action)])(known->argument, word.parameter);
}

void Reader::read_symbol() {
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
      add_character(symbol, {});
      return;
    case u'~':
      add_character(0x00A0, {});
      return;
    case u'-':
      add_character(0x00AD, {});
      return;
    case u'_':
      add_character(0x2011, {});
      return;
    case u'\r':
      if (!scanner_.at_end() && scanner_.peek() == u'\n') scanner_.skip(1);
      [[fallthrough]];
    case u'\n':
      if (!takes_replacement()) add_break(0, {});
      return;
    default:
      return;
  }
}

void Reader::read_hex_byte() {
  const int byte = scanner_.hex_byte();
  if (byte < 0 || takes_replacement()) return;
  add_byte(static_cast<std::uint8_t>(byte));
}

void Reader::skip_binary(std::int32_t /*argument*/, Parameter count) {
  if (count.value_or(0) > 0) scanner_.skip(static_cast<std::size_t>(count.value));
  takes_replacement();
}

void Reader::open_group() {
  scanner_.skip(1);
  flush_bytes();
  replacements_due_ = 0;
  starred_ = false;
  if (groups_.size() < deepest_group) {
    groups_.push_back(state_);
  } else {
    ++groups_beyond_;
  }
}

void Reader::close_group() {
  scanner_.skip(1);
  flush_bytes();
  replacements_due_ = 0;
  starred_ = false;
  if (groups_beyond_ > 0) {
    --groups_beyond_;
    return;
  }
  if (state_.destination == Destination::font_table && groups_.size() <= font_group_) {
    formats_.fonts().end_font();
  }
  const bool ends_list_text = state_.destination == Destination::list_text;
  if (groups_.empty()) {
    finished_ = is_document_;
    return;
  }
  state_ = groups_.back();
  groups_.pop_back();
  finished_ = is_document_ && groups_.empty();
  if (ends_list_text && state_.destination != Destination::list_text) add_list_text();
}

void Reader::set_flag(std::int32_t flag, Parameter parameter) {
  if (parameter.value_or(1) == 0) {
    clear_flag(flag, parameter);
  } else {
    state_.character.flags |= static_cast<std::uint8_t>(flag);
  }
}

void Reader::clear_flag(std::int32_t flag, Parameter /*parameter*/) {
  state_.character.flags &= static_cast<std::uint8_t>(~flag);
}

void Reader::set_offset(std::int32_t sign, Parameter half_points) {
  constexpr std::int32_t usual = 6;
  constexpr std::int32_t limit = 3276;  // its twips still fit 16 bits
  const std::int32_t value = std::clamp(half_points.value_or(usual), -limit, limit);
  // Where raised text follows lowered text, the end of the one is written behind the beginning of
  // the other, which it must not undo.
  const bool ends_other =
      value == 0 && token_ == offset_word_end_ && sign * state_.character.offset < 0;
  if (ends_other) return;
  state_.character.offset = static_cast<std::int16_t>(sign * value);
  offset_word_end_ = scanner_.position();
}

void Reader::set_fixed_offset(std::int32_t half_points, Parameter parameter) {
  const bool on = parameter.value_or(1) != 0;
  state_.character.offset = on ? static_cast<std::int16_t>(half_points) : std::int16_t{0};
}

void Reader::set_font(std::int32_t /*argument*/, Parameter number) {
  if (state_.destination == Destination::font_table) {
    formats_.fonts().begin_font(number.value_or(0));
    font_group_ = groups_.size();
  } else {
    state_.character.font = number.value_or(CharState::default_font);
  }
}

void Reader::set_size(std::int32_t /*argument*/, Parameter half_points) {
  const std::int32_t value = half_points.value_or(24);
  if (value >= 1 && value <= 0x7FFF)
    state_.character.half_points = static_cast<std::uint16_t>(value);
}

void Reader::set_color(std::int32_t /*argument*/, Parameter number) {
  state_.character.color = number.value_or(0);
}

void Reader::set_plain(std::int32_t /*argument*/, Parameter /*parameter*/) {
  state_.character = CharState();
}

void Reader::set_alignment(std::int32_t alignment, Parameter /*parameter*/) {
  state_.alignment = static_cast<Alignment>(alignment);
  last_alignment_ = state_.alignment;
}

void Reader::set_default_font(std::int32_t /*argument*/, Parameter number) {
  formats_.set_default_font(number.value_or(CharState::default_font));
}

void Reader::set_code_page(std::int32_t number, Parameter parameter) {
  formats_.set_document_code_page(number != 0 ? number : parameter.value_or(CodePage::western));
}

void Reader::set_character_set(std::int32_t /*argument*/, Parameter number) {
  if (state_.destination == Destination::font_table)
    formats_.fonts().set_character_set(number.value_or(0));
}

void Reader::set_font_code_page(std::int32_t /*argument*/, Parameter number) {
  if (state_.destination == Destination::font_table && number.given) {
    formats_.fonts().set_code_page(number.value);
  }
}

void Reader::set_color_component(std::int32_t component, Parameter value) {
  if (state_.destination != Destination::color_table) return;
  formats_.colors().set_component(component, value.value_or(0));
}

void Reader::set_replacement_length(std::int32_t /*argument*/, Parameter count) {
  const std::int32_t value = count.value_or(1);
  if (value < 0 || value > longest_replacement) return;
  state_.replacement_length = static_cast<std::uint8_t>(value);
}

void Reader::set_destination(std::int32_t destination, Parameter /*parameter*/) {
  const Destination was = state_.destination;
  state_.destination = static_cast<Destination>(destination);
  // Outside the text nobody tells the two parts of a pair apart.
  if (state_.destination == Destination::unicode_pair && was != Destination::text) {
    state_.destination = Destination::skipped;
  }
  formats_.forget();
}

void Reader::begin_unicode_part(std::int32_t /*argument*/, Parameter /*parameter*/) {
  if (state_.destination == Destination::unicode_pair) state_.destination = Destination::text;
}

void Reader::add_character(std::int32_t character, Parameter /*parameter*/) {
  if (!takes_replacement()) add_unit(static_cast<char16_t>(character));
}

void Reader::add_unicode(std::int32_t /*argument*/, Parameter code) {
  if (!code.given) return;
  flush_bytes();
  replacements_due_ = state_.replacement_length;
  if (code.value > 0xFFFF && code.value <= 0x10FFFF) {
    const std::int32_t offset = code.value - 0x10000;
    add_unit(static_cast<char16_t>(0xD800 + (offset >> 10)));
    add_unit(static_cast<char16_t>(0xDC00 + (offset & 0x3FF)));
    return;
  }
  add_unit(static_cast<char16_t>(code.value));
}

void Reader::add_break(std::int32_t only_after_text, Parameter /*parameter*/) {
  flush_bytes();
  if (!is_shown() || (only_after_text != 0 && !line_has_text_)) return;
  sink_.paragraph_break(format(), state_.alignment);
  last_alignment_ = state_.alignment;
  line_has_text_ = false;
}

/// Whether what has just been read is a replacement for a character given in Unicode; counts it.
bool Reader::takes_replacement() {
  if (replacements_due_ == 0) return false;
  --replacements_due_;
  return true;
}

void Reader::add_text(std::u16string_view text) {
  if (text.empty()) return;
  flush_bytes();
  if (is_shown()) {
    sink_.text(text, format());
    last_alignment_ = state_.alignment;
    line_has_text_ = true;
  } else {
    add_table_text(text);
  }
}

void Reader::add_unit(char16_t unit) {
  if (unit == u'\r' || unit == u'\n') {
    add_break(0, {});
  } else {
    add_text({&unit, 1});
  }
}

void Reader::add_byte(std::uint8_t byte) {
  if (state_.destination == Destination::skipped) return;
  const CodePage& code_page = formats_.code_page_of(state_.character);
  if (pending_bytes_.empty() && code_page.length_from(byte) == 1) {
    add_decoded(code_page.decode_single(byte));
    return;
  }
  pending_bytes_.push_back(static_cast<char>(byte));
  const auto first = static_cast<std::uint8_t>(pending_bytes_.front());
  if (pending_bytes_.size() < code_page.length_from(first)) return;
  for (const char16_t unit : code_page.decode(std::exchange(pending_bytes_, {}))) {
    add_decoded(unit);
  }
}

void Reader::add_decoded(char16_t unit) {
  if (state_.destination == Destination::font_table) {
    formats_.fonts().add_to_name({&unit, 1});  // an escaped semicolon does not end the name
  } else {
    add_unit(unit);
  }
}

void Reader::give_up_bytes() {
  for (const char byte : std::exchange(pending_bytes_, {})) {
    add_unit(decode_western(static_cast<std::uint8_t>(byte)));
  }
}

void Reader::add_list_text() {
  std::u16string mark = std::exchange(list_text_, {});
  if (mark.find_first_not_of(u" \t\u00A0") == std::u16string::npos) return;
  // The bullets of symbol fonts are not bullets in any other font.
  std::replace_if(
      mark.begin(), mark.end(),
      [](char16_t c) { return c == u'\u00B7' || (c >= 0xF000 && c <= 0xF0FF); }, u'\u2022');
  add_text(mark);
}

void Reader::add_table_text(std::u16string_view text) {
  if (state_.destination == Destination::color_table) formats_.colors().read_text(text);
  if (state_.destination == Destination::font_table) formats_.fonts().read_text(text);
  if (state_.destination == Destination::list_text) list_text_.append(text);
}

}  // namespace

void read_rtf(std::u16string_view rtf, const CharFormat& base, RtfSink& sink) {
  rtf.remove_prefix(std::min(rtf.find(u'{'), rtf.size()));
  std::size_t token = 0;
  Reader(rtf, base, sink, token, true).read();
}

void read_rtf_fragment(std::u16string_view rtf, const CharFormat& base, RtfSink& sink,
                       std::size_t& token) {
  Reader(rtf, base, sink, token, rtf.starts_with(u"{\\rtf")).read();
}

}  // namespace qel::richtext
