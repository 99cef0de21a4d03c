#pragma once

#include <QTextBlock>
#include <QTextCursor>
#include <QTextDocument>
#include <QTextFragment>
#include <algorithm>
#include <optional>
#include <unordered_map>

#include "qel/richtext/Document.h"
#include "qt/platform/FormatMapping.h"
#include "qt/platform/Positions.h"

/// Content between the library's documents and Qt's, run by run.
namespace qel::qt {

/// Inserts the content at the cursor, which has no selection, and leaves the cursor behind it. The
/// paragraphs that end within the content are aligned as they are there; the last one keeps
/// the alignment of what follows. U+2029 becomes a line separator, and two code points that Qt
/// keeps for itself U+FFFD.
void insert(QTextCursor& cursor, const richtext::Document& content, Color window_text);

/// The part as a document of its own.
richtext::Document read(const QTextDocument& document, Span span);
/// The text of that part, with CR LF for breaks.
std::u16string text_in(const QTextDocument& document, Span span);

/// A piece of a paragraph in one format, or the break behind it.
struct Piece {
  Span span;
  int format = 0;  ///< its number among the document's formats
  bool is_break = false;
};

/// Calls `visit` for the pieces of that part in order, until it returns false.
template <class Visit>
void for_each_piece(const QTextDocument& document, Span part, Visit visit) {
  for (QTextBlock block = document.findBlock(part.start);
       block.isValid() && block.position() < part.end; block = block.next()) {
    for (QTextBlock::iterator it = block.begin(); !it.atEnd(); ++it) {
      const QTextFragment fragment = it.fragment();
      const Span span = {std::max(part.start, fragment.position()),
                         std::min(part.end, fragment.position() + fragment.length())};
      if (span.start >= span.end) continue;
      if (!visit(Piece{span, fragment.charFormatIndex(), false})) return;
    }
    const QTextBlock next = block.next();
    const int break_at = block.position() + block.length() - 1;
    if (!next.isValid() || break_at < part.start || break_at >= part.end) continue;
    // The format of a break is that which the paragraph behind it begins with.
    if (!visit(Piece{{break_at, break_at + 1}, next.charFormatIndex(), true})) return;
  }
}

/// The library's formats of a document's format numbers, each worked out once.
class FormatReader {
 public:
  explicit FormatReader(const QTextDocument& document) : document_(document) {}
  const richtext::CharFormat& operator[](int format);

 private:
  const QTextDocument& document_;
  std::unordered_map<int, richtext::CharFormat> formats_;
};

/// The runs of equal format of `document`, beginning with the one that holds `from`, as
/// `platform::RichEdit::visit_runs` wants them.
void visit_runs(const QTextDocument& document, std::int32_t from,
                const platform::RunVisitor& visit);

}  // namespace qel::qt
