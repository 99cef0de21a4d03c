#include "Conversion.h"

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <memory>
#include <utility>

#include "SegmentsJson.h"
#include "TextInput.h"
#include "qel/base/Scan.h"
#include "qel/base/Utf16.h"
#include "qel/base/Utf8.h"
#include "qel/box/Box.h"
#include "qel/model/StyleDecoder.h"
#include "qel/platform/Common.h"
#include "qel/richtext/RtfBytes.h"
#include "qel/rtf/RTFParser.h"

namespace qel::command {
namespace {

/// Calls `write` with one part of the text after the other, so that the whole output is never in
/// memory. Surrogate pairs and CR LF stay together.
template <class Write>
void in_parts(std::u16string_view text, Write write) {
  constexpr std::size_t part = std::size_t{1} << 15U;
  const auto joins_next = [](char16_t unit) { return unit == u'\r' || is_high_surrogate(unit); };
  while (!text.empty()) {
    std::size_t length = std::min(part, text.size());
    if (length < text.size() && joins_next(text[length - 1])) ++length;
    write(text.substr(0, length));
    text.remove_prefix(length);
  }
}

void replace_tabs(SegmentCollection& segments, std::u16string_view replacement) {
  for (const auto& segment : segments) {
    const std::u16string_view text = segment->text();
    if (find_any<u'\t'>(text, 0) == text.size()) continue;
    segment->put_Text(replace_all(std::u16string(text), u"\t", replacement));
  }
}

/// Puts blanks, in the format of the text before them, in place of the line codes of text that was
/// decoded in the lossless way; or nothing.
void replace_line_codes(SegmentCollection& segments, bool by_blanks) {
  std::shared_ptr<Segment> last;
  const auto put_blanks = [&](Segment& segment, std::int32_t count) {
    const std::u16string blanks(by_blanks ? static_cast<std::size_t>(count) : 0, u' ');
    if (blanks.empty()) return;
    if (last) {
      last->put_Text(last->get_Text().append(blanks));
    } else {
      segment.put_Text(blanks + segment.get_Text());
    }
  };
  for (const auto& segment : segments) {
    put_blanks(*segment, segment->line_codes_before());
    segment->put_line_codes_before(0);
    last = segment;
  }
  const std::int32_t at_end = segments.line_codes_at_end();
  segments.put_line_codes_at_end(0);
  if (last) return put_blanks(*last, at_end);
  const auto only = segments.Add({}, iStyle());
  put_blanks(*only, at_end);
}

void drop_last_blank(SegmentCollection& segments) {
  const auto last = segments.Item(segments.Count());
  if (!last || !last->text().ends_with(u' ')) return;
  last->keep_first(last->text().size() - 1);
  if (last->length() == 0) segments.Remove(segments.Count());
}

/// Each step takes ownership of the text and has freed it when it returns.
class Conversion {
 public:
  Conversion(const ConversionOptions& options, const Sink& sink)
      : options_(options), switches_(options.switches), fonts_(options.tables.fonts), sink_(sink) {
    parser_.put_ConvertNLToSpace(switches_.convert_nl_to_space);
    parser_.put_ConvertTabsToSpace(switches_.convert_tabs_to_space);
    parser_.put_RecognizeCRLF(switches_.recognize_crlf);
    parser_.put_RecognizeTabs(switches_.recognize_tabs);
    parser_.put_Lossless(is_lossless());
  }

  void from_markup(std::u16string&& markup) {
    switch (options_.to) {
      case OutputFormat::rtf:
        return write_rtf(rtf_of(std::move(markup)));
      case OutputFormat::rtf_body:
        return write_rtf(body_of(std::move(markup)));
      default:
        return write_with_switches(std::move(markup));
    }
  }

  void from_rtf(std::u16string&& rtf) {
    const bool keeps_all = switches_ == Switches() || !is_lossless();
    if (!keeps_all && options_.to != OutputFormat::rtf) {
      return write_with_switches(markup_of(std::move(rtf)));
    }
    switch (options_.to) {
      case OutputFormat::rtf:
        return write_rtf(rewritten(std::move(rtf)));
      case OutputFormat::simple_rtf:
        return write_rtf(simplified(std::move(rtf)));
      case OutputFormat::text:
        return write_text(text_of(std::move(rtf)));
      case OutputFormat::rtf_body:
        return write_rtf(body_of(markup_of(std::move(rtf))));
      case OutputFormat::qel:
        return write_utf8(markup_of(std::move(rtf)));
      default:
        return write_rtf_decoded(std::move(rtf));
    }
  }

  /// The text goes through RTF, so that a code typed in it stays text.
  void from_text(std::u16string&& text) {
    std::u16string rtf = rtf_of_text(std::move(text));
    if (options_.to == OutputFormat::rtf) return write_rtf(rtf);
    from_rtf(std::move(rtf));
  }

 private:
  bool is_lossless() const { return options_.way == Way::lossless; }
  const QELIndexColors& colors() const { return *options_.tables.colors; }

  std::u16string rtf_of(std::u16string&& markup) {
    const std::u16string taken = std::move(markup);
    return parser_.QELToRTF(taken, fonts_, colors());
  }

  std::u16string body_of(std::u16string&& markup) const {
    const std::u16string taken = std::move(markup);
    return parser_.QELToRTFWithoutTables(taken);
  }

  std::u16string markup_of(std::u16string&& rtf) const {
    return parser_.RTFToQEL(rtf, fonts_, colors());
  }

  std::u16string simplified(std::u16string&& rtf) {
    const std::u16string taken = std::move(rtf);
    return parser_.SimpleRTF(taken, fonts_, colors());
  }

  std::u16string text_of(std::u16string&& rtf) const {
    return parser_.RTFToText(rtf);
  }

