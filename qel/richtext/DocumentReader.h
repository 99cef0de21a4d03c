#pragma once

#include <string_view>

#include "qel/richtext/CharFormat.h"
#include "qel/richtext/Document.h"
#include "qel/richtext/DocumentSink.h"

namespace qel::richtext {

/// Builds a document from what a reader finds.
class DocumentBuilder : public DocumentSink {
 public:
  /// `document` has to outlive this object.
  explicit DocumentBuilder(Document& document) : document_(document) {}

  FormatId intern(const CharFormat& format) override { return document_.intern(format); }
  void text(std::u16string_view text, FormatId format) override { document_.append(text, format); }
  void paragraph_break(FormatId format, Alignment alignment) override {
    document_.append_break(format, alignment);
  }
  void finish(Alignment alignment) override { document_.align_last(alignment); }

 private:
  Document& document_;
};

/// Whether the text is an RTF document: it begins with "{\rtf", after at most white space or a byte
/// order mark.
bool is_rtf(std::u16string_view text);

/// Reads the text as a document: as RTF, or as plain text in the base format when it is not RTF.
/// The base format also gives the font, size and colour of text for which RTF names none.
void read_into(std::u16string_view text, const CharFormat& base, DocumentSink& sink);
/// The document that is read so.
Document read_document(std::u16string_view text, const CharFormat& base);

/// The document with a blank in place of each break.
Document in_one_line(const Document& document);

}  // namespace qel::richtext
