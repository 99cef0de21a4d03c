#pragma once

#include "qel/base/Ascii.h"
#include "qel/base/Scan.h"
#include "qel/convert/Reader.h"
#include "qel/model/RunSink.h"

namespace qel::convert {

/// Reads plain text, in which nothing is a code.
template <class Char>
class TextInput : public BasicReader<Char> {
 public:
  /// `sink` has to outlive the reader.
  explicit TextInput(BasicRunSink<Char>& sink) : sink_(sink) {}

  std::size_t read(std::basic_string_view<Char> part, bool is_last) override {
    const style_codes::CodeState plain;
    // The second half of a break may follow.
    const bool is_cut = !is_last && part.ends_with('\r');
    if (is_cut) part.remove_suffix(1);
    for (std::size_t at = 0; at < part.size();) {
      const std::size_t end = find_any<u'\r', u'\n'>(part, at);
      if (end > at) sink_.text(part.substr(at, end - at), plain);
      if (end == part.size()) break;
      sink_.line_break(plain);
      at = end + (part.substr(end, 2) == ascii<Char, "\r\n"> ? 2 : 1);
    }
    return part.size();
  }
  void finish() override { sink_.finish(); }

 private:
  BasicRunSink<Char>& sink_;
};

}  // namespace qel::convert
