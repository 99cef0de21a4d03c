#pragma once

#include <cstdint>
#include <string>
#include <string_view>

#include "qel/richtext/Alignment.h"
#include "qel/richtext/CharFormat.h"

namespace qel::richtext {

/// Receives what a document holds, in order, from the reader of a format.
class DocumentSink {
 public:
  using FormatId = std::uint32_t;

  virtual ~DocumentSink() = default;
  /// A number for a format of text that is about to come.
  virtual FormatId intern(const CharFormat& format) = 0;
  /// Text without breaks. It is valid during the call only; text that stands literally in what is
  /// read is passed as a view of that.
  virtual void text(std::u16string_view text, FormatId format) = 0;
  /// The same for text of ASCII, for which no other form need be made where that is all the same.
  virtual void ascii(std::string_view text, FormatId format) {
    this->text(std::u16string(text.begin(), text.end()), format);
  }
  /// A paragraph with this alignment ends here. The break itself has a format too.
  virtual void paragraph_break(FormatId format, Alignment alignment) = 0;
  /// The document ends, and with it its last paragraph.
  virtual void finish(Alignment alignment) = 0;
};

}  // namespace qel::richtext
