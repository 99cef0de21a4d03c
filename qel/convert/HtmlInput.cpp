#include "qel/convert/HtmlInput.h"

#include "qel/base/Error.h"
#include "qel/convert/ByteInput.h"
#include "qel/convert/Flow.h"

namespace qel::convert {

HtmlInput::HtmlInput(const Options& options, richtext::DocumentSink& sink)
    : options_(options), sink_(sink) {
  if (options.html_reader.read) return;
  throw Error(Error::object_not_set, "convert", "HTML cannot be read: there is no reader for it");
}

std::size_t HtmlInput::read(std::u16string_view part, bool /*is_last*/) {
  html_.append(bytes_of(part));
  return part.size();
}

void HtmlInput::finish() {
  dropped_ = options_.html_reader.read(html_, base_format(options_), sink_);
}

}  // namespace qel::convert