  /// Text without a format of its own gets the default font, size and colour.
  void prepare(box::Box& box) const {
    platform::BoxAppearance appearance = box.appearance();
    appearance.font_name = fonts_.get_Font(0);
    appearance.font_size = fonts_.get_FontSize();
    box.put_appearance(appearance);
    box.put_SelColor(colors().get_Color(0));
  }

  std::u16string rewritten(std::u16string&& rtf) const {
    box::Box box;
    prepare(box);
    {
      const std::u16string taken = std::move(rtf);
      box.put_TextRTF(taken);
    }
    return box.get_TextRTF();
  }

  std::u16string rtf_of_text(std::u16string&& text) const {
    box::Box box;
    prepare(box);
    {
      const std::u16string taken = std::move(text);
      box.put_Text(taken);
    }
    return box.get_TextRTF();
  }

  void decode(StyleDecoder& decoder, std::u16string&& markup) const {
    const std::u16string taken = std::move(markup);
    decoder.put_Lossless(is_lossless());
    decoder.put_QELText(taken);
  }

  /// Does for markup what the parser's switches do for RTF.
  void decode_with_switches(StyleDecoder& decoder, std::u16string&& markup) const {
    // Every "/nl" is a line code, and a blank in its place cannot form another code.
    if (switches_.convert_nl_to_space && !is_lossless()) {
      markup = replace_all(std::move(markup), u"/nl", u" ");
    }
    decode(decoder, std::move(markup));
    SegmentCollection& segments = *decoder.get_Segments();
    const bool keeps_breaks = switches_.recognize_crlf && !switches_.convert_nl_to_space;
    if (is_lossless() && !keeps_breaks) {
      replace_line_codes(segments, switches_.convert_nl_to_space);
    }
    if (!switches_.recognize_tabs) {
      replace_tabs(segments, switches_.convert_tabs_to_space ? u" " : u"");
    }
    if (switches_.convert_nl_to_space) drop_last_blank(segments);
  }

  /// The same for markup that becomes RTF. The parser knows switches itself in the stated way.
  std::u16string with_switches(std::u16string&& markup) const {
    if (!is_lossless() || switches_ == Switches()) return std::move(markup);
    StyleDecoder decoder;
    decode_with_switches(decoder, std::move(markup));
    return decoder.get_QELText();
  }

  void write_with_switches(std::u16string&& markup) {
    switch (options_.to) {
      case OutputFormat::rtf_body:
        return write_rtf(body_of(with_switches(std::move(markup))));
      case OutputFormat::simple_rtf:
        return write_rtf(simplified(rtf_of(with_switches(std::move(markup)))));
      default:
        break;
    }
    StyleDecoder decoder;
    decode_with_switches(decoder, std::move(markup));
    write_decoded(decoder);
  }

  void write_rtf_decoded(std::u16string&& rtf) {
    StyleDecoder decoder;
    decode(decoder, markup_of(std::move(rtf)));
    write_decoded(decoder);
  }

  void write_decoded(StyleDecoder& decoder) {
    const std::int32_t line_codes = switches_.recognize_crlf ? ofLineCodes : ofMarkup;
    switch (options_.to) {
      case OutputFormat::segments:
        return write_segments(*decoder.get_Segments(), switches_.recognize_crlf, sink_);
      case OutputFormat::qelv6:
        return write_utf8(decoder.GetQELTextv6(line_codes, false, false));
      case OutputFormat::text:
        return write_text(decoder.GetQELText(ofPlainText | line_codes, false, false));
      default:
        return write_utf8(decoder.GetQELText(line_codes, false, false));
    }
  }

  void write_utf8(std::u16string_view text) {
    in_parts(text, [this](std::u16string_view part) { sink_(to_utf8(part)); });
  }

  void write_text(std::u16string_view text) {
    in_parts(text, [this](std::u16string_view part) {
      sink_(to_utf8(replace_all(std::u16string(part), u"\r\n", u"\n")));
    });
  }

  void write_rtf(std::u16string_view rtf) {
    in_parts(rtf, [this](std::u16string_view part) { sink_(richtext::rtf_to_bytes(part)); });
  }

  const ConversionOptions& options_;
  const Switches& switches_;
  QELIndexFonts fonts_;  // a copy: writing the font table marks symbol fonts
  const Sink& sink_;
  RTFParser parser_;
};

/// The line break that ends a file is not part of its markup.
std::u16string markup_of_file(std::u16string&& text, Way way) {
  if (way == Way::stated) return std::move(text);
  if (text.ends_with(u'\n')) text.pop_back();
  if (text.ends_with(u'\r')) text.pop_back();
  return std::move(text);
}

InputFormat format_of(std::string_view input, std::optional<InputFormat> named) {
  if (named && *named != InputFormat::rtf) return *named;
  if (is_rtf(input)) return InputFormat::rtf;
  // Input that should be RTF and is not is text, as in a box.
  return named ? InputFormat::text : InputFormat::qel;
}

}  // namespace

void convert(std::string input, const ConversionOptions& options, const Sink& sink) {
  const Common::ConversionSlots slots;
  Conversion conversion(options, sink);
  switch (format_of(input, options.from)) {
    case InputFormat::qel:
      return conversion.from_markup(markup_of_file(decode_text(std::move(input)), options.way));
    case InputFormat::rtf:
      return conversion.from_rtf(decode_rtf(std::move(input)));
    case InputFormat::text:
      return conversion.from_text(decode_text(std::move(input)));
  }
}

std::string convert(std::string input, const ConversionOptions& options) {
  std::string output;
  convert(std::move(input), options, [&](std::string_view bytes) { output.append(bytes); });
  return output;
}

}  // namespace qel::command
