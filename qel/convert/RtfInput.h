#pragma once

#include "qel/convert/Reader.h"
#include "qel/convert/Report.h"
#include "qel/richtext/RtfReader.h"

namespace qel::convert {

/// Reads RTF.
template <class Char>
class RtfInput : public BasicReader<Char> {
 public:
  /// `sink` has to outlive the reader. `base` gives what the document leaves open.
  RtfInput(const richtext::CharFormat& base, richtext::DocumentSink& sink, richtext::RtfUnits units,
           const richtext::RtfExtras& extras)
      : reader_(base, sink, richtext::RtfExtent::document, units, extras) {}

  std::size_t read(std::basic_string_view<Char> part, bool is_last) override {
    return reader_.read(part, is_last);
  }
  void finish() override { reader_.finish(); }
  bool is_closed() const override { return reader_.is_closed(); }
  void report(Report& report) const override {
    static_cast<richtext::DroppedParts&>(report.dropped) = reader_.counts();
    report.is_broken_off = reader_.is_open();
  }

 private:
  richtext::BasicRtfReader<Char> reader_;
};

}  // namespace qel::convert
