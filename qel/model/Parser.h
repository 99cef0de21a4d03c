#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>

#include "qel/model/QELCode.h"
#include "qel/model/RunSink.h"
#include "qel/model/SegmentCollection.h"
#include "qel/model/StyleCodes.h"

namespace qel {

/// Reads markup one text or line break after the other, with the style that the codes before it
/// set. In the lossless way an escaped code is a text without its tilde, and line breaks are line
/// codes; in the stated way both are characters, and escaped codes have to be protected. Markup is
/// in UTF-16 or UTF-8.
template <class Char>
class BasicMarkupScanner {
 public:
  using View = std::basic_string_view<Char>;
  enum class Item : std::uint8_t { text, line_break, end };

  /// For markup that comes in parts.
  explicit BasicMarkupScanner(Way way) : is_last_(false), way_(way) {}
  /// `markup` has to outlive the scanner.
  BasicMarkupScanner(View markup, Way way) : markup_(markup), way_(way) {}

  /// Also reads the codes that only conversions to RTF know: "/r1" for raised, "/l1" for lowered.
  void read_codes_of_rtf() { code_kinds_ |= code_letters::rtf_toggle; }

  /// Goes on with the next part of the markup, which begins with what was not read of the one
  /// before. After `Item::end` of any but the last part, `position` tells how much was read: what
  /// may go on as a code behind the end is left.
  void go_on(View markup, bool is_last);
  std::size_t position() const { return at_; }

  Item next();

  /// The characters of the text, at least one: a part of the markup.
  View text() const { return text_; }
  /// Whether the text belongs to the one before it: only a tilde stands between them.
  bool goes_on() const { return goes_on_; }
  const style_codes::CodeState& state() const { return state_; }

 private:
  enum class Special : std::uint8_t {
    none,
    code,
    escaped_code,
    line_break,
    cut,  ///< may go on behind the end of this part
  };

  std::size_t find_special(std::size_t from) const;
  Special special_at(std::size_t at) const;
  Item give_text(std::size_t begin, std::size_t from);
  /// Whether what stands there may go on behind the end of this part.
  bool is_cut(std::size_t at) const;
  void apply(Char letter, Char digit);

  View markup_;
  bool is_last_ = true;
  Way way_;
  unsigned code_kinds_ = code_letters::toggle | code_letters::index;
  bool goes_on_ = false;
  bool is_literal_ = false;  // whether the slash at `at_` is text
  std::size_t at_ = 0;
  View text_;
  // Fonts and colours accumulate until "/f0" or "/y0" clears them; the highest one counts.
  std::uint32_t flags_ = 0;
  style_codes::CodeState state_;
};

using MarkupScanner = BasicMarkupScanner<char16_t>;

/// Passes what the scanner finds in its markup to a sink, but not the end.
template <class Char>
void read_runs(BasicMarkupScanner<Char>& scanner, BasicRunSink<Char>& sink);

/// Reads `markup`, whose escaped codes are protected unless the way is lossless, into the empty
/// collection `segments`.
void parse_markup(std::u16string markup, SegmentCollection& segments, Way way);

}  // namespace qel
