#include "qel/richtext/RtfWriter.h"

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <map>
#include <string_view>
#include <utility>
#include <vector>

#include "qel/base/Color.h"
#include "qel/base/Records.h"
#include "qel/base/Scan.h"
#include "qel/richtext/RtfFormats.h"
#include "qel/richtext/RtfTokens.h"

namespace qel::richtext {
namespace {

/// Numbers things in the order in which they are first asked for.
template <class Key>
class Numbering {
 public:
  std::size_t number_of(const Key& key) {
    const auto [entry, is_new] = numbers_.try_emplace(key, in_order_.size());
    if (is_new) in_order_.push_back(&entry->first);
    return entry->second;
  }
  const std::vector<const Key*>& in_order() const { return in_order_; }

 private:
  std::map<Key, std::size_t> numbers_;
  std::vector<const Key*> in_order_;
};

/// A format in the numbers that RTF has for it.
struct Written {
  bool bold = false;
  bool italic = false;
  bool underline = false;
  bool strike_through = false;
  bool small_caps = false;
  std::int32_t half_points_up = 0;
  std::size_t font = 0;
  std::size_t color = 0;         // 0 is the automatic colour, which no format has
  std::int32_t half_points = 0;  // 0 names none: such text takes the size of where it is read
};

class Writer {
 public:
  Writer(const Document& document, Extent extent, const CharFormat& base)
      : document_(document), extent_(extent) {
    if (extent.length() == 0) fonts_.number_of(base.font_name);
  }

  std::u16string write() {
    write_body();
    std::u16string head = u"{\\rtf1\\ansi\\ansicpg1252\\deff0{\\fonttbl";
    std::size_t number = 0;
    for (const std::u16string* name : fonts_.in_order()) {
      head.append(u"{\\f").append(records::from_integer(static_cast<std::int64_t>(number++)));
      append_font_name(head.append(u" "), *name);
      head.append(u";}");
    }
    head.append(u"}");
    if (!colors_.in_order().empty()) append_color_table(head);
    body_.insert(0, head).push_back(u'}');
    return std::move(body_);
  }

 private:
  void write_body() {
    body_.reserve(extent_.length() + extent_.length() / 8);
    write_alignment(extent_.start);
    for (std::size_t at = extent_.start; at < extent_.end;) {
      const RunList::Run run = document_.runs().run(document_.runs().find(at));
      const std::size_t end = std::min(run.end, extent_.end);
      write_format(written(run.value));
      write_text(at, end);
      at = end;
    }
    end_words();
  }

  /// Control words follow each other directly; one blank ends the last of them.
  void word(std::u16string_view name, std::int64_t number) {
    word(name);
    body_.append(records::from_integer(number));
  }
  void word(std::u16string_view name) {
    body_.append(name);
    after_word_ = true;
  }
  void end_words() {
    if (std::exchange(after_word_, false)) body_.push_back(u' ');
  }

  void write_alignment(std::size_t position) {
    const Alignment alignment = document_.alignment_at(position);
    if (alignment == alignment_) return;
    alignment_ = alignment;
    word(u"\\pard");
    if (alignment == Alignment::right) word(u"\\qr");
    if (alignment == Alignment::center) word(u"\\qc");
  }

  void write_toggle(bool Written::*field, const Written& next, std::u16string_view name) {
    if (next.*field == last_.*field) return;
    word(name);
    if (!(next.*field)) body_.push_back(u'0');
  }

  void write_format(const Written& next) {
    write_toggle(&Written::bold, next, u"\\b");
    write_toggle(&Written::italic, next, u"\\i");
    write_toggle(&Written::underline, next, u"\\ul");
    write_toggle(&Written::strike_through, next, u"\\strike");
    write_toggle(&Written::small_caps, next, u"\\scaps");
    if (next.half_points_up != last_.half_points_up) {
      const bool lowers = next.half_points_up < 0;
      word(lowers ? u"\\dn" : u"\\up", std::abs(next.half_points_up));
    }
    if (next.color != last_.color) word(u"\\cf", static_cast<std::int64_t>(next.color));
    if (next.font != last_.font) word(u"\\f", static_cast<std::int64_t>(next.font));
    if (next.half_points != last_.half_points) word(u"\\fs", next.half_points);
    last_ = next;
  }

  void write_text(std::size_t begin, std::size_t end) {
    const std::u16string_view text = std::u16string_view(document_.text()).substr(0, end);
    for (std::size_t at = begin; at < end;) {
      const std::size_t special = find_first(text, at, [](auto c) {
        return (c < std::uint16_t{u' '}) | (c == std::uint16_t{u'\\'}) |
               (c == std::uint16_t{u'{'}) | (c == std::uint16_t{u'}'});
      });
      if (special > at) {
        end_words();
        body_.append(text, at, special - at);
      }
      if (special < end) write_special(special);
      at = special + 1;
    }
  }

  void write_special(std::size_t position) {
    switch (const char16_t c = document_.text()[position]) {
      case u'\r':
        return;  // the line feed after it writes the break
      case u'\n':
        word(u"\\par");
        write_alignment(position + 1);
        return;
      case u'\t':
        word(u"\\tab");
        return;
      case u'{':
      case u'}':
        after_word_ = false;
        body_.push_back(u'\\');
        body_.push_back(c);
        return;
      default:
        after_word_ = false;
        append_hex_escape(body_, static_cast<std::uint8_t>(c));
    }
  }

  static void append_font_name(std::u16string& out, std::u16string_view name) {
    for (const char16_t c : name) {
      const bool means_something = c < u' ' || c == u'\\' || c == u'{' || c == u'}' || c == u';';
      if (means_something) {
        append_hex_escape(out, static_cast<std::uint8_t>(c));
      } else {
        out.push_back(c);
      }
    }
  }

  void append_color_table(std::u16string& out) const {
    out.append(u"{\\colortbl ;");
    for (const Color* color : colors_.in_order()) {
      out.append(u"\\red").append(records::from_integer(red_of(*color)));
      out.append(u"\\green").append(records::from_integer(green_of(*color)));
      out.append(u"\\blue").append(records::from_integer(blue_of(*color))).append(u";");
    }
    out.append(u"}");
  }

  const Written& written(FormatPool::Id id) {
    const auto [entry, is_new] = written_.try_emplace(id);
    if (is_new) entry->second = translate(document_.format(id));
    return entry->second;
  }

  Written translate(const CharFormat& format) {
    return {format.bold,
            format.italic,
            format.underline,
            format.strike_through,
            format.small_caps,
            offset_in_rtf(format.offset),
            fonts_.number_of(format.font_name),
            colors_.number_of(format.color) + 1,
            size_in_rtf(format.size)};
  }

  const Document& document_;
  Extent extent_;
  std::u16string body_;
  bool after_word_ = false;
  Written last_;
  Alignment alignment_ = Alignment::left;
  Numbering<std::u16string> fonts_;
  Numbering<Color> colors_;
  std::map<FormatPool::Id, Written> written_;
};

}  // namespace

std::u16string write_rtf(const Document& document, Extent extent, const CharFormat& base) {
  return Writer(document, extent, base).write();
}

}  // namespace qel::richtext
