#pragma once

#include <string>

#include "qel/convert/Options.h"
#include "qel/convert/Reader.h"

namespace qel::convert {

/// Reads HTML, all at its end.
class HtmlInput : public Reader {
 public:
  /// The arguments have to outlive the reader. Raises an error where the options have no reader.
  HtmlInput(const Options& options, richtext::DocumentSink& sink);

  /// The units are bytes.
  std::size_t read(std::u16string_view part, bool is_last) override;
  void finish() override;
  void report(Report& report) const override {
    static_cast<richtext::DroppedParts&>(report.dropped) = dropped_;
  }

 private:
  const Options& options_;
  richtext::DocumentSink& sink_;
  std::string html_;
  richtext::DroppedParts dropped_;
};

}  // namespace qel::convert
