#pragma once

#include <QTextDocument>
#include <optional>
#include <string>

#include "qel/box/Change.h"
#include "qel/richtext/Document.h"
#include "qt/platform/Positions.h"

class QTextCursor;

namespace qel::qt {

/// A Qt document that shows the content of a box. U+2029 is shown as a line separator, and two code
/// points that Qt keeps for itself as U+FFFD; each character takes as many positions.
class DocumentDisplay {
 public:
  /// The document must outlive this. Nothing in it can be undone from now on.
  explicit DocumentDisplay(QTextDocument& document);

  /// Shows the content in place of all that was shown.
  void load(const richtext::Document& content);
  /// Shows what has become of the content, of which all else is shown already.
  void show(const richtext::Document& content, const box::Change& change);
  /// Whether all of the content is shown anew then, because that is quicker.
  static bool loads(const richtext::Document& content, const box::Change& change);

  /// An edit by which the content would become what somebody else has made of the document.
  struct Edit {
    richtext::Extent extent;
    std::u16string text;
  };
  /// Nothing where the text is that of the content.
  std::optional<Edit> foreign_edit(const richtext::Document& content) const;
  /// Shows that part of the content again in place of what such an edit has put there.
  void take_back(const richtext::Document& content, const Edit& edit);

 private:
  void replace(Span span, const richtext::Document& content, richtext::Extent extent);
  void insert(QTextCursor& cursor, const richtext::Document& content,
              richtext::Extent extent) const;
  void put_formats(const richtext::Document& content, richtext::Extent extent);
  void put_alignments(const richtext::Document& content, richtext::Extent extent);
  Span span_of(richtext::Extent extent) const;

  QTextDocument& document_;
};

}  // namespace qel::qt
