#pragma once

#include "qel/convert/Reader.h"
#include "qel/model/Parser.h"
#include "qel/model/RunSink.h"

namespace qel::convert {

/// The markup of a file, to which the line break at its end does not belong.
std::u16string_view without_last_break(std::u16string_view markup);

/// Reads markup in the lossless way.
class MarkupInput : public Reader {
 public:
  /// `sink` has to outlive the reader. With `is_file`, the line break at the end does not count.
  MarkupInput(RunSink& sink, bool is_file) : sink_(sink), is_file_(is_file) {}

  /// Also reads the codes that only conversions to RTF know.
  void read_codes_of_rtf() { scanner_.read_codes_of_rtf(); }

  std::size_t read(std::u16string_view part, bool is_last) override;
  void finish() override { sink_.finish(); }

 private:
  RunSink& sink_;
  bool is_file_;
  MarkupScanner scanner_{Way::lossless};
};

}  // namespace qel::convert
