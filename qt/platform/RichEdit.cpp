#include "qt/platform/RichEdit.h"

#include <QTextBlock>

#include "qel/qt/QtPlatform.h"
#include "qel/richtext/DocumentReader.h"
#include "qel/richtext/RtfWriter.h"
#include "qt/platform/DocumentMapping.h"
#include "qt/platform/FormatMapping.h"

namespace qel::qt {

using platform::Range;
using platform::Scope;
using richtext::Alignment;
using richtext::CharFormat;
using richtext::Document;
using richtext::FormatChange;
using richtext::MixedFormat;

RichEdit::~RichEdit() {
  if (!view_) return;
  view_->listen(nullptr);
  if (!view_->is_busy()) {
    delete view_;
    return;
  }
  view_->hide();
  view_->setParent(nullptr);
  view_->deleteLater();
}

Span RichEdit::span_of(Scope scope) const {
  return scope == Scope::document ? whole(document()) : view_->selected();
}

std::u16string RichEdit::text(Scope scope) const { return text_in(document(), span_of(scope)); }

void RichEdit::put_text(Scope scope, std::u16string_view text) {
  const Span span = span_of(scope);
  Document content = richtext::plain_document(text, from_qt(view_->format_for(span)));
  const QTextBlock first = document().findBlock(span.start);
  content.align({0, content.size()}, alignment_of(first.blockFormat()));
  put(scope, content);
}

std::u16string RichEdit::rtf(Scope scope) const {
  const Document content = read(document(), span_of(scope));
  return richtext::write_rtf(content, {0, content.size()}, from_qt(view_->typing_format()));
}

void RichEdit::put_rtf(Scope scope, std::u16string_view rtf) {
  put(scope, richtext::read_document(rtf, from_qt(view_->format_for(span_of(scope)))));
}

void RichEdit::put(Scope scope, const Document& content) {
  if (scope == Scope::document) {
    view_->load(content);
  } else {
    view_->replace(view_->selected(), content);
  }
}

Range RichEdit::selection() const { return box_range(document(), view_->selected()); }

void RichEdit::select(Range range) { view_->select(document_span(document(), range)); }

MixedFormat RichEdit::format() const {
  const Span span = view_->selected();
  if (span.is_empty()) return MixedFormat(from_qt(view_->typing_format()));
  FormatReader formats(document());
  std::optional<MixedFormat> mixed;
  int last = -1;
  for_each_piece(document(), span, [&](const Piece& piece) {
    if (std::exchange(last, piece.format) == piece.format) return true;
    if (mixed) {
      mixed->merge(formats[piece.format]);
    } else {
      mixed = MixedFormat(formats[piece.format]);
    }
    return true;
  });
  return mixed.value_or(MixedFormat(CharFormat()));
}

void RichEdit::change_format(const FormatChange& change) {
  const QTextCharFormat format =
      to_qt(change, QtPlatform::system_color_value(QtPlatform::window_text));
  if (view_->selected().is_empty()) {
    view_->mergeCurrentCharFormat(format);
    return;
  }
  if (change.is_in(this->format())) return;
  view_->change(BoxView::Telling::once, [&] {
    view_->end_undo_step();
    view_->textCursor().mergeCharFormat(format);
    view_->end_undo_step();
  });
}

std::optional<Alignment> RichEdit::alignment() const {
  const Span span = view_->selected();
  // A break at the end of the selection belongs to the paragraph that it ends.
  const QTextBlock last = document().findBlock(span.is_empty() ? span.end : span.end - 1);
  QTextBlock block = document().findBlock(span.start);
  const Alignment first = alignment_of(block.blockFormat());
  while (block != last) {
    block = block.next();
    if (alignment_of(block.blockFormat()) != first) return {};
  }
  return first;
}

void RichEdit::put_alignment(Alignment alignment) {
  if (this->alignment() == alignment) return;
  const Span span = view_->selected();
  view_->change(BoxView::Telling::once, [&] {
    QTextBlockFormat format;
    format.setAlignment(to_qt(alignment));
    QTextCursor cursor(view_->document());
    cursor.setPosition(span.start);
    cursor.setPosition(span.is_empty() ? span.end : span.end - 1, QTextCursor::KeepAnchor);
    cursor.mergeBlockFormat(format);
  });
}

void RichEdit::visit_runs(std::int32_t from, const platform::RunVisitor& visit) const {
  qt::visit_runs(document(), from, visit);
}

}  // namespace qel::qt
