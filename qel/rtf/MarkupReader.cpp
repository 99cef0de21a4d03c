#include "qel/rtf/MarkupReader.h"

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <utility>
#include <vector>

#include "qel/base/Scan.h"
#include "qel/richtext/DocumentReader.h"
#include "qel/rtf/CodeTable.h"

namespace qel::rtf {
namespace {

using richtext::CharFormat;
using richtext::Document;
using richtext::FormatPool;

constexpr std::size_t code_length = 3;

/// The format at a position in markup, as the numbers of its codes.
struct State {
  enum Level : std::uint8_t { on_line, raised, lowered };

  bool bold = false;
  bool italic = false;
  bool underline = false;
  bool strike_through = false;
  Level level = on_line;
  std::uint8_t font = 0;
  std::uint8_t color = 0;

  static constexpr std::size_t count = std::size_t{16} * 3 * 10 * 10;
  /// Below `count`.
  std::size_t number() const {
    const auto toggles = static_cast<std::size_t>(bold) | static_cast<std::size_t>(italic) << 1U |
                         static_cast<std::size_t>(underline) << 2U |
                         static_cast<std::size_t>(strike_through) << 3U;
    return ((toggles * 3 + level) * 10 + font) * 10 + color;
  }
};

class Reader {
 public:
  Reader(std::u16string_view markup, const MarkupFormats& formats)
      : markup_(markup), formats_(formats), ids_(State::count, unknown) {
    document_.reserve(markup.size());
  }

  Document read() {
    while (at_ < markup_.size()) {
      const std::size_t special = find_first(markup_, at_, [](auto c) {
        return (c < std::uint16_t{u' '}) | (c == std::uint16_t{u'/'}) | (c == std::uint16_t{u'\\'});
      });
      append(markup_.substr(at_, special - at_));
      at_ = special;
      if (at_ < markup_.size()) read_special();
    }
    document_.release_unused();
    return std::move(document_);
  }

 private:
  static constexpr FormatPool::Id unknown = ~FormatPool::Id{0};

  void read_special() {
    switch (const char16_t character = markup_[at_]) {
      case u'/':
        read_slash();
        return;
      case u'\\':
        read_backslashes();
        return;
      case u'\r':
      case u'\n':
      case u'\0':
        // RTF ignores them.
        ++at_;
        return;
      default:
        append({&character, 1});
        ++at_;
    }
  }

  void read_slash() {
    const std::u16string_view code = markup_.substr(at_, code_length);
    if (code == u"/nl") {
      document_.append_break(format(), richtext::Alignment::left);
    } else if (is_code(code) && act(code[1], code[2])) {
      is_known_ = false;
    } else {
      append(code.substr(0, 1));
      ++at_;
      return;
    }
    at_ += code_length;
  }

  /// Applies a code to the state; false for one that means nothing here.
  bool act(char16_t letter, char16_t character) {
    const auto digit = static_cast<std::uint8_t>(character - u'0');
    const bool is_on = digit != 0;
    switch (letter) {
      case u'b':
        state_.bold = is_on;
        return true;
      case u'i':
        state_.italic = is_on;
        return true;
      case u'u':
        state_.underline = is_on;
        return true;
      case u'k':
        state_.strike_through = is_on;
        return true;
      case u'p':
      case u'r':
        put_level(State::raised, is_on);
        return true;
      case u's':
      case u'l':
        put_level(State::lowered, is_on);
        return true;
      case u'f':
        state_.font = digit;
        return true;
      case u'y':
        state_.color = digit;
        return true;
      default:
        return false;
    }
  }

  /// The end of one level directly behind the beginning of the other does not undo that.
  void put_level(State::Level level, bool is_on) {
    const bool ends_other = !is_on && at_ == level_code_end_ && state_.level != level;
    if (ends_other) return;
    state_.level = is_on ? level : State::on_line;
    level_code_end_ = at_ + code_length;
  }

  /// Two backslashes before the rest of a code stand for its slash, as text. Two before a whole
  /// code whose RTF word looks like such a rest are lost: what remains of the word is text, and the
  /// code does not act.
  void read_backslashes() {
    const std::size_t end = std::min(markup_.find_first_not_of(u'\\', at_), markup_.size());
    std::u16string_view backslashes = markup_.substr(at_, end - at_);
    const std::u16string_view rest = markup_.substr(end, code_length);
    at_ = end;
    if (backslashes.size() >= 2 && rest.size() >= 2 && is_code_tail(rest[0], rest[1])) {
      backslashes.remove_suffix(2);
      append(backslashes);
      append(u"/");
    } else if (backslashes.size() >= 2 && is_code(rest) && has_word_like_itself(rest[1])) {
      backslashes.remove_suffix(2);
      append(backslashes);
      append(rest.substr(1));
      append(u" ");
      at_ += code_length;
    } else {
      append(backslashes);
    }
  }

  static bool has_word_like_itself(char16_t letter) {
    return letter == u'b' || letter == u'i' || letter == u'f';
  }

  void append(std::u16string_view text) {
    if (!text.empty()) document_.append(text, format());
  }

  FormatPool::Id format() {
    if (!std::exchange(is_known_, true)) {
      id_ = ids_[state_.number()];
      if (id_ == unknown) ids_[state_.number()] = id_ = document_.intern(translate());
    }
    return id_;
  }

  CharFormat translate() const {
    constexpr std::int16_t offset = 45;
    CharFormat format;
    format.bold = state_.bold;
    format.italic = state_.italic;
    format.underline = state_.underline;
    format.strike_through = state_.strike_through;
    format.offset = state_.level == State::on_line  ? std::int16_t{0}
                    : state_.level == State::raised ? offset
                                                    : static_cast<std::int16_t>(-offset);
    format.font_name = formats_.fonts[state_.font];
    format.color = formats_.colors[state_.color];
    format.size = formats_.size;
    return format;
  }

  std::u16string_view markup_;
  const MarkupFormats& formats_;
  Document document_;
  std::size_t at_ = 0;
  State state_;
  std::vector<FormatPool::Id> ids_;  // formats of the states that have had text
  FormatPool::Id id_ = 0;
  std::size_t level_code_end_ = 0;  // position behind the last code of a level
  bool is_known_ = false;           // whether `id_` is that of the state
};

}  // namespace

MarkupFormats markup_formats(const RTFParser& parser, QELIndexFonts& fonts,
                             const QELIndexColors& colors, const CharFormat& base) {
  // One character in each font and then in each colour; the first one is in font and colour 0.
  constexpr std::u16string_view sample = u"-";
  constexpr std::u16string_view digits = u"123456789";
  std::u16string samples(sample);
  for (const char16_t digit : digits) samples.append({u'/', u'f', digit}).append(sample);
  samples.append(u"/f0");
  for (const char16_t digit : digits) samples.append({u'/', u'y', digit}).append(sample);
  const Document read = richtext::read_document(parser.QELToRTF(samples, fonts, colors), base);
  // Names are written as they are, and RTF in one may break up the document.
  const bool is_whole = read.text() == std::u16string(1 + 2 * digits.size(), sample.front());
  const auto sampled = [&](std::size_t at) { return is_whole ? read.format_at(at) : base; };

  MarkupFormats formats;
  formats.size = sampled(0).size;
  for (std::size_t i = 0; i <= digits.size(); ++i) {
    formats.fonts[i] = sampled(i).font_name;
    formats.colors[i] = sampled(i == 0 ? 0 : digits.size() + i).color;
  }
  return formats;
}

Document read_markup(std::u16string_view markup, const MarkupFormats& formats) {
  return Reader(markup, formats).read();
}

}  // namespace qel::rtf
