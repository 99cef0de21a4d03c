#include "qel/control/Conversion.h"

#include <algorithm>
#include <cstddef>
#include <limits>
#include <memory>

#include "qel/base/Scan.h"
#include "qel/platform/Common.h"
#include "qel/richtext/DocumentReader.h"
#include "qel/rtf/MarkupReader.h"
#include "qel/rtf/MarkupWriter.h"
#include "qel/rtf/SimpleRtfWriter.h"

namespace qel {

using platform::FormatRun;
using platform::RichEdit;
using platform::Scope;

namespace {

/// The measuring surface, for writing runs directly; null where the thread lacks something that a
/// conversion needs, or its conversion box is of a class of the host's own.
std::shared_ptr<platform::MeasuringSurface> surface_for_runs() {
  const auto box = Common::conversion_box();
  return box && box->holds_documents() ? Common::measuring_surface() : nullptr;
}

/// Whether there is no text after the last break.
bool is_closed(std::u16string_view text) { return text.empty() || text.ends_with(u'\n'); }

/// Calls `add` with the runs of that scope.
template <class Add>
void for_each_run(const RichEdit& box, Scope scope, Add add) {
  const bool all = scope == Scope::document;
  const platform::Range range =
      all ? platform::Range{0, std::numeric_limits<std::int32_t>::max()} : box.selection();
  if (range.length == 0) return;
  const auto start = static_cast<std::size_t>(range.start);
  const std::size_t end = start + static_cast<std::size_t>(range.length);
  box.visit_runs(range.start, [&](const FormatRun& run) {
    const auto at = static_cast<std::size_t>(run.start);
    const std::size_t from = std::max(at, start);
    add(run.format, run.text.substr(from - at, end - from));
    return at + run.text.size() < end;
  });
}

}  // namespace

std::u16string Conversion::markup_in(const RichEdit& box) const {
  if (surface_for_runs()) {
    rtf::BoxMarkupWriter writer(parser, fonts, colors);
    for_each_run(box, Scope::document,
                 [&](const auto& format, std::u16string_view text) { writer.add(format, text); });
    return writer.finish();
  }
  return markup_of(box.get_TextRTF(), parser.get_Lossless() || is_closed(box.get_Text()));
}

std::u16string Conversion::simple_rtf_in(const RichEdit& box, Scope scope) {
  if (const auto surface = surface_for_runs()) {
    rtf::SimpleRtfWriter writer(parser);
    const rtf::TableIndexes indexes(fonts, colors, rtf::Origin::box, parser.way());
    for_each_run(box, scope, [&](const auto& format, std::u16string_view text) {
      writer.text(text, indexes.state(format));
    });
    writer.finish();
    return writer.document(fonts, colors, *surface);
  }
  return parser.SimpleRTF(box.rtf(scope), fonts, colors);
}

std::u16string Conversion::markup_of(std::u16string_view rtf) const {
  const bool needs_no_break =
      parser.get_Lossless() ||
      is_closed(richtext::read_document(rtf, richtext::CharFormat()).text());
  return markup_of(std::u16string(rtf), needs_no_break);
}

/// Where the parser turns breaks into blanks, it drops one blank at the end. A break after the last
/// paragraph is added for it to drop.
std::u16string Conversion::markup_of(std::u16string rtf, bool is_closed) const {
  const std::size_t end = rtf.rfind(u'}');
  const bool closes = !is_closed && parser.get_ConvertNLToSpace();
  if (closes && end != std::u16string::npos) rtf.insert(end, u"\\par");
  return parser.RTFToQEL(rtf, fonts, colors);
}

std::u16string Conversion::markup_of(const richtext::Document& content) const {
  rtf::BoxMarkupWriter writer(parser, fonts, colors);
  for (std::size_t i = 0; i < content.runs().run_count(); ++i) {
    const richtext::RunList::Run run = content.runs().run(i);
    writer.add(content.format(run.value),
               std::u16string_view(content.text()).substr(run.start, run.end - run.start));
  }
  return writer.finish();
}

richtext::Document Conversion::content_of(std::u16string_view markup,
                                          const richtext::CharFormat& base) {
  return rtf::read_markup(markup, rtf::markup_formats(parser, fonts, colors, base));
}

namespace {

richtext::Document without_breaks_and_tabs(const richtext::Document& content) {
  richtext::Document line = richtext::in_one_line(content);
  line.put_characters(replace_all(line.text(), u"\t", u" "));
  return line;
}

}  // namespace

std::optional<richtext::Document> Conversion::pasted(platform::DragData& data,
                                                     const platform::Clipboard& clipboard,
                                                     const RichEdit& box, bool text_only) {
  const auto rtf = text_only ? std::nullopt : data.get(platform::rtf_format);
  const auto text = data.get(platform::text_format);
  const platform::BoxAppearance appearance = box.appearance();
  const auto [here, alignment] = box.text_defaults(Scope::selection);
  richtext::Document content;
  if (rtf && !rtf->empty()) {
    content = content_of(markup_of(*rtf), here);
  } else if (const auto read =
                 text_only ? std::nullopt : platform::read_html(data, &clipboard, here)) {
    content = content_of(markup_of(*read), here);
  } else if (text) {
    content = richtext::plain_document(*text, here);
  } else {
    return {};
  }
  content.align({0, content.size()}, alignment);
  const bool takes_breaks = appearance.multiline && appearance.takes_breaks;
  return takes_breaks ? std::move(content) : without_breaks_and_tabs(content);
}

}  // namespace qel
