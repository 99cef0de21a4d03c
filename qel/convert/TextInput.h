#pragma once

#include "qel/convert/Reader.h"
#include "qel/model/RunSink.h"

namespace qel::convert {

/// Reads plain text, in which nothing is a code.
class TextInput : public Reader {
 public:
  /// `sink` has to outlive the reader.
  explicit TextInput(RunSink& sink) : sink_(sink) {}

  std::size_t read(std::u16string_view part, bool is_last) override;
  void finish() override { sink_.finish(); }

 private:
  RunSink& sink_;
};

}  // namespace qel::convert
