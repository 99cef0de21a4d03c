#pragma once

#include <cstddef>
#include <cstdint>
#include <memory>
#include <optional>
#include <string>
#include <string_view>

#include "qel/box/Change.h"
#include "qel/box/Drag.h"
#include "qel/box/Selection.h"
#include "qel/box/UndoHistory.h"
#include "qel/box/View.h"
#include "qel/platform/RichEdit.h"
#include "qel/richtext/Document.h"

namespace qel::box {

/// A rich edit box: what is in it, what is selected, what can be undone, and what becomes of all
/// that is typed, erased, pasted, dragged and dropped. It is the same on every platform; a view
/// shows it and hands in what the user does (`Keyboard`, `Mouse`, `Drop`).
///
/// Changes of the selection can be undone, whoever makes them. New content of the whole document
/// and a new font of the box cannot, and end what could be undone before.
///
/// Boxes are shared: whoever calls a member by which a listener is told of something holds on to
/// the box meanwhile, since a listener may let go of it.
class Box : public platform::RichEdit, public std::enable_shared_from_this<Box> {
 public:
  using Kind = UndoHistory::Kind;

  Box() = default;
  ~Box() override;

  /// The view that shows the box from now on; it must be taken away before it goes (null).
  void attach(View* view) { view_ = view; }

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
  /// A new font or size is given to all text.
  void put_appearance(const platform::BoxAppearance& appearance) override;
  platform::WindowHandle window() const override;
  void put_owner(platform::WindowHandle owner) override;
  void start_drag() override;
  void listen(platform::BoxListener* listener) override {
    listener_ = listener == nullptr ? &nobody_ : listener;
  }

  // For views. Positions are in UTF-16 code units; none ever stands within a break or a surrogate
  // pair.

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

  // What a user does. Whether the user may is for the caller to ask, but for `take_edit`.

  /// Puts text in place of the selection; what is typed in a row is undone together.
  void type(std::u16string_view text);
  /// Takes out a part; the caret ends up there.
  void erase(richtext::Extent extent, Kind kind);
  bool can_undo() const { return history_.can_undo(); }
  bool can_redo() const { return history_.can_redo(); }
  void undo() { take_step(&UndoHistory::undo); }
  void redo() { take_step(&UndoHistory::redo); }
  /// Puts text from elsewhere in place of the selection, its RTF where it has one, unless the
  /// listener takes it over; whether there is either. In a box for a single line breaks become
  /// blanks.
  bool paste(platform::DragData& data);
  /// Puts dropped data at a position, and selects it; whether there was text in it. What is dragged
  /// from here is moved where the effect says so.
  bool take_drop(platform::DragData& data, std::size_t position, std::int32_t effect);
  /// A view has changed its text by itself: `text` stands in place of the extent there. The box
  /// follows, or refuses, and the view is told what there is to be shown either way. Whether it
  /// follows.
  bool take_edit(richtext::Extent extent, std::u16string_view text);

 private:
  /// What is being dragged from here, and the revision that it belongs to.
  struct Dragged {
    richtext::Extent extent;
    std::uint64_t revision = 0;
    bool stays = false;  // it was dropped here, too
  };

  richtext::Extent extent_of(platform::Scope scope) const;
  /// Where the selected paragraphs begin and end.
  richtext::Extent selected_paragraphs() const;
  /// The document's format at that part: of its first character, or of the one before a caret.
  const richtext::CharFormat& format_at(richtext::Extent extent) const;
  /// The format of text that is put in place of that part.
  const richtext::CharFormat& format_for(richtext::Extent extent) const;
  richtext::Document plain_content(richtext::Extent extent, std::u16string_view text) const;
  void replace(richtext::Extent extent, richtext::Document content, Kind kind);
  bool move_dragged(std::size_t to);
  bool is_still_there() const { return dragged_ && dragged_->revision == revision_; }
  void take_step(std::optional<UndoHistory::Taken> (UndoHistory::*step)(richtext::Document&));
  void show(const Change& change);
  void tell_change(const Change& change);

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
