#include "qt/platform/BoxView.h"

#include <QFont>
#include <QMimeData>
#include <QPalette>
#include <QTextBlock>
#include <QTextDocument>

#include "qel/qt/QtPlatform.h"
#include "qel/richtext/DocumentReader.h"
#include "qel/richtext/RtfWriter.h"
#include "qt/platform/BoxDrag.h"
#include "qt/platform/DocumentMapping.h"
#include "qt/platform/FormatMapping.h"
#include "qt/platform/MimeData.h"
#include "qt/platform/Text.h"

namespace qel::qt {

using platform::BoxAppearance;
using richtext::Document;
using richtext::FormatChange;

namespace {

constexpr std::int32_t window_background = 5;
constexpr auto wrap_at_words = QTextOption::WrapAtWordBoundaryOrAnywhere;

Color window_text() { return QtPlatform::system_color_value(QtPlatform::window_text); }

/// Whether a word is so long that Qt, which looks for its end at every line, would be slow.
bool has_endless_word(std::u16string_view text) {
  constexpr std::size_t endless = 2000;
  std::size_t begin = 0;
  while (text.size() - begin > endless) {
    const std::size_t blank = text.substr(begin, endless).find_last_of(u" \t\r\n");
    if (blank == std::u16string_view::npos) return true;
    begin += blank + 1;
  }
  return false;
}

Qt::ScrollBarPolicy policy(bool shown) {
  return shown ? Qt::ScrollBarAsNeeded : Qt::ScrollBarAlwaysOff;
}

}  // namespace

BoxView::BoxView(QWidget* parent) : QTextEdit(parent), drag_(std::make_unique<BoxDrag>(*this)) {
  setFrameStyle(QFrame::NoFrame);
  setTabChangesFocus(true);
  setAcceptRichText(true);
  setWordWrapMode(wrap_at_words);
  viewport()->setMouseTracking(true);
  document()->setDocumentMargin(2);
  connect(document(), &QTextDocument::contentsChange, this, [this] { has_changed_ = true; });
  connect(document(), &QTextDocument::contentsChanged, this, &BoxView::note_change);
  connect(this, &QTextEdit::cursorPositionChanged, this, &BoxView::follow_caret);
  change(Telling::never, [this] { load({}); });
  put_appearance(BoxAppearance());
}

BoxView::~BoxView() = default;

void BoxView::put_appearance(const BoxAppearance& appearance) {
  const BoxAppearance before = std::exchange(appearance_, appearance);
  setGeometry(appearance.left, appearance.top, std::max(appearance.width, 0),
              std::max(appearance.height, 0));
  setVisible(appearance.visible && parentWidget() != nullptr);
  setEnabled(appearance.enabled);
  if (appearance.read_only != isReadOnly()) {
    setReadOnly(appearance.read_only);
    // The caret of a text that may only be read moves by keys too.
    if (appearance.read_only) {
      setTextInteractionFlags(Qt::TextSelectableByMouse | Qt::TextSelectableByKeyboard);
    }
  }
  setLineWrapMode(appearance.multiline ? QTextEdit::WidgetWidth : QTextEdit::NoWrap);
  const int bars = appearance.multiline ? appearance.scroll_bars : 0;
  setHorizontalScrollBarPolicy(policy((bars & 1) != 0));
  setVerticalScrollBarPolicy(policy((bars & 2) != 0));
  setFocusPolicy(appearance.tab_stop ? Qt::StrongFocus : Qt::ClickFocus);
  setAcceptDrops(appearance.drop_mode != 0);
  if (appearance.back_color != before.back_color) show_colors();
  FormatChange font;
  if (appearance.font_name != before.font_name) font.font_name = appearance.font_name;
  if (appearance.font_size != before.font_size) font.size = appearance.font_size;
  if (!font.font_name && !font.size) return;
  QFont own(to_qt(appearance.font_name));
  if (appearance.font_size > 0) own.setPointSizeF(static_cast<double>(appearance.font_size));
  setFont(own);
  change(Telling::never, [&] {
    const QTextCharFormat format = to_qt(font, window_text());
    QTextCharFormat typing = typing_format();
    document()->setUndoRedoEnabled(false);
    QTextCursor all(document());
    all.mergeBlockCharFormat(format);
    all.select(QTextCursor::Document);
    all.mergeCharFormat(format);
    document()->setUndoRedoEnabled(true);
    typing.merge(format);
    if (!textCursor().hasSelection()) setCurrentCharFormat(typing);
  });
}

/// Text in no colour of its own stays readable on any background.
void BoxView::show_colors() {
  if (std::exchange(shows_colors_, true)) return;
  const Color back = appearance_.back_color;
  QPalette colors;
  if (is_system_color(back) && system_color_index(back) != window_background) {
    colors.setColor(QPalette::Base,
                    to_qt(QtPlatform::system_color_value(system_color_index(back))));
  } else if (!is_system_color(back)) {
    const QColor base = to_qt(back);
    constexpr double light = 0.5;
    colors.setColor(QPalette::Base, base);
    colors.setColor(QPalette::Text, base.lightnessF() < light ? Qt::white : Qt::black);
  }
  setPalette(colors);
  shows_colors_ = false;
}

void BoxView::changeEvent(QEvent* event) {
  QTextEdit::changeEvent(event);
  const bool is_theme =
      event->type() == QEvent::ApplicationPaletteChange || event->type() == QEvent::PaletteChange;
  if (is_theme && is_system_color(appearance_.back_color)) show_colors();
}

// The content.

Span BoxView::selected() const {
  const QTextCursor cursor = textCursor();
  return {cursor.selectionStart(), cursor.selectionEnd()};
}

void BoxView::select(Span span) {
  // A caret that stays keeps the format that was chosen for what is typed next.
  if (span == selected()) return;
  end_undo_step();
  QTextCursor cursor = textCursor();
  cursor.setPosition(span.start);
  cursor.setPosition(span.end, QTextCursor::KeepAnchor);
  setTextCursor(cursor);
}

/// Typed text takes the format of what is before it; Qt would take a paragraph's first character.
/// The format of a break is that which the paragraph behind it begins with.
void BoxView::follow_caret() {
  const QTextCursor cursor = textCursor();
  if (cursor.hasSelection() || !cursor.atBlockStart()) return;
  if (cursor.position() > 0) {
    setCurrentCharFormat(cursor.blockCharFormat());
  } else if (cursor.atBlockEnd() && cursor.block().next().isValid()) {
    setCurrentCharFormat(cursor.block().next().charFormat());
  }
}

QTextCharFormat BoxView::format_for(Span span) const {
  if (span.is_empty()) {
    if (span == selected()) return typing_format();
    QTextCursor cursor(document());
    cursor.setPosition(span.start);
    return cursor.charFormat();
  }
  std::optional<QTextCharFormat> format;
  for_each_piece(*document(), {span.start, span.start + 1}, [&](const Piece& piece) {
    format = document()->allFormats().at(piece.format).toCharFormat();
    return false;
  });
  return format.value_or(QTextCharFormat());
}

void BoxView::load(const Document& content) {
  const Span all = whole(*document());
  const QTextCharFormat first = content.size() != 0 ? to_qt(content.format_at(0), window_text())
                                : all.is_empty()    ? typing_format()
                                                    : format_for(all);
  change(Telling::once, [&] {
    document()->setUndoRedoEnabled(false);
    setWordWrapMode(has_endless_word(content.text()) ? QTextOption::WrapAnywhere : wrap_at_words);
    // Laid out as a new text, only what is seen is laid out at once.
    document()->setLayoutEnabled(false);
    document()->clear();
    QTextCursor cursor(document());
    cursor.beginEditBlock();
    QTextBlockFormat aligned;
    aligned.setAlignment(to_qt(content.alignment_at(content.size())));
    cursor.setBlockFormat(aligned);
    // What a format does not say is the box's: none of it is left open.
    QTextCharFormat full = to_qt(from_qt(first), window_text());
    cursor.setBlockCharFormat(full);
    qt::insert(cursor, content, window_text());
    cursor.endEditBlock();
    // The caret went along to the end; on its way back later all of it would be laid out.
    cursor.setPosition(0);
    if (content.size() == 0) cursor.setCharFormat(full);
    setTextCursor(cursor);
    document()->setLayoutEnabled(true);
    document()->setUndoRedoEnabled(true);
  });
}

void BoxView::replace(Span span, const Document& content) {
  if (span.is_empty() && content.size() == 0) return;
  if (has_endless_word(content.text())) setWordWrapMode(QTextOption::WrapAnywhere);
  const QTextCharFormat before = format_for(span);
  change(Telling::once, [&] {
    end_undo_step();
    QTextCursor cursor(document());
    cursor.setPosition(span.end);
    const richtext::Alignment rest = alignment_of(cursor.blockFormat());
    cursor.setPosition(span.start, QTextCursor::KeepAnchor);
    cursor.beginEditBlock();
    cursor.removeSelectedText();
    if (alignment_of(cursor.blockFormat()) != rest) {
      QTextBlockFormat aligned;
      aligned.setAlignment(to_qt(rest));
      cursor.mergeBlockFormat(aligned);
    }
    qt::insert(cursor, content, window_text());
    cursor.endEditBlock();
    end_undo_step();
    cursor.setPosition(cursor.position());
    setTextCursor(cursor);
    // Qt tells nothing of a caret that has moved with the text.
    follow_caret();
    if (content.size() == 0) setCurrentCharFormat(before);
  });
}

bool BoxView::insert(const std::optional<std::u16string>& rtf,
                     const std::optional<std::u16string>& text) {
  const Span span = selected();
  const auto content =
      richtext::read_transfer(rtf, text, from_qt(format_for(span)), !appearance_.multiline);
  if (!content) return false;
  replace(span, *content);
  return true;
}

void BoxView::move_selection(int to) {
  const Span moved = selected();
  if (to >= moved.start && to <= moved.end) return;
  const Document content = read(*document(), moved);
  const int length = moved.end - moved.start;
  const int start = to > moved.start ? to - length : to;
  change(Telling::once, [&] {
    end_undo_step();
    QTextCursor cursor(document());
    cursor.beginEditBlock();
    cursor.setPosition(moved.start);
    cursor.setPosition(moved.end, QTextCursor::KeepAnchor);
    cursor.removeSelectedText();
    cursor.setPosition(start);
    qt::insert(cursor, content, window_text());
    cursor.endEditBlock();
    select({start, start + length});
  });
}

/// Qt also ends edits in which nothing was changed.
void BoxView::note_change() {
  if (held_ > 0 || !std::exchange(has_changed_, false)) return;
  const Busy busy(*this);
  listener_->on_change();
}

// The clipboard.

QMimeData* BoxView::createMimeDataFromSelection() const {
  const Document content = read(*document(), selected());
  const richtext::CharFormat base = from_qt(typing_format());
  return mime::create(content.text(), richtext::write_rtf(content, {0, content.size()}, base))
      .release();
}

bool BoxView::canInsertFromMimeData(const QMimeData* source) const {
  return source->hasText() || mime::has_rtf(*source);
}

void BoxView::insertFromMimeData(const QMimeData* source) {
  const auto rtf = mime::rtf(*source);
  insert(rtf, rtf ? std::nullopt : mime::text(*source));
}

}  // namespace qel::qt
