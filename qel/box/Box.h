#pragma once

#include <cstddef>
#include <cstdint>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "qel/box/Change.h"
#include "qel/box/Drag.h"
#include "qel/box/Selection.h"
#include "qel/box/UndoHistory.h"
#include "qel/box/View.h"
#include "qel/platform/RichEdit.h"
#include "qel/richtext/Document.h"

namespace qel::box {

/// A rich edit box: its content, its selection, its undo history, and what happens when text is
/// typed, erased, pasted, dragged or dropped. It behaves the same on every platform; a view shows
/// it and passes in what the user does (`Keyboard`, `Mouse`, `Drop`).
///
/// Changes of the selected text can be undone, whoever makes them. New content for the whole
/// document and a new font of the box cannot, and they clear the undo history.
///
/// Boxes are shared: the caller of a member that notifies a listener must hold on to the box
/// meanwhile, since the listener may let go of it.
class Box : public platform::RichEdit, public std::enable_shared_from_this<Box> {
 public:
  using Kind = UndoHistory::Kind;

  Box() = default;
  ~Box() override;

  /// Sets the view that shows the box; it must be taken away (null) before it goes.
  void attach(View* view) { view_ = view; }

  void settle() override {
    if (view_ != nullptr) view_->settle();
  }
  richtext::Document content(platform::Scope scope) const override;
  void put_content(platform::Scope scope, richtext::Document content) override;
  platform::TextDefaults text_defaults(platform::Scope scope) const override;
  platform::Range selection() const override;
  void select(platform::Range range) override;
  richtext::MixedFormat format() const override;
  void change_format(const richtext::FormatChange& change) override;
  std::optional<richtext::Alignment> alignment() const override;
  void put_alignment(richtext::Alignment alignment) override;
  void visit_runs(std::int32_t from, const platform::RunVisitor& visit) const override;
  platform::BoxAppearance appearance() const override { return appearance_; }
  /// A new font or size is applied to all text, but text in one of
  /// `fonts_of_text` gets the font that stands there.
  void put_appearance(const platform::BoxAppearance& appearance) override;
  platform::WindowHandle window() const override;
  void put_owner(platform::WindowHandle owner) override;
  void start_drag() override;
  bool holds_documents() const override { return true; }
  void listen(platform::BoxListener* listener) override {
    listener_ = listener == nullptr ? &nobody_ : listener;
  }

  // For views. Positions are in UTF-16 code units; those of the selection are never within a break
  // or a surrogate pair.

  const richtext::Document& document() const { return document_; }
  const std::u16string& text() const { return document_.text(); }
  const Selection& selected() const { return selection_; }
  /// Moves the caret, or selects up to there from the anchor.
  void put_caret(std::size_t position, bool selects) {
    put_selection({selects ? selection_.anchor : position, position});
  }
  void put_selection(Selection selection);
  /// The format of the next character typed.
  const richtext::CharFormat& typing_format() const { return typing_; }
  platform::BoxListener& listener() const { return *listener_; }
  /// The clipboard of the view; null without one.
  platform::Clipboard* clipboard() const {
    return view_ == nullptr ? nullptr : &view_->clipboard();
  }
  /// Whether the user may change the text.
  bool may_edit() const { return appearance_.enabled && !appearance_.read_only; }
  /// Whether the user may also break lines.
  bool may_break() const { return appearance_.multiline && appearance_.takes_breaks; }

  // What a user does. Except for `take_edit`, the caller checks whether the user may.

  /// Replaces the selection with the text; a word typed in succession is undone together.
  void type(std::u16string_view text);
  /// Replaces each of the parts, as a search has found them, with the text, which takes the format
  /// of the part's first character; breaks in it become blanks. All of it is one step. The
  /// selection stays on what it was on; of a part, its end.
  void replace_each(const std::vector<richtext::Extent>& parts, std::u16string_view text);
  /// Erases a part; the caret ends up there.
  void erase(richtext::Extent extent, Kind kind);
  bool can_undo() const override { return may_edit() && history_.can_undo(); }
  bool can_redo() const override { return may_edit() && history_.can_redo(); }
  void undo() override { take_step(&UndoHistory::undo); }
  void redo() override { take_step(&UndoHistory::redo); }
  /// The clock that tells pauses in typing.
  void put_clock(UndoHistory::Clock clock) { history_.put_clock(std::move(clock)); }
  /// Replaces the selection with the data's RTF, or else its HTML, or else its text, unless the
  /// listener does so itself. Whether the data has any of them.
  bool paste(platform::DragData& data);
  /// Inserts dropped data at a position and selects it; text dragged from this box is moved if the
  /// effect says so. Returns what it has done.
  std::int32_t take_drop(platform::DragData& data, std::size_t position, std::int32_t effect);
  /// The view has changed its own text: there, `text` has replaced the extent. The box follows or
  /// refuses, and either way tells the view what to show. Whether it follows.
  bool take_edit(richtext::Extent extent, std::u16string_view text);

 private:
  /// The part that is being dragged from this box, and the revision in which it has that extent.
  struct Dragged {
    richtext::Extent extent;
    std::uint64_t revision = 0;
    bool is_selection = false;  // the host has put in no other text
    bool stays = false;         // it was dropped on this box, too
  };

  Caret caret() const { return {selection_, typing_}; }
  richtext::Extent extent_of(platform::Scope scope) const;
  /// From a position in the first selected paragraph to one in the last.
  richtext::Extent selected_paragraphs() const;
  /// The document's format there: that of the first character, or of the one before a caret.
  const richtext::CharFormat& format_at(richtext::Extent extent) const;
  /// The format of text that replaces the extent.
  const richtext::CharFormat& format_for(richtext::Extent extent) const;
  /// Applies a new font or size of the box, whose font was `own_font`, to the text.
  void change_own_format(const richtext::FormatChange& change, std::u16string_view own_font);
  richtext::Document plain_content(richtext::Extent extent, std::u16string_view text) const;
  void replace(richtext::Extent extent, richtext::Document content, Kind kind);
  std::optional<std::int32_t> drag_selection();
  bool move_dragged(std::size_t to);
  bool is_still_there() const { return dragged_ && dragged_->revision == revision_; }
  void take_step(std::optional<UndoHistory::Taken> (UndoHistory::*step)(richtext::Document&));
  void show(const Change& change);
  void tell_change(const Change& change);
  void tell_selection();

  View* view_ = nullptr;
  richtext::Document document_;
  UndoHistory history_;
  Selection selection_;
  richtext::CharFormat typing_;
  platform::BoxAppearance appearance_;
  std::uint64_t revision_ = 0;  // counts changes
  std::optional<Dragged> dragged_;
  platform::BoxListener nobody_;
  platform::BoxListener* listener_ = &nobody_;
};

}  // namespace qel::box
