#include "qel/convert/HtmlInput.h"

#include "qel/base/Error.h"
#include "qel/convert/ByteInput.h"
#include "qel/convert/Flow.h"

namespace qel::convert {
namespace {

/// Passes a document on, and asks now and then whether to go on.
class AskingSink : public richtext::DocumentSink {
 public:
  AskingSink(richtext::DocumentSink& sink, const Options& options)
      : sink_(sink), options_(options) {}

  FormatId intern(const richtext::CharFormat& format) override { return sink_.intern(format); }
  void text(std::u16string_view text, FormatId format) override {
    ask();
    sink_.text(text, format);
  }
  void paragraph_break(FormatId format, richtext::Alignment alignment) override {
    ask();
    sink_.paragraph_break(format, alignment);
  }
  void finish(richtext::Alignment alignment) override { sink_.finish(alignment); }

 private:
  void ask() {
    constexpr unsigned part = 1024;
    if (++calls_ % part == 0) ask_to_stop(options_);
  }

  richtext::DocumentSink& sink_;
  const Options& options_;
  unsigned calls_ = 0;
};

}  // namespace

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
  AskingSink sink(sink_, options_);
  dropped_ = options_.html_reader.read(html_, base_format(options_), sink);
}

}  // namespace qel::convert
