#include "qel/model/Parser.h"

#include <bit>
#include <cstddef>
#include <string_view>

#include "qel/base/Scan.h"
#include "qel/model/QELCode.h"

namespace qel {
namespace {

/// What the codes read so far say of the text that follows. Font and colour flags accumulate until
/// "/f0" or "/y0" clears them; the highest one counts.
class State {
 public:
  void apply(char16_t letter, char16_t digit) {
    const unsigned index = static_cast<unsigned>(digit - u'0');
    if (letter == u'f') {
      select(fonts_, index);
    } else if (letter == u'y') {
      select(colors_, index);
    } else if (bool* const flag = flag_of(letter)) {
      *flag = index == 1;
    }
  }

  void fill(iStyle& style) const {
    style.Bold = bold_;
    style.Italic = italic_;
    style.Underline = underline_;
    style.Superscript = superscript_;
    style.Subscript = subscript_;
    style.SmallCaps = small_caps_;
    style.StrikeThru = strike_through_;
    style.FontID = highest(fonts_);
    style.ColorID = highest(colors_);
  }

 private:
  /// Bit k stands for index k; bit 0 is never set.
  static void select(unsigned& flags, unsigned index) {
    flags = index == 0 ? 0 : flags | (1U << index);
  }

  static std::int16_t highest(unsigned flags) {
    return flags == 0 ? std::int16_t{0} : static_cast<std::int16_t>(std::bit_width(flags) - 1);
  }

  /// Null for "t", which is a code but changes nothing.
  bool* flag_of(char16_t letter) {
    switch (letter) {
      case u'b':
        return &bold_;
      case u'i':
        return &italic_;
      case u'u':
        return &underline_;
      case u'p':
        return &superscript_;
      case u's':
        return &subscript_;
      case u'c':
        return &small_caps_;
      case u'k':
        return &strike_through_;
      default:
        return nullptr;
    }
  }

  bool bold_ = false;
  bool italic_ = false;
  bool underline_ = false;
  bool superscript_ = false;
  bool subscript_ = false;
  bool small_caps_ = false;
  bool strike_through_ = false;
  unsigned fonts_ = 0;
  unsigned colors_ = 0;
};

}  // namespace

std::int32_t parse_markup(const std::shared_ptr<const std::u16string>& text,
                          SegmentCollection& segments) {
  const std::u16string_view rest = *text;
  State state;
  std::int32_t line_codes = 0;
  std::size_t run = 0;
  const auto close_run = [&](std::size_t end) {
    if (end == run) return;
    auto segment = std::make_shared<Segment>(text, rest.substr(run, end - run));
    state.fill(segment->get_Style());
    segment->set_line_codes_before(line_codes);
    line_codes = 0;
    segments.append(std::move(segment));
  };
  for (std::size_t slash = find_any<u'/'>(rest, 0); slash < rest.size();) {
    const std::u16string_view code = rest.substr(slash, 3);
    if (!IsQELCode(code, sfAll)) {
      slash = find_any<u'/'>(rest, slash + 1);
      continue;
    }
    close_run(slash);
    if (code == u"/nl") {
      ++line_codes;
    } else {
      state.apply(code[1], code[2]);
    }
    run = slash + 3;
    slash = find_any<u'/'>(rest, run);
  }
  close_run(rest.size());
  return line_codes;
}

}  // namespace qel
