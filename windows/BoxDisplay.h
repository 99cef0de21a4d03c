#pragma once

#include <windows.h>
// Needs the types of the other.
#include <richedit.h>

#include <algorithm>
#include <chrono>
#include <cstddef>
#include <optional>
#include <string>
#include <string_view>

#include "qel/box/Box.h"
#include "windows/Positions.h"

namespace qel::windows {

/// What a rich edit window of the system shows of a box. It is told what has changed in the box and
/// touches that part of the window only, run by run: the window's own reader and writer of RTF are
/// never used.
///
/// A long text has its formats later than its characters, from its beginning on.
class BoxDisplay {
 public:
  /// The box must outlive this.
  explicit BoxDisplay(const box::Box& box) : box_(box) {}

  /// Shows things in that empty window from now on; null for none.
  void attach(HWND window);

  void put_read_only(bool read_only);
  /// Colours the background; text of no colour of its own is shown in one that is readable on it.
  /// Whether that is another one now, so that all formats have to be shown again.
  bool put_background(Color color);
  /// The font of an empty text; a size that is none is left out.
  void put_font(const std::u16string& name, float size);

  /// Shows what has become of the box, and what is selected in it, and scrolls to the caret where
  /// the text has changed. Formats may be left over.
  void show(const box::Change& change);
  void show_everything() {
    show({box::Change::Kind::everything, {0, positions_.size()}, box_.text().size()});
  }
  void show_selection();
  /// Whether no format is left over.
  bool is_complete() const { return unformatted_.length() == 0; }
  /// Goes on with them for a moment, or to their end.
  void put_more_formats() { put_formats_until(moment()); }
  void put_all_formats() { put_formats_until(Deadline::max()); }
  /// What is composed from now on has the format of what is typed.
  void put_typing_format();

  /// What is selected in the window; nothing when it is the same in the box.
  std::optional<box::Selection> take_selection();
  /// Whether the window's caret is not at the box's one. A window puts it at the end of what it is
  /// told to select.
  bool has_other_caret() const { return caret_ != positions_.native(box_.selected().caret); }
  /// Puts the window's caret there, and selects nothing in it; the box keeps its selection.
  void put_caret(std::size_t position) { select(native_range({position, position})); }

  /// How much of the window somebody else may have changed.
  enum class Touch { none, part, all };
  /// Whether somebody else may have changed the window's text.
  bool is_touched() const { return send(EM_GETMODIFY, 0, LPARAM{0}) != 0; }
  /// Text that somebody else has put in place of a part of the box's.
  struct ForeignEdit {
    richtext::Extent extent;
    std::u16string text;
  };
  /// What somebody else has done to the window's text, which is the box's own again afterwards.
  std::optional<ForeignEdit> take_text(Touch touch);

  /// Whether this is at work on the window: messages that reach it are this class's own.
  bool is_busy() const { return busy_ > 0; }
  /// The line that the caret or the end of the selection is in, from 0; wrapped lines count.
  LONG line_of_caret() const;
  /// The position nearest to a point in the window.
  std::size_t position_at(POINT point) const;
  /// Where the character at a position is in the window.
  POINT point_of(std::size_t position) const;

 private:
  class Frozen;
  using Deadline = std::chrono::steady_clock::time_point;

  /// In the window's positions.
  struct NativeSelection {
    long anchor = 0;
    long caret = 0;

    CHARRANGE range() const { return {std::min(anchor, caret), std::max(anchor, caret)}; }
    friend bool operator==(const NativeSelection&, const NativeSelection&) = default;
  };

  static Deadline moment();
  LRESULT send(UINT message, WPARAM parameter, LPARAM data) const;
  template <class Data>
  LRESULT send(UINT message, WPARAM parameter, Data* data) const {
    return send(message, parameter, reinterpret_cast<LPARAM>(data));
  }
  std::u16string read_text() const;
  CHARRANGE native_selection() const;
  CHARRANGE native_range(richtext::Extent extent) const {
    return {positions_.native(extent.start), positions_.native(extent.end)};
  }
  void select(CHARRANGE range);
  void select_backward(NativeSelection selection);
  void put_text(const box::Change& change);
  richtext::Extent put_formats(richtext::Extent extent, Deadline deadline);
  void put_formats_until(Deadline deadline);
  void put_alignments(richtext::Extent extent);

  const box::Box& box_;
  HWND window_ = nullptr;
  Positions positions_;           // in the text that the window has
  richtext::Extent unformatted_;  // holds all formats that are left over
  NativeSelection selected_;      // when it was shown or taken
  long caret_ = 0;                // the window's own one then
  std::optional<COLORREF> automatic_;
  bool read_only_ = false;
  mutable int busy_ = 0;
};

}  // namespace qel::windows
