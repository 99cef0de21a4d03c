#include "qel/convert/RtfOutput.h"

#include "qel/convert/PreparedTables.h"
#include "qel/platform/Common.h"

namespace qel::convert {
namespace {

/// The surface on which fonts are tried out: it needs no window.
auto surface() { return Common::default_platform()->create_measuring_surface(); }

RTFParser lossless_parser() {
  RTFParser parser;
  parser.put_Lossless(true);
  return parser;
}

}  // namespace

std::u16string rtf_head(const Options& options) {
  QELIndexFonts fonts = options.fonts;  // writing the font table marks symbol fonts
  return rtf::document_head(fonts, *options.colors, *surface(), Way::lossless);
}

RtfOutput::RtfOutput(const Options& options) : fonts_(&options.fonts), body_(out()) {
  out().append(options.prepared ? options.prepared->rtf_head : rtf_head(options));
}

void RtfOutput::finish() {
  body_.finish();
  if (fonts_ != nullptr) out().append(rtf::document_end);
}

SimpleRtfOutput::SimpleRtfOutput(const Options& options)
    : options_(options), parser_(lossless_parser()), writer_(parser_) {}

void SimpleRtfOutput::finish() {
  writer_.finish();
  QELIndexFonts fonts = options_.fonts;
  out().append(writer_.document(fonts, *options_.colors, *surface()));
}

}  // namespace qel::convert
