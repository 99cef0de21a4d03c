#pragma once

#include <qelcom.h>

#include <cstdint>
#include <string>
#include <string_view>

#include "qel/convert/Options.h"
#include "qel/convert/Report.h"
#include "qel/rtf/RTFParser.h"

namespace qel::com {

/// What a host asks of a conversion besides its text.
struct Wanted {
  ConversionFormat to;
  ConversionFormat from;
  // Tables, or nothing for those that are there at first.
  const VARIANT& fonts;
  const VARIANT& colors;
};

/// A parser's conversions between all formats, and what the last one of them dropped. They are
/// lossless where the parser is, and treat breaks and tabs as it does. Plain text gets lines that
/// end with CR LF.
class Conversions {
 public:
  /// The bytes of a file in the format. `source` is a text, or an array of the bytes of a file.
  std::string bytes(const RTFParser& parser, const VARIANT& source, const Wanted& wanted);
  /// The same as a text.
  std::u16string text(const RTFParser& parser, const VARIANT& source, const Wanted& wanted);
  /// Formats that are not given are those of the names.
  void file(const RTFParser& parser, std::u16string_view source, std::u16string_view target,
            const Wanted& wanted);

  const convert::Report& report() const { return report_; }
  /// How much of a kind was dropped, or of all when `kind` is empty. Raises for other kinds.
  std::int32_t dropped(std::u16string_view kind) const;

 private:
  convert::Report report_;
};

}  // namespace qel::com
