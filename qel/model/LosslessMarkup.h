#pragma once

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>

#include "qel/model/StyleCodes.h"

namespace qel {

/// Writes runs as markup from which the same runs are read in the lossless way. Text that looks
/// like a code is written with a tilde. Where that is no help, a code of no effect keeps characters
/// apart: within "/c1" and "/nl" as text, where texts meet as a code, and between a tilde and a
/// code that it would turn into text. Texts are in UTF-16 or UTF-8.
template <class Char>
class BasicLosslessMarkup {
 public:
  using String = std::basic_string<Char>;
  using View = std::basic_string_view<Char>;

  enum class Text : std::uint8_t {
    any,     ///< may hold what looks like a code to some reader
    markup,  ///< stood in markup as it is: what only conversions to RTF read as codes ("/r1") stays
  };

  /// Appends to `out`, which has to outlive this object. `set` is one without rules that lose
  /// formats: `CodeSet::lossless` or `CodeSet::v6`.
  BasicLosslessMarkup(String& out, style_codes::CodeSet set)
      : out_(out), text_begin_(out.size()), set_(set) {}

  /// Line breaks in the text, CR LF or either alone, become line codes in its style. A text of one
  /// style may come in any parts, as long as a line break comes whole; but parts of markup were
  /// divided by a code.
  void text(View text, const style_codes::CodeState& state, Text kind = Text::any);
  /// Line breaks that have no style.
  void line_breaks(std::int32_t count);
  /// Closes all codes, and keeps the end of a text that was cut apart from any markup that may
  /// follow. Text that is added after that, to an emptied string, begins another text.
  void finish(bool is_cut);

  /// How many characters at the end of the string have to stay while there is more to come.
  static constexpr std::size_t characters_needed = 8;
  /// Takes note that the first `count` characters of the string have been taken away.
  void forget(std::size_t count) { text_begin_ -= std::min(text_begin_, count); }

 private:
  void enter(const style_codes::CodeState& state);
  template <class Append>
  void append_codes(Append append);
  void append_breaks();
  void append(View text, Text kind);
  void append_slash(View rest, Text kind);
  void keep_apart();
  View written_text() const { return View(out_).substr(text_begin_); }

  String& out_;
  std::size_t text_begin_;  // of the text behind the last code
  style_codes::CodeSet set_;
  style_codes::CodeState state_;
  std::int32_t line_breaks_ = 0;  // to be written before the next text
  String held_;                   // a slash and perhaps more, which may go on as a code
};

using LosslessMarkup = BasicLosslessMarkup<char16_t>;

/// Appends a code of no effect to `markup` if what follows it, more markup, would otherwise be read
/// differently behind it: as a code that neither of them has, or as text.
void keep_apart(std::u16string& markup, std::u16string_view following);

}  // namespace qel
