#include "qel/convert/WholeFlow.h"

#include <algorithm>
#include <cstdint>
#include <string>
#include <utility>

#include "qel/base/Scan.h"
#include "qel/base/Utf16.h"
#include "qel/convert/ByteInput.h"
#include "qel/convert/FormatUse.h"
#include "qel/convert/HtmlInput.h"
#include "qel/convert/HtmlOutput.h"
#include "qel/convert/MarkupInput.h"
#include "qel/convert/Normalize.h"
#include "qel/convert/RtfInput.h"
#include "qel/convert/RunsJson.h"
#include "qel/model/StyleDecoder.h"
#include "qel/platform/Common.h"
#include "qel/richtext/RtfBytes.h"
#include "qel/richtext/RtfWriter.h"
#include "qel/rtf/RTFParser.h"

namespace qel::convert {
namespace {

/// Calls `take` with one part of the text after the other, so that what it makes of them is never
/// all in memory. Surrogate pairs and CR LF stay together.
void in_parts(std::u16string_view text, const Flow::Take& take) {
  constexpr std::size_t part = std::size_t{1} << 15U;
  const auto joins_next = [](char16_t unit) { return unit == u'\r' || is_high_surrogate(unit); };
  while (!text.empty()) {
    std::size_t length = std::min(part, text.size());
    if (length < text.size() && joins_next(text[length - 1])) ++length;
    take(text.substr(0, length));
    text.remove_prefix(length);
  }
}

void write_segments(const SegmentCollection& segments, bool line_codes, Writer& writer,
                    const Flow::Take& take) {
  constexpr std::size_t enough = std::size_t{1} << 15U;
  const auto breaks = [&](std::int32_t count) {
    for (; line_codes && count > 0; --count) writer.line_break({});
  };
  for (const auto& segment : segments) {
    breaks(segment->line_codes_before());
    writer.text(restore_escaped_codes(segment->get_Text()), segment->code_state());
    if (writer.size() >= enough) writer.drain(take);
  }
  breaks(segments.line_codes_at_end());
  writer.finish();
  writer.drain_all(take);
}

void drop_last_blank(SegmentCollection& segments) {
  const auto last = segments.Item(segments.Count());
  if (!last || !last->text().ends_with(u' ')) return;
  last->keep_first(last->text().size() - 1);
  if (last->length() == 0) segments.Remove(segments.Count());
}

/// The formats of markup.
FormatUse formats_of(std::u16string_view markup) {
  struct Texts : RunSink {
    void text(std::u16string_view /*text*/, const style_codes::CodeState& state) override {
      used.add(state);
    }
    void line_break(const style_codes::CodeState& /*state*/) override {}
    void finish() override {}
    FormatUse used;
  };
  Texts texts;
  MarkupInput<char16_t>(texts, false).read(markup, true);
  return texts.used;
}

/// One conversion in the stated way.
class Conversion {
 public:
  /// The arguments have to outlive this object.
  Conversion(const Options& options, std::u16string_view line_break, const Flow::Take& take,
             Dropped& dropped)
      : options_(options),
        fonts_(options.fonts),
        line_break_(line_break),
        take_(take),
        dropped_(dropped) {
    parser_.put_ConvertNLToSpace(options.switches.convert_nl_to_space);
    parser_.put_ConvertTabsToSpace(options.switches.convert_tabs_to_space);
    parser_.put_RecognizeCRLF(options.switches.recognize_crlf);
    parser_.put_RecognizeTabs(options.switches.recognize_tabs);
  }

  void from_markup(std::u16string markup) {
    switch (options_.to) {
      case OutputFormat::rtf:
        return in_parts(parser_.QELToRTF(markup, fonts_, colors()), take_);
      case OutputFormat::rtf_body:
        return in_parts(parser_.QELToRTFWithoutTables(markup), take_);
      case OutputFormat::simple_rtf:
        markup = parser_.QELToRTF(markup, fonts_, colors());
        ask_to_stop(options_);
        return in_parts(parser_.SimpleRTF(markup, fonts_, colors()), take_);
      default:
        return write_decoded(std::move(markup), true);
    }
  }

