#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <optional>
#include <vector>

#include "qel/richtext/CharFormat.h"
#include "qel/richtext/DocumentSink.h"
#include "qel/richtext/RtfFormats.h"
#include "qel/richtext/RtfState.h"
#include "qel/richtext/RtfTokens.h"
#include "qel/richtext/RtfWords.h"
#include "qel/richtext/SymbolFonts.h"

namespace qel::richtext {

/// What the control words that stand for no text have set: the properties of the text to come, the
/// document's tables, and what the end of each open group restores.
class RtfProperties {
 public:
  RtfProperties(const CharFormat& base, DocumentSink& sink) : formats_(base, sink) {}

  /// Does what a word says for which `sets_property` is true. `token` is its number.
  void set(const KnownWord& word, Parameter parameter, std::uint64_t token);
  void open_group();
  void close_group();
  /// Drops the text of the group that has just begun.
  void skip_group() { state_.destination = Destination::skipped; }
  /// The text of the group that has just begun goes there.
  void begin_destination(Destination destination);
  /// The group is one more aside. One with formats of its own begins without any.
  void begin_aside(bool has_formats) {
    ++state_.asides;
    if (!has_formats) return;
    state_.character = CharState();
    forget_format();
  }
  bool is_in_group() const { return !groups_.empty(); }

  const GroupState& state() const { return state_; }
  bool is_text() const { return state_.destination == Destination::text; }
  bool is_shown() const {
    return is_text() && (state_.character.flags & (CharState::hidden | CharState::deleted)) == 0;
  }
  /// The sink's number for the format of the text to come.
  DocumentSink::FormatId format() {
    if (!format_) format_ = formats_.id_of(state_.character);
    return *format_;
  }
  /// The same for text that is neither raised nor lowered.
  DocumentSink::FormatId format_on_line() {
    CharState on_line = state_.character;
    on_line.offset = 0;
    return formats_.id_of(on_line);
  }
  const CodePage& code_page() {
    return state_.destination == Destination::font_table ? formats_.code_page_of_font_name()
                                                         : formats_.code_page_of(state_.character);
  }
  /// The font of the text to come where the document calls it a font of symbols and its pictures
  /// are known, null for all others. Fonts of that name without that mark hold letters.
  const SymbolFont* symbol_font() {
    if (!symbol_font_) symbol_font_ = find_symbol_font();
    return *symbol_font_;
  }
  RtfFontTable& fonts() { return formats_.fonts(); }
  RtfColorTable& colors() { return formats_.colors(); }

  /// To be called when the field being read needs no result.
  void note_field_shown() { state_.is_field_shown = true; }
  /// To be called when text or a break has been shown.
  void note_shown() { last_alignment_ = state_.alignment; }
  /// Alignment of the paragraph being read. The end of a group does not undo it: the text is there.
  Alignment last_alignment() const { return last_alignment_; }

 private:
  struct KnownSymbols {
    std::int32_t number = 0;
    const SymbolFont* font = nullptr;
    bool is_set = false;
  };

  /// To be called when another format may hold.
  void forget_format() {
    format_.reset();
    symbol_font_.reset();
  }
  const SymbolFont* find_symbol_font();

  using Setter = void (RtfProperties::*)(std::int32_t argument, Parameter parameter);
  /// One for each `WordAction` that sets a property, in the same order.
  static const std::array<Setter, property_count> setters;

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
  void begin_text_part(std::int32_t holder, Parameter parameter);
  void begin_field(std::int32_t argument, Parameter parameter);
  void begin_field_result(std::int32_t argument, Parameter parameter);

  RtfFormats formats_;
  GroupState state_;
  // Of the state; empty where they have to be looked up.
  std::optional<DocumentSink::FormatId> format_;
  std::optional<const SymbolFont*> symbol_font_;
  std::vector<GroupState> groups_;
  std::size_t groups_beyond_ = 0;
  Alignment last_alignment_ = Alignment::left;

  std::int32_t default_font_ = CharState::default_font;
  std::array<KnownSymbols, 16> symbol_fonts_;  // those that have been looked up

  std::uint64_t token_ = 0;         // the number of the word that is being done
  std::uint64_t offset_token_ = 0;  // that of the last "\up" or "\dn"
  std::size_t font_group_ = 0;      // depth of the group with the current entry of the font table
};

}  // namespace qel::richtext
