#pragma once

namespace qel::richtext {

/// What a reader of RTF drops unless it is asked for.
///
/// A note reads as "[text]" behind a blank at its place, and so does the alternative text of a
/// picture or a shape. A header or footer stands on lines of its own where the file has it, which
/// is at the beginning of its section. A link's address follows its text as "text (address)",
/// unless the text is the address.
struct RtfExtras {
  bool notes = false;    ///< footnotes, endnotes and the texts of annotations
  bool headers = false;  ///< headers and footers
  bool links = false;    ///< addresses of links, except of those to a place in the same document
  bool alternative_texts = false;  ///< of pictures and shapes

  friend bool operator==(const RtfExtras&, const RtfExtras&) = default;
};

}  // namespace qel::richtext