  void from_rtf(std::u16string_view rtf) {
    switch (options_.to) {
      case OutputFormat::simple_rtf:
        return in_parts(parser_.SimpleRTF(rtf, fonts_, colors()), take_);
      case OutputFormat::text:
        return write_text(parser_.RTFToText(rtf));
      case OutputFormat::rtf_body:
        return in_parts(parser_.QELToRTFWithoutTables(markup_of(rtf)), take_);
      case OutputFormat::qel:
        return in_parts(markup_of(rtf), take_);
      default:
        return write_decoded(markup_of(rtf), false);
    }
  }

  /// The text goes through RTF, so that a code typed in it stays text.
  void from_text(std::u16string_view text) {
    const richtext::CharFormat base = base_format(options_);
    const richtext::Document document = richtext::plain_document(text, base);
    ask_to_stop(options_);
    const std::u16string rtf = richtext::write_rtf(document, {0, document.size()}, base);
    ask_to_stop(options_);
    if (options_.to == OutputFormat::rtf) return in_parts(rtf, take_);
    from_rtf(rtf);
  }

 private:
  const QELIndexColors& colors() const { return *options_.colors; }
  std::u16string markup_of(std::u16string_view rtf) const {
    std::u16string markup = parser_.RTFToQEL(rtf, fonts_, colors());
    ask_to_stop(options_);
    return markup;
  }

  /// Does for markup what the parser's switches do for RTF.
  void decode_with_switches(StyleDecoder& decoder, std::u16string markup) const {
    const Switches& switches = options_.switches;
    // Every "/nl" is a line code, and a blank in its place cannot form another code.
    if (switches.convert_nl_to_space) markup = replace_all(std::move(markup), u"/nl", u" ");
    decoder.put_QELText(markup);
    SegmentCollection& segments = *decoder.get_Segments();
    if (!switches.recognize_tabs) {
      const std::u16string_view by = switches.convert_tabs_to_space ? u" " : u"";
      for (const auto& segment : segments) {
        segment->put_Text(replace_all(segment->get_Text(), u"\t", by));
      }
    }
    if (switches.convert_nl_to_space) drop_last_blank(segments);
  }

  void write_decoded(std::u16string markup, bool with_switches) {
    StyleDecoder decoder;
    if (with_switches) {
      decode_with_switches(decoder, std::move(markup));
    } else {
      decoder.put_QELText(markup);
    }
    ask_to_stop(options_);
    const bool recognizes_breaks = options_.switches.recognize_crlf;
    const std::int32_t line_codes = recognizes_breaks ? ofLineCodes : ofMarkup;
    if (options_.to == OutputFormat::segments) {
      RunsJson json;
      write_segments(*decoder.get_Segments(), recognizes_breaks, json, take_);
    } else if (options_.to == OutputFormat::html) {
      HtmlOutput<char16_t> html(options_);
      write_segments(*decoder.get_Segments(), recognizes_breaks, html, take_);
      html.count_lacking(dropped_);
    } else if (options_.to == OutputFormat::qelv6) {
      FormatUse used;
      for (const auto& segment : *decoder.get_Segments()) used.add(segment->code_state());
      used.count_lacking_in_v6(dropped_);
      in_parts(decoder.GetQELTextv6(line_codes, false, false), take_);
    } else if (options_.to == OutputFormat::text) {
      write_text(decoder.GetQELText(ofPlainText | line_codes, false, false));
    } else {
      in_parts(decoder.GetQELText(line_codes, false, false), take_);
    }
  }

  void write_text(std::u16string_view text) {
    in_parts(text, [this](std::u16string_view part) {
      take_(replace_all(std::u16string(part), u"\r\n", line_break_));
    });
  }

