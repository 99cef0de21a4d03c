#include "qel/convert/RtfOutput.h"

#include <type_traits>

#include "qel/base/Ascii.h"
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

template <class Char>
RtfOutput<Char>::RtfOutput(const Options& options) : fonts_(&options.fonts), body_(this->out()) {
  QELIndexFonts fonts = options.fonts;  // writing the font table marks symbol fonts
  const std::u16string head = rtf::document_head(fonts, *options.colors, *surface(), Way::lossless);
  if constexpr (std::is_same_v<Char, char>) {
    richtext::append_rtf_bytes(this->out(), head);
  } else {
    this->out().append(head);
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
