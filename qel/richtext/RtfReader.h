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

/// Reads RTF, as far as it can be read: broken or truncated input gives what came before. Takes
/// time linear in the input and memory in proportion to the open groups, fonts and colours, and
/// does not recurse.
///
/// Understood: font and colour tables; bold, italic, small capitals, every kind of underline and
/// strike-through, raised and lowered text, fonts, colours, sizes, \plain; paragraphs, lines, tabs,
/// table cells and rows, alignment; named and coded characters in every code page the system knows;
/// pictures of symbol fonts; results of fields and of embedded objects; text boxes, on lines of
/// their own. Dropped: all other destinations, pictures, field instructions, hidden and deleted
/// text, NUL characters, and what `RtfExtras` names unless it is asked for.
///
/// HTML that is wrapped in RTF (\fromhtml1) reads as the RTF around it, which has the breaks,
/// formats and characters of all tags and entities. The tags themselves are one more dropped
/// destination.
///
/// `base` gives the font, size and colour of text for which the document names none (or a colour
/// entry that is empty, the automatic colour).
class RtfReader {
 public:
  /// What the units of the RTF are.
  enum class Units : std::uint8_t {
    characters,
    bytes,  ///< those from 0x80 stand for bytes of the code page that the document declares
  };
  /// Where to begin and end.
  enum class Extent : std::uint8_t {
    document,  ///< from the first brace to the one that closes it
    fragment,  ///< everything: a part of a document need not be one group
  };

  RtfReader(const CharFormat& base, DocumentSink& sink, Extent extent,
            Units units = Units::characters, const RtfExtras& extras = {})
      : sink_(sink), units_(units), extent_(extent), extras_(extras), properties_(base, sink) {}
  RtfReader(const RtfReader&) = delete;
  RtfReader& operator=(const RtfReader&) = delete;

  /// Reads on, up to what may go on behind the end unless this is the last part, and returns how
  /// many units were read. The rest has to come again in front of the next part, unless the
  /// document has been closed.
  std::size_t read(std::u16string_view rtf, bool is_last);
  /// Tells the sink that the document ends. To be called after the last part.
  void finish();

  /// While the sink is called, the position in the part of the text, word, symbol or brace read
  /// last.
  const std::size_t& token() const { return token_; }
  /// Whether the document has been closed: all that follows is ignored.
  bool is_closed() const { return is_closed_; }
  /// What has been dropped so far.
  const DroppedParts& counts() const { return counts_; }
  /// Whether a document has begun whose last brace has not come.
  bool is_open() const { return is_begun_ && !is_closed_ && extent_ == Extent::document; }

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

  void read_token();
  void read_text();
  void read_control(bool at_start);
  void read_word(const ControlWord& word);
  void read_symbol();
  void read_hex_byte();
  void read_raw_byte();
  void open_group();
  void close_group();
  void end_destination(Destination destination, Alignment alignment);

  void add_word(const KnownWord& word, Parameter parameter);
  void add_character(char16_t character);
  void add_unicode(Parameter code);
  void add_break();
  void end_cell();
  void end_row();
  void separate_lines(Alignment alignment);
  void add_line_end();
  void skip_binary(Parameter count);
  void skip_binary_data();
  void skip_rest_of_word();

  /// Whether what has just been read is a replacement for a character given in Unicode; counts it.
  bool takes_replacement() {
    if (replacements_due_ == 0) return false;
    --replacements_due_;
    return true;
  }
  void add_text(std::u16string_view text);
  void add_unshown(std::u16string_view text);
  void add_coded(std::u16string_view text);
  void add_unit(char16_t unit);
  void add_byte(std::uint8_t byte);
  void add_decoded(char16_t unit);
  /// Takes the last byte of a character, which may be one that elsewhere stands for itself, such
  /// as a letter or an escaped backslash.
  bool completes_character(char16_t unit) {
    return !pending_bytes_.empty() && completes_pending(unit);
  }
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
  /// Takes note that a dropped group is not empty.
  void note_skipped() {
    if (skipped_ != nullptr) ++*std::exchange(skipped_, nullptr);
  }
  Destination destination() const { return properties_.state().destination; }

  DocumentSink& sink_;
  Units units_;
  Extent extent_;
  RtfExtras extras_;
  DroppedParts counts_;
  RtfScanner scanner_;
  bool is_last_ = true;
  bool is_incomplete_ = false;  // the token goes on behind the end of the part
  bool is_word_cut_ = false;    // or it does, and what follows of it is skipped
  std::size_t token_ = 0;
  std::uint64_t tokens_ = 0;  // how many there were
  RtfProperties properties_;

  bool is_begun_ = false;
  bool is_closed_ = false;
  bool starred_ = false;
  bool at_group_start_ = false;
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
  std::size_t binary_due_ = 0;  // units of binary data to skip
  std::string pending_bytes_;   // the beginning of a character that takes several
};

/// Reads all of a document.
void read_rtf(std::u16string_view rtf, const CharFormat& base, DocumentSink& sink);

}  // namespace qel::richtext