  const Options& options_;
  QELIndexFonts fonts_;  // a copy: writing the font table marks symbol fonts
  std::u16string_view line_break_;
  const Flow::Take& take_;
  Dropped& dropped_;
  RTFParser parser_;
};

}  // namespace

RewritingFlow::RewritingFlow(const Options& options, InputFormat from,
                             richtext::RtfReader::Units units)
    : base_(base_format(options)), builder_(document_) {
  if (from == InputFormat::html) {
    reader_ = std::make_unique<HtmlInput>(options, builder_);
  } else {
    reader_ = std::make_unique<RtfInput<char16_t>>(base_, builder_, units, options.extras);
  }
}

void RewritingFlow::drain(const Take& take, bool all) {
  if (all) in_parts(richtext::write_rtf(document_, {0, document_.size()}, base_), take);
}

void NormalizingFlow::finish() {
  if (flow_) {
    flow_->finish();
  } else if (is_file_) {
    markup_.resize(without_last_break(std::u16string_view(markup_)).size());
  }
}

void NormalizingFlow::drain(const Take& take, bool all) {
  if (flow_) flow_->drain([this](std::u16string_view part) { markup_.append(part); }, all);
  if (all) in_parts(normalized(markup_, [this] { ask_to_stop(options_); }), take);
}

/// Makes RTF of the input, which is HTML.
void StatedFlow::rewrite_html() {
  const std::u16string html = std::exchange(input_, {});
  RewritingFlow flow(options_, InputFormat::html, units_);
  flow.read(html, true);
  flow.finish();
  flow.drain([this](std::u16string_view part) { input_.append(part); }, true);
  flow.report(report_);
  units_ = richtext::RtfReader::Units::characters;
}

/// Makes RTF of the input that the parser can read: without bytes of a code page, and with what the
/// options ask for as text.
void StatedFlow::prepare_rtf() {
  if (units_ == richtext::RtfReader::Units::bytes) {
    input_ = richtext::rtf_from_bytes(bytes_of(input_));
    ask_to_stop(options_);
  }
  const richtext::CharFormat base = base_format(options_);
  richtext::Document document;
  richtext::DocumentBuilder builder(document);
  RtfInput<char16_t> reader(base, builder, richtext::RtfReader::Units::characters, options_.extras);
  reader.read(input_, true);
  reader.finish();
  ask_to_stop(options_);
  if (from_ == InputFormat::rtf) reader.report(report_);
  if (has_formats(options_.to)) {
    const rtf::TableIndexes indexes(options_.fonts, *options_.colors, rtf::Origin::rtf,
                                    Way::stated);
    rtf::LackingFormats lacking;
    for (std::size_t i = 0; i < document.runs().run_count(); ++i) {
      lacking.add(document.format(document.runs().run(i).value), indexes);
    }
    count_formats(report_.dropped, lacking);
  }
  if (options_.extras != richtext::RtfExtras()) {
    input_ = richtext::write_rtf(document, {0, document.size()}, base);
    ask_to_stop(options_);
  }
}

void StatedFlow::drain(const Take& take, bool all) {
  if (!all) return;
  const Common::ConversionSlots slots;
  Conversion conversion(options_, line_break_, take, report_.dropped);
  switch (from_) {
    case InputFormat::qel:
      if (options_.to == OutputFormat::rtf || options_.to == OutputFormat::simple_rtf) {
        report_.dropped.fonts = formats_of(input_).fonts_lacking(options_.fonts);
      }
      return conversion.from_markup(std::move(input_));
    case InputFormat::rtf:
      prepare_rtf();
      return conversion.from_rtf(input_);
    case InputFormat::text:
      return conversion.from_text(input_);
    case InputFormat::html:
      rewrite_html();
      ask_to_stop(options_);
      prepare_rtf();
      return conversion.from_rtf(input_);
  }
}

}  // namespace qel::convert
