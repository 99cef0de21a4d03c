#pragma once

#include <QTextDocument>
#include <optional>
#include <string>

#include "qel/box/Change.h"
#include "qel/richtext/Document.h"
#include "qt/platform/FormatMapping.h"
#include "qt/platform/Positions.h"

class QTextCursor;

namespace qel::qt {

/// Shows the content of a box in a Qt document: U+2029 as a line separator, two code points that Qt
/// reserves as U+FFFD, and text in a symbol font by the characters of its signs. So each character
/// still takes as many positions as in the box.
class DocumentDisplay {
 public:
  /// The document must outlive this. Switches off its undo.
  explicit DocumentDisplay(QTextDocument& document);

  /// For what is shown from now on.
  void put_scheme(const Scheme& scheme) { scheme_ = scheme; }
  const Scheme& scheme() const { return scheme_; }
  /// Whether anything looks different in another scheme.
  static bool has_colors(const richtext::Document& content);
  /// From line to line, in per cent of one line, for what is shown already, too.
  void put_line_spacing(int per_cent);

  /// Replaces everything shown with the content.
  void load(const richtext::Document& content);
  /// Shows the change of the content; the rest of the content is shown already.
  void show(const richtext::Document& content, const box::Change& change);
  /// Whether `show` loads the whole content again for that change, because that is quicker.
  static bool loads(const richtext::Document& content, const box::Change& change);

  /// The edit that would give the content the text that somebody else has put in the document.
  struct Edit {
    richtext::Extent extent;
    std::u16string text;
  };
  /// Empty where the document's text is that of the content.
  std::optional<Edit> foreign_edit(const richtext::Document& content) const;
  /// Shows that part of the content again, in place of the text of such an edit.
  void take_back(const richtext::Document& content, const Edit& edit);

 private:
  void replace(Span span, const richtext::Document& content, richtext::Extent extent);
  void insert(QTextCursor& cursor, const richtext::Document& content, richtext::Extent extent);
  void put_formats(const richtext::Document& content, richtext::Extent extent);
  void put_alignments(const richtext::Document& content, richtext::Extent extent);
  Span span_of(richtext::Extent extent) const;

  QTextBlockFormat block_format(richtext::Alignment alignment) const;

  QTextDocument& document_;
  Scheme scheme_;
  int line_spacing_ = 100;
  bool shows_symbols_ = false;  // there may be text in a symbol font
};

}  // namespace qel::qt
