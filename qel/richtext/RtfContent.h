#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "qel/richtext/CharFormat.h"
#include "qel/richtext/DocumentSink.h"
#include "qel/richtext/DroppedParts.h"
#include "qel/richtext/RtfExtras.h"
#include "qel/richtext/RtfProperties.h"
#include "qel/richtext/RtfState.h"
#include "qel/richtext/RtfTokens.h"
#include "qel/richtext/RtfWords.h"

namespace qel::richtext {

/// What the words, characters and groups of RTF make of a document, while its reader passes them on
/// one after the other.
class RtfContent {
 public:
  RtfContent(const CharFormat& base, DocumentSink& sink, const RtfExtras& extras)
      : sink_(sink), extras_(extras), properties_(base, sink) {}
  RtfContent(const RtfContent&) = delete;
  RtfContent& operator=(const RtfContent&) = delete;

  /// What has been dropped so far.
  const DroppedParts& counts() const { return counts_; }
  Destination destination() const { return properties_.state().destination; }
  bool is_in_group() const { return properties_.is_in_group(); }
  /// Whether text that comes now is not even looked at.
  bool drops_text() const {
    return !properties_.is_text() &&
           (destination() == Destination::skipped || has_text_parts(destination()));
  }

  void open_group();
  void close_group();
  /// The group that has just begun is dropped.
  void skip_group() { properties_.skip_group(); }
  /// Does what a word says that is none of the reader's own. `token` is its number.
  void do_word(const KnownWord& word, Parameter parameter, std::uint64_t token);
  void finish();

  void add_character(char16_t character);
  void add_break();
  /// Text whose characters are numbers, which a font of symbols gives other pictures.
  void add_coded(std::u16string_view text);
  void add_coded_ascii(std::string_view text);
  void add_byte(std::uint8_t byte);
  /// Takes the last byte of a character, which may be one that elsewhere stands for itself, such
  /// as a letter or an escaped backslash.
  bool completes_character(char16_t unit) {
    return !pending_bytes_.empty() && completes_pending(unit);
  }
  /// Whether what has just been read is a replacement for a character given in Unicode; counts it.
  bool takes_replacement() {
    if (replacements_due_ == 0) return false;
    --replacements_due_;
    return true;
  }
  bool is_replacement_due() const { return replacements_due_ > 0; }
  /// Takes note that a dropped group is not empty.
  void note_skipped() {
    if (skipped_ != nullptr) ++*std::exchange(skipped_, nullptr);
  }

 private:
  struct LineEnd {
    DocumentSink::FormatId format;
    Alignment alignment;
  };

  /// A note, a header or a link that is being read.
  struct OpenAside {
    Aside kind;
    Alignment alignment;                           // of the text around it
    std::optional<DocumentSink::FormatId> format;  // of a note's brackets, once it has text
    std::u16string address;                        // of a link, and the text that it has shown
    std::u16string shown;
  };

  void end_destination(Destination destination, Alignment alignment);
  void add_word(const KnownWord& word, Parameter parameter);
  void add_unicode(Parameter code);
  void end_cell();
  void end_row();
  void separate_lines(Alignment alignment);
  void add_line_end();

  void add_text(std::u16string_view text);
  void add_unshown(std::u16string_view text);
  void add_unit(char16_t unit);
  void add_decoded(char16_t unit);
  bool completes_pending(char16_t unit);
  /// Gives up waiting for the rest of a character.
  void flush_bytes() {
    if (!pending_bytes_.empty()) give_up_bytes();
  }
  void give_up_bytes();
  std::u16string in_western(std::string_view bytes);
  void add_table_text(std::u16string_view text);
  void add_list_text();
  void add_field();

  void begin_aside(Aside kind);
  void begin_link(std::u16string address);
  void end_aside(Alignment alignment);
  void end_link(const OpenAside& link);
  std::u16string_view enter_asides(std::u16string_view text);
  bool break_in_aside();
  std::u16string_view bracket() const;
  void begin_object();
  void begin_picture();
  void begin_picture_properties();
  void begin_property_part(Destination part);
  void end_property();
  void add_alternative_text();

  /// The text is not empty.
  void show(std::u16string_view text, DocumentSink::FormatId format) {
    if (line_end_) add_line_end();
    sink_.text(text, format);
    last_ = text.back();
  }

  DocumentSink& sink_;
  RtfExtras extras_;
  DroppedParts counts_;
  RtfProperties properties_;

  char16_t last_ = u'\0';            // character of the line; NUL at its beginning
  std::optional<LineEnd> line_end_;  // at the edge of a text box, until text follows
  std::u16string list_text_;
  std::u16string instruction_;
  std::vector<OpenAside> asides_;
  std::uint64_t* skipped_ = nullptr;  // what counts the dropped group if it has text
  std::u16string property_name_;      // of a picture or a shape
  std::u16string property_value_;
  std::u16string alternative_text_;

  std::int32_t replacements_due_ = 0;
  std::string pending_bytes_;  // the beginning of a character that takes several
};

}  // namespace qel::richtext
