#pragma once

#include <cstddef>
#include <cstdint>
#include <string_view>
#include <type_traits>

#include "qel/richtext/RtfContent.h"

namespace qel::richtext {

/// What the units of the RTF are.
enum class RtfUnits : std::uint8_t {
  characters,
  bytes,  ///< those from 0x80 stand for bytes of the code page that the document declares
};
/// Where to begin and end.
enum class RtfExtent : std::uint8_t {
  document,  ///< from the first brace to the one that closes it
  fragment,  ///< everything: a part of a document need not be one group
};

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
template <class Char>
class BasicRtfReader {
 public:
  using View = std::basic_string_view<Char>;

  using Units = RtfUnits;
  using Extent = RtfExtent;

  BasicRtfReader(const CharFormat& base, DocumentSink& sink, Extent extent,
                 Units units = Units::characters, const RtfExtras& extras = {})
      : units_(units), extent_(extent), content_(base, sink, extras) {}
  BasicRtfReader(const BasicRtfReader&) = delete;
  BasicRtfReader& operator=(const BasicRtfReader&) = delete;

  /// Reads on, up to what may go on behind the end unless this is the last part, and returns how
  /// many units were read. The rest has to come again in front of the next part, unless the
  /// document has been closed.
  std::size_t read(View rtf, bool is_last);
  /// Tells the sink that the document ends. To be called after the last part.
  void finish() { content_.finish(); }

  /// While the sink is called, the position in the part of the text, word, symbol or brace read
  /// last.
  const std::size_t& token() const { return token_; }
  /// Whether the document has been closed: all that follows is ignored.
  bool is_closed() const { return is_closed_; }
  /// What has been dropped so far.
  const DroppedParts& counts() const { return content_.counts(); }
  /// Whether a document has begun whose last brace has not come.
  bool is_open() const { return is_begun_ && !is_closed_ && extent_ == Extent::document; }

 private:
  bool is_in_bytes() const { return std::is_same_v<Char, char> || units_ == Units::bytes; }
  void read_token();
  void read_text();
  void add_text(View text);
  void read_control(bool at_start);
  void read_word(const ControlWord& word);
  void read_symbol();
  void read_hex_byte();
  void open_group();
  void close_group();
  void skip_binary(Parameter count);
  void skip_binary_data();
  void skip_rest_of_word();

  Units units_;
  Extent extent_;
  RtfContent content_;
  RtfScanner<Char> scanner_;
  bool is_last_ = true;
  bool is_incomplete_ = false;  // the token goes on behind the end of the part
  bool is_word_cut_ = false;    // or it does, and what follows of it is skipped
  std::size_t token_ = 0;
  std::uint64_t tokens_ = 0;  // how many there were
  bool is_begun_ = false;
  bool is_closed_ = false;
  bool starred_ = false;
  bool at_group_start_ = false;
  std::size_t binary_due_ = 0;  // units of binary data to skip
};

using RtfReader = BasicRtfReader<char16_t>;

/// Reads all of a document.
void read_rtf(std::u16string_view rtf, const CharFormat& base, DocumentSink& sink);

}  // namespace qel::richtext
