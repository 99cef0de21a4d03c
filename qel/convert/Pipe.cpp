#include "qel/convert/Pipe.h"

#include "qel/base/Utf8.h"
#include "qel/richtext/RtfBytes.h"

namespace qel::convert {

Utf16Pipe::Utf16Pipe(std::unique_ptr<Flow> flow, Encoding encoding, OutputFormat to, Sink sink)
    : flow_(std::move(flow)),
      encoding_(encoding),
      writes_rtf_(is_rtf_of_some_kind(to)),
      sink_(std::move(sink)),
      take_([this](std::u16string_view text) { write(text); }) {}

void Utf16Pipe::read(std::string_view bytes, bool is_last) {
  window_.read(
      bytes, is_last,
      [&](std::u16string& out, std::string_view more) {
        return append_decoded(out, more, encoding_, is_last);
      },
      [&](std::u16string_view text) { return flow_->read(text, is_last); });
  flow_->drain(take_, false);
}

void Utf16Pipe::finish() {
  flow_->finish();
  flow_->drain(take_, true);
}

void Utf16Pipe::write(std::u16string_view text) {
  bytes_.clear();
  if (writes_rtf_) {
    richtext::append_rtf_bytes(bytes_, text);
  } else {
    append_utf8(bytes_, text);
  }
  sink_(bytes_);
}

void BytePipe::read(std::string_view bytes, bool is_last) {
  const bool is_text = encoding_ == Encoding::utf8;
  const std::string_view whole = is_text && !is_last ? without_cut_character(bytes) : bytes;
  const auto read = [&](std::string_view text) { return flow_->read(text, is_last); };
  if (window_.is_empty() && (!is_text || is_utf8(whole))) {
    // Nothing has to be copied.
    const std::size_t size = window_.count(read(whole));
    window_.keep(whole.substr(size), bytes.substr(whole.size()));
  } else {
    const auto decode = [&](std::string& out, std::string_view more) {
      if (is_text) return append_decoded(out, more, is_last);
      out.append(more);
      return more.size();
    };
    window_.read(bytes, is_last, decode, read);
  }
  flow_->drain(sink_, false);
}

void BytePipe::finish() {
  flow_->finish();
  flow_->drain(sink_, true);
}

}  // namespace qel::convert
