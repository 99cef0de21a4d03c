#include "qel/rtf/MarkupReader.h"

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <utility>
#include <vector>

#include "qel/base/Scan.h"
#include "qel/model/Parser.h"
#include "qel/richtext/DocumentReader.h"
#include "qel/rtf/CodeTable.h"

namespace qel::rtf {
namespace {

using richtext::CharFormat;
using richtext::Document;
using richtext::FormatPool;
using style_codes::CodeState;

constexpr std::size_t code_length = 3;

/// Makes the formats of a document from the states of its codes.
class Formats {
 public:
  Formats(const MarkupFormats& formats, Document& document)
      : formats_(formats), document_(document), ids_(count, unknown) {}

  FormatPool::Id id(const CodeState& state) {
    const auto font = static_cast<std::size_t>(state.font);
    const auto color = static_cast<std::size_t>(state.color);
    FormatPool::Id& id = ids_[(state.attributes * indexes + font) * indexes + color];
    if (id == unknown) id = document_.intern(translate(state));
    return id;
  }

 private:
  static constexpr FormatPool::Id unknown = ~FormatPool::Id{0};
  static constexpr std::size_t indexes = 10;
  static constexpr std::size_t count = style_codes::unicode_bit * indexes * indexes;

  CharFormat translate(const CodeState& state) const {
    constexpr std::int16_t offset = 45;
    const auto has = [&](style_codes::AttributeBit bit) { return (state.attributes & bit) != 0; };
    CharFormat format;
    format.bold = has(style_codes::bold_bit);
    format.italic = has(style_codes::italic_bit);
    format.underline = has(style_codes::underline_bit);
    format.small_caps = has(style_codes::small_caps_bit);
    format.strike_through = has(style_codes::strike_through_bit);
    if (has(style_codes::subscript_bit)) format.offset = -offset;
    if (has(style_codes::superscript_bit)) format.offset = offset;
    format.font_name = formats_.fonts[static_cast<std::size_t>(state.font)];
    format.color = formats_.colors[static_cast<std::size_t>(state.color)];
    format.size = formats_.size;
    return format;
  }

  const MarkupFormats& formats_;
  Document& document_;
  std::vector<FormatPool::Id> ids_;  // of the states that have had text
};

class Reader {
 public:
  Reader(std::u16string_view markup, const MarkupFormats& formats)
      : markup_(markup), formats_(formats, document_) {
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
    const auto digit = static_cast<std::int16_t>(character - u'0');
    if (letter == u'p' || letter == u'r') {
      put_level(style_codes::superscript_bit, digit != 0);
    } else if (letter == u's' || letter == u'l') {
      put_level(style_codes::subscript_bit, digit != 0);
    } else if (letter == u'f') {
      state_.font = digit;
    } else if (letter == u'y') {
      state_.color = digit;
    } else if (letter == u'c') {
      return false;
    } else {
      put_attribute(style_codes::attribute_bit(letter), digit != 0);
    }
    return true;
  }

  void put_attribute(unsigned bit, bool is_on) {
    const unsigned others = state_.attributes & ~bit;
    state_.attributes = static_cast<std::uint8_t>(is_on ? others | bit : others);
  }

  /// The end of one level directly behind the beginning of the other does not undo that.
  void put_level(style_codes::AttributeBit level, bool is_on) {
    const bool ends_other = !is_on && at_ == level_code_end_ && (state_.attributes & level) == 0;
    if (ends_other) return;
    put_attribute(style_codes::superscript_bit | style_codes::subscript_bit, false);
    if (is_on) put_attribute(level, true);
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
    if (!std::exchange(is_known_, true)) id_ = formats_.id(state_);
    return id_;
  }

  std::u16string_view markup_;
  Document document_;
  Formats formats_;
  std::size_t at_ = 0;
  CodeState state_;
  FormatPool::Id id_ = 0;
  std::size_t level_code_end_ = 0;  // position behind the last code of a level
  bool is_known_ = false;           // whether `id_` is that of the state
};

/// Appends the text without the characters that RTF ignores.
void append_visible(Document& document, std::u16string_view text, FormatPool::Id format) {
  while (!text.empty()) {
    const std::size_t end = std::min(text.find(u'\0'), text.size());
    if (end > 0) document.append(text.substr(0, end), format);
    text.remove_prefix(std::min(end + 1, text.size()));
  }
}

Document read_lossless(std::u16string_view markup, const MarkupFormats& formats) {
  Document document;
  document.reserve(markup.size());
  Formats ids(formats, document);
  MarkupScanner scanner(markup, Way::lossless);
  scanner.read_codes_of_rtf();
  for (auto item = scanner.next(); item != MarkupScanner::Item::end; item = scanner.next()) {
    const FormatPool::Id id = ids.id(shown_state(scanner.state()));
    if (item == MarkupScanner::Item::text) {
      append_visible(document, scanner.text(), id);
    } else {
      document.append_break(id, richtext::Alignment::left);
    }
  }
  document.release_unused();
  return document;
}

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
  formats.way = parser.way();
  formats.size = sampled(0).size;
  for (std::size_t i = 0; i <= digits.size(); ++i) {
    formats.fonts[i] = sampled(i).font_name;
    formats.colors[i] = sampled(i == 0 ? 0 : digits.size() + i).color;
  }
  return formats;
}

Document read_markup(std::u16string_view markup, const MarkupFormats& formats) {
  if (formats.way == Way::lossless) return read_lossless(markup, formats);
  return Reader(markup, formats).read();
}

}  // namespace qel::rtf
