#pragma once

#include <cstdint>
#include <memory>
#include <optional>
#include <string>
#include <utility>

#include "qel/headless/Desktop.h"
#include "qel/headless/UndoHistory.h"
#include "qel/platform/RichEdit.h"
#include "qel/richtext/Document.h"

namespace qel::headless {

/// A rich edit box in memory, without any window: the reference for what a box does. Everything of
/// the interface is supported; nothing is painted. `BoxUser` presses its keys and its mouse.
///
/// Changes of the selection can be undone, whoever makes them. New text of the whole document and a
/// new font of the box cannot, and end what could be undone before. A point of the box is a place
/// in a grid: all characters are as wide, lines are paragraphs and never wrap.
class RichEdit : public platform::RichEdit {
 public:
  RichEdit() : RichEdit(std::make_shared<Desktop>()) {}
  /// A box with the clipboard and the drags of that desktop.
  explicit RichEdit(std::shared_ptr<Desktop> desktop) : desktop_(std::move(desktop)) {}

  std::u16string text(platform::Scope scope) const override;
  void put_text(platform::Scope scope, std::u16string_view text) override;
  std::u16string rtf(platform::Scope scope) const override;
  void put_rtf(platform::Scope scope, std::u16string_view rtf) override;

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

  void start_drag() override;

  void listen(platform::BoxListener* listener) override {
    listener_ = listener == nullptr ? &nobody_ : listener;
  }

  // What a user does, and where. Whether the user may is for the caller to ask.

  /// The box's text as it stands; holds until the box changes.
  const std::u16string& text() const { return document_.text(); }
  /// The same with its formats and alignments.
  const richtext::Document& document() const { return document_; }
  platform::BoxListener& listener() const { return *listener_; }
  virtual platform::Clipboard& clipboard() const { return desktop_->clipboard; }
  /// Puts a character in place of the selection; characters typed in a row are undone together.
  void type(char16_t character);
  /// Takes out the part, and with it a break that it cuts; the caret ends up there.
  void erase(platform::Range range, UndoHistory::Kind kind);
  /// Each returns whether there was anything to be taken back or made again.
  bool undo();
  bool redo();
  /// Puts text from elsewhere in place of the selection, its RTF where it has one; whether there is
  /// either. In a box for a single line breaks become blanks.
  bool insert(const std::optional<std::u16string>& rtf, const std::optional<std::u16string>& text);
  /// Puts dropped data at a position; whether it had text in it. `source` is the box that it was
  /// dragged from; null where that is none of these.
  bool take_drop(platform::DragData& data, std::int32_t position, const RichEdit* source,
                 std::int32_t effect);

  static constexpr float character_width = 8;
  static constexpr float line_height = 16;
  /// The position nearest to a point in the box.
  std::int32_t position_at(float x, float y) const;

 protected:
  /// Drags until the data is dropped or the user gives up.
  virtual void carry(Drag& drag) const;

 private:
  using Kind = UndoHistory::Kind;

  /// What is being dragged from here, and the revision that it belongs to.
  struct Dragged {
    richtext::Extent extent;
    std::uint64_t revision = 0;
  };

  richtext::Extent extent_of(platform::Scope scope) const;
  /// The selection widened to whole breaks.
  richtext::Extent selected() const { return document_.without_cut_breaks(selection_); }
  /// Where the selected paragraphs begin and end.
  richtext::Extent selected_paragraphs() const;
  /// The document's format at that part: of its first character, or of the one before a caret.
  const richtext::CharFormat& format_at(richtext::Extent extent) const;
  /// The format of text that is put in place of that part.
  const richtext::CharFormat& format_for(richtext::Extent extent) const;
  richtext::Document plain_content(richtext::Extent extent, std::u16string_view text) const;
  void replace(platform::Scope scope, richtext::Document content);
  void replace_part(richtext::Extent extent, richtext::Document content, Kind kind);
  bool move_dragged(std::size_t to);
  bool take_step(std::optional<richtext::Extent> (UndoHistory::*step)(richtext::Document&));
  void tell_change() {
    ++revision_;
    listener_->on_change();
  }

  std::shared_ptr<Desktop> desktop_;
  richtext::Document document_;
  UndoHistory history_;
  richtext::Extent selection_;
  richtext::CharFormat typing_;  // format of the next character typed at the caret
  platform::BoxAppearance appearance_;
  std::uint64_t revision_ = 0;  // counts changes
  std::optional<Dragged> dragged_;
  platform::BoxListener nobody_;
  platform::BoxListener* listener_ = &nobody_;
};

}  // namespace qel::headless
