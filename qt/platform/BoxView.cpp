#include "qt/platform/BoxView.h"

#include <QAbstractTextDocumentLayout>
#include <QContextMenuEvent>
#include <QFont>
#include <QMenu>
#include <QMimeData>
#include <QTextBlock>
#include <algorithm>
#include <utility>

#include "qel/base/Scoped.h"
#include "qel/qt/QtPlatform.h"
#include "qt/platform/BoxAccessible.h"
#include "qt/platform/BoxHandling.h"
#include "qt/platform/BoxHost.h"
#include "qt/platform/BoxMenu.h"
#include "qt/platform/FormatMapping.h"
#include "qt/platform/MimeData.h"
#include "qt/platform/Spelling.h"
#include "qt/platform/Text.h"

namespace qel::qt {

using box::Change;
using box::Selection;
using platform::BoxAppearance;

namespace {

constexpr auto wrap_at_words = QTextOption::WrapAtWordBoundaryOrAnywhere;

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

std::shared_ptr<box::Box> BoxView::create(QWidget* owner) {
  BoxAccessible::install();
  auto box = std::make_shared<box::Box>();
  box->attach(new BoxView(*box, owner));
  return box;
}

BoxView* BoxView::of(const platform::RichEdit& box) {
  // NOLINTNEXTLINE(performance-no-int-to-ptr): a handle is an address.
  return static_cast<BoxView*>(reinterpret_cast<QWidget*>(box.window()));
}

BoxView::BoxView(box::Box& box, QWidget* owner)
    : QTextEdit(owner), box_(&box), display_(*document()) {
  setFrameStyle(QFrame::NoFrame);
  setTabChangesFocus(true);
  setAcceptRichText(true);
  setWordWrapMode(wrap_at_words);
  viewport()->setMouseTracking(true);
  document()->documentLayout()->setPaintDevice(&zoomed_);
  BoxView::show_appearance(BoxAppearance());
  BoxView::show({});
  show_colors();
  connect(document(), &QTextDocument::contentsChange, this, &BoxView::note_change);
  connect(this, &QTextEdit::cursorPositionChanged, this, &BoxView::take_selection);
  connect(this, &QTextEdit::selectionChanged, this, &BoxView::take_selection);
  // The next character typed takes its format from the box.
  connect(this, &QTextEdit::currentCharFormatChanged, this, [this] {
    if (showing_ > 0 || has_foreign_edit_ || box_ == nullptr) return;
    // Qt may tell of the format before it tells of the caret's place.
    take_selection();
    show_selection();
  });
}

BoxView::~BoxView() {
  document()->documentLayout()->setPaintDevice(nullptr);
  if (box_ != nullptr) box_->attach(nullptr);
}

void BoxView::close() {
  box_ = nullptr;
  setEnabled(false);
  if (handling_ == 0) {
    delete this;
    return;
  }
  hide();
  setParent(nullptr);
  deleteLater();
}

platform::WindowHandle BoxView::window() {
  return reinterpret_cast<platform::WindowHandle>(static_cast<QWidget*>(this));
}

void BoxView::put_owner(platform::WindowHandle owner) {
  // NOLINTNEXTLINE(performance-no-int-to-ptr): a handle is an address.
  setParent(reinterpret_cast<QWidget*>(owner));
  show_appearance(box_->appearance());
}

platform::Clipboard& BoxView::clipboard() { return QtPlatform::shared()->clipboard(); }

Color BoxView::text_color() const {
  return QtPlatform::system_color_value(QtPlatform::window_text);
}

void BoxView::settle() {
  if (showing_ > 0) return;
  if (composes()) complete_composition();
  take_foreign_edit();
}

// Showing the box.

void BoxView::show_appearance(const BoxAppearance& before) {
  const Scoped showing(showing_, showing_ + 1);
  const BoxAppearance appearance = box_->appearance();
  setGeometry(appearance.left, appearance.top, std::max(appearance.width, 0),
              std::max(appearance.height, 0));
  setVisible(appearance.visible && parentWidget() != nullptr);
  setEnabled(appearance.enabled);
  if (appearance.read_only != isReadOnly()) {
    setReadOnly(appearance.read_only);
    // The caret of a read-only text also moves by keys.
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
  show_space();
  if (appearance.back_color != before.back_color) show_colors();
  QFont own(to_qt(appearance.font_name));
  if (appearance.font_size > 0) own.setPointSizeF(static_cast<double>(appearance.font_size));
  if (own != font()) setFont(own);
}

void BoxView::show(const Change& change) {
  // Composed text would stay where it is while the text around it moves.
  if (composes()) {
    end_composition();
    reset_input_method();
  }
  const Scoped showing(showing_, showing_ + 1);
  const richtext::Document& content = box_->document();
  const bool is_new = change.kind == Change::Kind::everything;
  const std::u16string_view put =
      std::u16string_view(content.text()).substr(change.extent.start, change.length);
  if (has_endless_word(put)) {
    setWordWrapMode(QTextOption::WrapAnywhere);
  } else if (is_new && wordWrapMode() != wrap_at_words) {
    setWordWrapMode(wrap_at_words);
  }
  // Of a newly loaded text, only what is visible is laid out. The caret moves along with what is
  // inserted, and has to be back before layout begins: otherwise its way would lay out all of it.
  const bool loads = DocumentDisplay::loads(content, change);
  if (loads) document()->setLayoutEnabled(false);
  display_.show(content, change);
  if (content.size() > 0) {
    show_direction(QTextCursor(document()->begin()), Qt::LayoutDirectionAuto);
  }
  put_caret_of_box();
  if (loads) document()->setLayoutEnabled(true);
  if (!box_->appearance().multiline) center_line();
}

void BoxView::show_selection() {
  const Scoped showing(showing_, showing_ + 1);
  put_caret_of_box();
}

/// A paragraph goes in the direction of its text, if there is any.
void BoxView::show_direction(QTextCursor cursor, Qt::LayoutDirection direction) {
  if (cursor.blockFormat().layoutDirection() == direction) return;
  QTextBlockFormat format;
  format.setLayoutDirection(direction);
  cursor.mergeBlockFormat(format);
}

void BoxView::put_caret_of_box() {
  const auto position = [this](std::size_t at) {
    return document_position(*document(), static_cast<std::int64_t>(at));
  };
  QTextCursor cursor = textCursor();
  const int anchor = position(box_->selected().anchor);
  const int caret = position(box_->selected().caret);
  if (cursor.anchor() != anchor || cursor.position() != caret) {
    cursor.setPosition(anchor);
    cursor.setPosition(caret, QTextCursor::KeepAnchor);
    setTextCursor(cursor);
  }
  if (cursor.hasSelection()) return;
  const QTextCharFormat typing = to_qt(box_->typing_format(), display_.scheme());
  // An empty line is as high as the text to be typed there, and begins where the window's do.
  if (box_->text().empty()) {
    if (cursor.blockCharFormat() != typing) cursor.setBlockCharFormat(typing);
    show_direction(cursor, isRightToLeft() ? Qt::RightToLeft : Qt::LayoutDirectionAuto);
  }
  if (cursor.charFormat() != typing) setCurrentCharFormat(typing);
}

// Taking over what Qt has done.

Selection BoxView::selection_in_window() const {
  const QTextCursor cursor = textCursor();
  return {static_cast<std::size_t>(box_position(*document(), cursor.anchor())),
          static_cast<std::size_t>(box_position(*document(), cursor.position()))};
}

void BoxView::take_selection() {
  if (showing_ > 0 || has_foreign_edit_ || box_ == nullptr) return;
  const Handling handling(*this, Handling::Foreign::leave);
  Selection taken = selection_in_window();
  if (composes()) {
    const std::size_t caret = box_->selected().caret;
    const std::size_t before = box_->text().size();
    complete_composition();
    // What stood behind the composed text still does.
    const std::size_t now = box_->text().size();
    for (std::size_t* const position : {&taken.anchor, &taken.caret}) {
      if (*position > caret) *position = now - std::min(before - *position, now);
    }
  }
  box_->put_selection(taken);
}

/// Only notes the change: if it were dealt with within Qt's signal, others would not be told of
/// that.
void BoxView::note_change(int position, int removed, int added) {
  if (showing_ > 0 || (removed == 0 && added == 0)) return;
  const int behind = std::max(document()->characterCount() - 1 - position - added, 0);
  if (!has_foreign_edit_) touched_ = {position, behind};
  touched_ = {std::min(touched_.before, position), std::min(touched_.behind, behind)};
  if (std::exchange(has_foreign_edit_, true)) return;
  QMetaObject::invokeMethod(this, &BoxView::take_foreign_edit, Qt::QueuedConnection);
}

void BoxView::take_foreign_edit() {
  if (!has_foreign_edit_ || box_ == nullptr) return;
  if (composes()) complete_composition();
  if (!has_foreign_edit_ || box_ == nullptr) return;
  const Handling handling(*this, Handling::Foreign::leave);
  const Selection selected = selection_in_window();
  const auto edit = display_.foreign_edit(box_->document());
  {
    const Scoped showing(showing_, showing_ + 1);
    if (edit) display_.take_back(box_->document(), *edit);
    show_touched_formats(edit ? edit->extent.start : 0);
  }
  has_foreign_edit_ = false;
  bool keeps_selection = !edit;
  if (edit && box_->take_edit(edit->extent, edit->text)) {
    const std::size_t end = edit->extent.start + edit->text.size();
    // Otherwise the listener has set one.
    keeps_selection = box_->selected() == Selection{end, end};
  }
  if (keeps_selection) box_->put_selection(selected);
  show_selection();
}

/// Formats may also have changed where the text is the same again, and before the edit.
void BoxView::show_touched_formats(std::size_t edited) {
  const int end = std::max(document()->characterCount() - 1 - touched_.behind, touched_.before);
  const auto position = [this](int at) {
    return static_cast<std::size_t>(box_position(*document(), at));
  };
  const richtext::Extent extent = {position(touched_.before), std::max(position(end), edited)};
  display_.show(box_->document(), {Change::Kind::formats, extent, extent.length()});
  display_.show(box_->document(), {Change::Kind::alignments, extent, extent.length()});
}

// The clipboard.

QMimeData* BoxView::createMimeDataFromSelection() const {
  return mime::create(box_->get_SelText(), box_->get_SelRTF()).release();
}

bool BoxView::canInsertFromMimeData(const QMimeData* source) const {
  return mime::has_content(*source);
}

void BoxView::insertFromMimeData(const QMimeData* source) {
  const Handling handling(*this);
  if (!box_->may_edit()) return;
  // A click of the middle button has moved the caret without a signal.
  box_->put_selection(selection_in_window());
  box_->paste(dropped_.look_at(*source));
  ensureCursorVisible();
}

void BoxView::contextMenuEvent(QContextMenuEvent* event) {
  const Handling handling(*this);
  auto* const menu = new QMenu(this);
  menu->setAttribute(Qt::WA_DeleteOnClose);
  const bool is_by_key = event->reason() == QContextMenuEvent::Keyboard;
  const std::size_t at = is_by_key ? box_->selected().caret : position_at(event->pos());
  if (BoxHost* const hosts = host()) {
    hosts->fill_menu(*menu, *this, static_cast<int>(at));
    // A slot may have ended it, and soon this, too.
    if (host() == nullptr) return;
  } else {
    fill_edit_menu(*menu, *this);
  }
  if (Spelling* const spelling = Spelling::of(*this)) spelling->add_to_menu(*menu, at);
  menu->popup(event->globalPos());
}

BoxHost* BoxView::host() const { return static_cast<BoxHost*>(host_.data()); }

void BoxView::put_host(BoxHost* host) { host_ = host; }

void BoxView::run_command(std::int16_t key_code, std::int16_t shift) {
  const Handling handling(*this);
  keyboard_.run_command(key_code, shift);
  ensureCursorVisible();
}

}  // namespace qel::qt
