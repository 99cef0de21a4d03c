#pragma once

#include "qel/convert/Reader.h"
#include "qel/model/Parser.h"
#include "qel/model/RunSink.h"

namespace qel::convert {

/// The markup of a file, to which the line break at its end does not belong.
template <class Char>
std::basic_string_view<Char> without_last_break(std::basic_string_view<Char> markup) {
  if (markup.ends_with('\n')) markup.remove_suffix(1);
  if (markup.ends_with('\r')) markup.remove_suffix(1);
  return markup;
}

/// Reads markup in the lossless way.
template <class Char>
class MarkupInput : public BasicReader<Char> {
 public:
  /// `sink` has to outlive the reader. With `is_file`, the line break at the end does not count.
  MarkupInput(BasicRunSink<Char>& sink, bool is_file) : sink_(sink), is_file_(is_file) {}

  /// Also reads the codes that only conversions to RTF know.
  void read_codes_of_rtf() { scanner_.read_codes_of_rtf(); }

  std::size_t read(std::basic_string_view<Char> part, bool is_last) override {
    const std::size_t size = part.size();
    if (is_last && is_file_) part = without_last_break(part);
    scanner_.go_on(part, is_last);
    read_runs(scanner_, sink_);
    return is_last ? size : scanner_.position();
  }
  void finish() override { sink_.finish(); }

 private:
  BasicRunSink<Char>& sink_;
  bool is_file_;
  BasicMarkupScanner<Char> scanner_{Way::lossless};
};

}  // namespace qel::convert
