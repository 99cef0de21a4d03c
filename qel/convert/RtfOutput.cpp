#include "qel/convert/RtfOutput.h"

#include <type_traits>

#include "qel/base/Ascii.h"
#include "qel/convert/PreparedTables.h"
#include "qel/platform/Common.h"
#include "qel/richtext/RtfBytes.h"

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

template <class Char>
RtfOutput<Char>::RtfOutput(const Options& options) : fonts_(&options.fonts), body_(this->out()) {
  const PreparedTables* const prepared = options.prepared.get();
  if constexpr (std::is_same_v<Char, char>) {
    this->out() = prepared != nullptr ? prepared->rtf_head_in_bytes
                                      : richtext::rtf_to_bytes(rtf_head(options));
  } else {
    this->out() = prepared != nullptr ? prepared->rtf_head : rtf_head(options);
  }
}

template <class Char>
void RtfOutput<Char>::finish() {
  body_.finish();
  if (fonts_ != nullptr) this->out().append(ascii<Char, rtf::document_end>);
}

template class RtfOutput<char>;
template class RtfOutput<char16_t>;

SimpleRtfOutput::SimpleRtfOutput(const Options& options)
    : options_(options), parser_(lossless_parser()), writer_(parser_) {}

void SimpleRtfOutput::finish() {
  writer_.finish();
  QELIndexFonts fonts = options_.fonts;
  out().append(writer_.document(fonts, *options_.colors, *surface()));
}

}  // namespace qel::convert
