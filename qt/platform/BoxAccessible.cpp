#include "qt/platform/BoxAccessible.h"

#include <QScrollBar>
#include <QTextBlock>
#include <QTextDocumentFragment>
#include <algorithm>

#include "qt/platform/BoxHandling.h"
#include "qt/platform/Text.h"

namespace qel::qt {

namespace {

QAccessibleInterface* create(const QString& /*class_name*/, QObject* object) {
  auto* const view = qobject_cast<BoxView*>(object);
  return view == nullptr || view->box() == nullptr ? nullptr : new BoxAccessible(view);
}

/// The format as assistive programs are told of it: "name:value;" for each attribute.
QString described(const QTextCharFormat& format, const QTextBlockFormat& paragraph,
                  const QPalette& palette) {
  QString text;
  const auto add = [&text](const char* name, const QString& value) {
    text += QLatin1String(name) + QLatin1Char(':') + value + QLatin1Char(';');
  };
  const auto add_color = [&add](const char* name, const QColor& color) {
    add(name,
        QStringLiteral("rgb(%1,%2,%3)").arg(color.red()).arg(color.green()).arg(color.blue()));
  };
  const bool has_color = format.foreground().style() != Qt::NoBrush;
  const auto offset = format.verticalAlignment();
  add("text-position", offset == QTextCharFormat::AlignSuperScript ? QStringLiteral("super")
                       : offset == QTextCharFormat::AlignSubScript ? QStringLiteral("sub")
                                                                   : QStringLiteral("baseline"));
  add_color("color", has_color ? format.foreground().color() : palette.color(QPalette::Text));
  add_color("background-color", palette.color(QPalette::Base));
  const QString family = format.fontFamilies().toStringList().value(0);
  add("font-family", QLatin1Char('"') + family + QLatin1Char('"'));
  add("font-size", QStringLiteral("%1pt").arg(format.fontPointSize()));
  add("font-style", format.fontItalic() ? QStringLiteral("italic") : QStringLiteral("normal"));
  add("font-weight", QString::number(format.fontWeight()));
  if (format.fontUnderline()) add("text-underline-style", QStringLiteral("solid"));
  if (format.fontStrikeOut()) add("text-line-through-type", QStringLiteral("single"));
  if (format.fontCapitalization() == QFont::SmallCaps) {
    add("font-variant", QStringLiteral("small-caps"));
  }
  const Qt::Alignment alignment = paragraph.alignment();
  add("text-align", alignment.testFlag(Qt::AlignHCenter) ? QStringLiteral("center")
                    : alignment.testFlag(Qt::AlignRight) ? QStringLiteral("right")
                                                         : QStringLiteral("left"));
  return text;
}

}  // namespace

void BoxAccessible::install() {
  static const bool is_installed = [] {
    QAccessible::installFactory(create);
    return true;
  }();
  static_cast<void>(is_installed);
}

BoxAccessible::BoxAccessible(BoxView* view) : QAccessibleWidget(view, QAccessible::EditableText) {}

QAccessibleInterface* BoxAccessible::around() const {
  QWidget* const parent = view().parentWidget();
  return parent == nullptr ? nullptr : QAccessible::queryAccessibleInterface(parent);
}

void* BoxAccessible::interface_cast(QAccessible::InterfaceType type) {
  if (type == QAccessible::TextInterface) return static_cast<QAccessibleTextInterface*>(this);
  if (type == QAccessible::EditableTextInterface) {
    return static_cast<QAccessibleEditableTextInterface*>(this);
  }
  return QAccessibleWidget::interface_cast(type);
}

QString BoxAccessible::text(QAccessible::Text kind) const {
  if (kind == QAccessible::Value) return text(0, characterCount());
  QString own = QAccessibleWidget::text(kind);
  const bool is_label = kind == QAccessible::Name || kind == QAccessible::Description;
  if (own.isEmpty() && is_label && around() != nullptr) own = around()->text(kind);
  return own.isEmpty() && kind == QAccessible::Description ? view().placeholder() : own;
}

QAccessible::State BoxAccessible::state() const {
  QAccessible::State state = QAccessibleWidget::state();
  const box::Box* const box = view().box();
  if (box == nullptr) return state;
  state.editable = !box->appearance().read_only;
  state.readOnly = box->appearance().read_only;
  state.multiLine = box->appearance().multiline;
  state.selectableText = true;
  return state;
}

QVector<QPair<QAccessibleInterface*, QAccessible::Relation>> BoxAccessible::relations(
    QAccessible::Relation match) const {
  auto found = QAccessibleWidget::relations(match);
  if (around() != nullptr) found += around()->relations(match & QAccessible::Label);
  return found;
}

// The selection.

QTextCursor BoxAccessible::cursor(int start, int end) const {
  QTextCursor cursor(view().document());
  cursor.setPosition(std::clamp(start, 0, characterCount()));
  cursor.setPosition(std::clamp(end, 0, characterCount()), QTextCursor::KeepAnchor);
  return cursor;
}

void BoxAccessible::select(int anchor, int caret) { view().setTextCursor(cursor(anchor, caret)); }

int BoxAccessible::selectionCount() const { return view().textCursor().hasSelection() ? 1 : 0; }

void BoxAccessible::selection(int index, int* start, int* end) const {
  const QTextCursor cursor = view().textCursor();
  const bool is_one = index == 0 && cursor.hasSelection();
  *start = is_one ? cursor.selectionStart() : 0;
  *end = is_one ? cursor.selectionEnd() : 0;
}

void BoxAccessible::addSelection(int start, int end) { setSelection(0, start, end); }

void BoxAccessible::removeSelection(int index) {
  if (index == 0) select(cursorPosition(), cursorPosition());
}

void BoxAccessible::setSelection(int index, int start, int end) {
  if (index == 0) select(start, end);
}

int BoxAccessible::cursorPosition() const { return view().textCursor().position(); }

void BoxAccessible::setCursorPosition(int position) { select(position, position); }

// The text.

QString BoxAccessible::text(int start, int end) const {
  return cursor(start, end).selectedText().replace(QChar::ParagraphSeparator, QLatin1Char('\n'));
}

int BoxAccessible::characterCount() const { return view().document()->characterCount() - 1; }

QRect BoxAccessible::characterRect(int offset) const {
  const QRect begin = view().cursorRect(cursor(offset, offset));
  const QRect end = view().cursorRect(cursor(offset + 1, offset + 1));
  const bool is_in_line = begin.top() == end.top() && begin.left() != end.left();
  const QRect rect(std::min(begin.left(), is_in_line ? end.left() : begin.left()), begin.top(),
                   is_in_line ? std::abs(end.left() - begin.left()) : begin.width(),
                   begin.height());
  return rect.translated(view().viewport()->mapToGlobal(QPoint()));
}

int BoxAccessible::offsetAtPoint(const QPoint& point) const {
  const QPoint place = view().viewport()->mapFromGlobal(point);
  if (!view().viewport()->rect().contains(place)) return -1;
  return view().cursorForPosition(place).position();
}

void BoxAccessible::scrollToSubstring(int start, int /*end*/) {
  const QRect place = view().cursorRect(cursor(start, start));
  const QRect shown = view().viewport()->rect();
  QScrollBar& bar = *view().verticalScrollBar();
  if (place.top() < shown.top()) bar.setValue(bar.value() + place.top());
  if (place.bottom() > shown.bottom()) {
    bar.setValue(bar.value() + place.bottom() - shown.bottom());
  }
}

QString BoxAccessible::attributes(int offset, int* start, int* end) const {
  const int position = std::clamp(offset, 0, characterCount());
  const QTextBlock block = view().document()->findBlock(position);
  *start = position;
  *end = position;
  QTextCharFormat format = block.charFormat();
  for (auto it = block.begin(); !it.atEnd(); ++it) {
    const QTextFragment fragment = it.fragment();
    if (!fragment.contains(position)) continue;
    *start = fragment.position();
    *end = fragment.position() + fragment.length();
    format = fragment.charFormat();
  }
  return described(format, block.blockFormat(), view().palette());
}

// Edits.

void BoxAccessible::deleteText(int start, int end) { replaceText(start, end, {}); }

void BoxAccessible::insertText(int offset, const QString& text) {
  replaceText(offset, offset, text);
}

void BoxAccessible::replaceText(int start, int end, const QString& text) {
  const QTextCursor replaced = cursor(start, end);
  view().edit({replaced.selectionStart(), replaced.selectionEnd()}, text);
}

bool BoxView::edit(Span span, const QString& text) {
  const Handling handling(*this);
  if (box_ == nullptr) return false;
  settle();
  const auto position = [this](int at) {
    return static_cast<std::size_t>(box_position(*document(), at));
  };
  const richtext::Extent extent = {position(span.start), position(span.end)};
  const QString lines = QString(text).replace(QChar::ParagraphSeparator, QLatin1Char('\n'));
  const std::u16string_view put = view_of(lines);
  const bool breaks = put.find_first_of(u"\r\n") != std::u16string_view::npos;
  if (!box_->may_edit() || (breaks && !box_->may_break())) return false;
  box::Selection kept = box_->selected();
  const std::size_t before = box_->text().size();
  if (!box_->take_edit(extent, put)) return false;
  // The caret stays where it was in the text, unless the listener has moved it.
  const std::size_t added = box_->text().size() + extent.length() - before;
  if (box_->selected() != box::Selection{extent.start + added, extent.start + added}) return true;
  for (std::size_t* const at : {&kept.anchor, &kept.caret}) {
    if (*at >= extent.end) {
      *at += added - extent.length();
    } else {
      *at = std::min(*at, extent.start);
    }
  }
  box_->put_selection(kept);
  return true;
}

}  // namespace qel::qt
