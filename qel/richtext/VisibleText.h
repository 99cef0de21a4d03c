#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

namespace qel::richtext {

/// The text that a reader of an RTF document, or of a part of one, sees, and a way to change its
/// characters without touching anything else. Takes time and memory in proportion to the RTF.
class VisibleText {
 public:
  /// `rtf` must stay where it is for as long as this lives.
  explicit VisibleText(std::u16string_view rtf);

  /// The characters in order; paragraphs and lines end with a line feed.
  const std::u16string& text() const { return text_; }

  /// The RTF with its visible characters replaced by those of `text`, which has the same length.
  /// Each is written in the way of the one that it replaces: literally, as "\uN", or as "\'hh" if
  /// code page 1252 has it. Where it does not, the old character stays, as do characters written in
  /// any other way, and what follows "\uN" for readers without Unicode.
  std::u16string with(std::u16string_view text) const;

 private:
  class Collector;

  enum class Spelling : std::uint8_t { plain, byte, unicode, fixed };
  /// Characters that are written in the RTF in one way.
  struct Piece {
    std::size_t position = 0;
    std::size_t length = 0;  ///< of the text
    Spelling spelling = Spelling::fixed;
  };

  static Spelling spelling_of(std::u16string_view token, std::u16string_view text);
  std::size_t write(std::u16string& out, const Piece& piece, std::u16string_view text) const;

  std::u16string_view rtf_;
  std::u16string text_;
  std::vector<Piece> pieces_;
};

}  // namespace qel::richtext
