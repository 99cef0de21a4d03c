#include "qel/convert/HtmlFragment.h"

#include <algorithm>
#include <array>
#include <cstddef>
#include <cstdint>
#include <memory>
#include <string_view>
#include <vector>

#include "qel/convert/HtmlTags.h"
#include "qel/convert/HtmlWriter.h"

namespace qel::convert {
namespace {

using richtext::Alignment;
using richtext::CharFormat;
using richtext::Document;
using richtext::Extent;
using style_codes::CodeState;

constexpr std::size_t most = 9;  // fonts, or colours, in a table

/// Places of values in a table: 0 is the default.
template <class Value>
struct Palette {
  std::vector<Value> values;

  std::int16_t find(const Value& value) const {
    const auto found = std::find(values.begin(), values.end(), value);
    return found == values.end() ? std::int16_t{0}
                                 : static_cast<std::int16_t>(found - values.begin() + 1);
  }
  bool has_room_for(const Value& value) const { return find(value) > 0 || values.size() < most; }
  /// Whether the value is new.
  bool add(const Value& value) {
    if (find(value) > 0) return false;
    values.push_back(value);
    return true;
  }
};

class FragmentWriter {
 public:
  explicit FragmentWriter(const Document& document) : document_(document) {}

  std::u16string write() {
    const bool is_inline = document_.text().find(u'\n') == std::u16string::npos &&
                           document_.alignment_at(0) == Alignment::left;
    if (is_inline) {
      write_line({0, document_.size()});
      return std::move(out_);
    }
    for (std::size_t at = 0;;) {
      const std::size_t end = std::min(document_.text().find(u"\r\n", at), document_.size());
      write_paragraph({at, end});
      if (end == document_.size()) break;
      at = end + 2;
    }
    return std::move(out_);
  }

 private:
  void write_paragraph(Extent extent) {
    // Word processors do not know a zero without a unit.
    out_.append(u"<p style=\"margin:0pt");
    const Alignment alignment = document_.alignment_at(extent.start);
    if (alignment == Alignment::right) out_.append(u";text-align:right");
    if (alignment == Alignment::center) out_.append(u";text-align:center");
    out_.append(u"\">");
    write_line(extent);
    // It would have no height.
    if (extent.length() == 0) out_.append(u"<br>");
    out_.append(u"</p>");
  }

  /// Calls `visit(format, extent)` with each run from there on, until it returns false.
  template <class Visit>
  void for_each_run(Extent extent, Visit visit) const {
    const richtext::RunList& runs = document_.runs();
    for (std::size_t at = extent.start; at < extent.end;) {
      const richtext::RunList::Run run = runs.run(runs.find(at));
      const std::size_t end = std::min(run.end, extent.end);
      if (!visit(document_.format(run.value), Extent{at, end})) return;
      at = end;
    }
  }

  void write_line(Extent extent) {
    while (extent.length() > 0) {
      const std::size_t end = put_in_tables(extent);
      BasicHtmlWriter<char16_t> writer(out_, tags_, HtmlOptions());
      for_each_run({extent.start, end}, [&](const CharFormat& format, Extent run) {
        const std::u16string_view text = document_.text();
        writer.text(text.substr(run.start, run.length()), state_of(format));
        return true;
      });
      writer.finish();
      extent.start = end;
    }
  }

  /// Makes tables with what the line's formats need; returns where they have no room for more.
  std::size_t put_in_tables(Extent extent) {
    bool is_new = tags_ == nullptr;
    std::size_t end = add_to_tables(extent, is_new);
    if (end < extent.end) {
      fonts_.values.clear();
      colors_.values.clear();
      is_new = true;
      end = add_to_tables(extent, is_new);
    }
    if (is_new) make_tags();
    return end;
  }

  std::size_t add_to_tables(Extent extent, bool& is_new) {
    std::size_t end = extent.start;
    for_each_run(extent, [&](const CharFormat& format, Extent run) {
      const bool has_color = format.color != 0;
      if (!fonts_.has_room_for(format.font_name)) return false;
      if (has_color && !colors_.has_room_for(format.color)) return false;
      if (fonts_.add(format.font_name)) is_new = true;
      if (has_color && colors_.add(format.color)) is_new = true;
      end = run.end;
      return true;
    });
    return end;
  }

  void make_tags() {
    QELIndexFonts fonts;
    QELIndexColors colors;
    std::int16_t index = 0;
    // Fonts that are there already would make others of the same name look different.
    while (index <= static_cast<std::int16_t>(most)) fonts.put_Font(index++, u"");
    index = 0;
    for (const std::u16string& name : fonts_.values) fonts.put_Font(++index, name);
    index = 0;
    for (const Color color : colors_.values) colors.put_Color(++index, color);
    tags_ = std::make_shared<const HtmlTags<char16_t>>(fonts, colors, HtmlOptions());
  }

  CodeState state_of(const CharFormat& format) const {
    unsigned bits = 0;
    if (format.bold) bits |= style_codes::bold_bit;
    if (format.italic) bits |= style_codes::italic_bit;
    if (format.underline) bits |= style_codes::underline_bit;
    if (format.strike_through) bits |= style_codes::strike_through_bit;
    if (format.small_caps) bits |= style_codes::small_caps_bit;
    if (format.offset > 0) bits |= style_codes::superscript_bit;
    if (format.offset < 0) bits |= style_codes::subscript_bit;
    return {static_cast<std::uint8_t>(bits), fonts_.find(format.font_name),
            colors_.find(format.color)};
  }

  const Document& document_;
  std::u16string out_;
  Palette<std::u16string> fonts_;
  Palette<Color> colors_;
  std::shared_ptr<const HtmlTags<char16_t>> tags_;
};

}  // namespace

std::u16string html_fragment(const Document& document) { return FragmentWriter(document).write(); }

}  // namespace qel::convert
