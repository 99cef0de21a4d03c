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
#include "windows/Colors.h"
#include "windows/Dpi.h"
#include "windows/Positions.h"

namespace qel::windows {

/// Shows a box in a rich edit window of the system. It is told what has changed in the box and
/// changes only that part of the window. Where that has many formats, the window reads it as RTF of
/// a few words, and whatever it drops of it is put in place by messages; its own writer of RTF is
/// never used.
///
/// Formats that take long are put in place after the characters, from the beginning of the text on.
/// Those which a window drops because it does not paint them wait until a program asks.
class BoxDisplay {
 public:
  /// The box must outlive this.
  explicit BoxDisplay(const box::Box& box) : box_(box) {}

  /// Sets the window, which must be empty and have the procedure of its class, to show the box in;
  /// null for none.
  void attach(HWND window);

  void put_read_only(bool read_only);
  /// Colours the background. Whether text looks different on it, so that all formats have to be
  /// shown again.
  bool put_colors(const ShownColors& colors);
  /// Shows everything in the size for that many dots per inch. The window itself draws as for the
  /// whole screen.
  void put_dpi(int dpi);
  int dpi() const { return dpi_; }
  /// Sets the font of an empty text; an invalid size is left out.
  void put_font(const std::u16string& name, float size);

  /// Shows a change of the box and its selection, and scrolls to the caret where the text has
  /// changed. Some formats may be left for later.
  void show(const box::Change& change);
  void show_everything() {
    show({box::Change::Kind::everything, {0, positions_.size()}, box_.text().size()});
  }
  void show_selection();
  /// Whether all formats are shown that can be seen.
  bool is_complete() const { return unformatted_.length() == 0; }
  /// Goes on with these for a moment, or to their end.
  void put_more_formats() { put_visible_formats(moment()); }
  void put_visible_formats() { put_visible_formats(Deadline::max()); }
  /// Puts all formats in place, or those of the box's selection.
  void put_formats_for_reader(bool of_selection);
  /// Gives text composed from now on the box's typing format.
  void put_typing_format();

  /// The selection in the window; empty when it is that of the box.
  std::optional<box::Selection> take_selection();
  /// Whether the window's caret is not where the box's is: a window puts its caret at the end of
  /// what it is told to select.
  bool has_other_caret() const { return caret_ != positions_.native(box_.selected().caret); }
  /// Puts the window's caret there, with nothing selected; the box keeps its selection.
  void put_caret(std::size_t position) { select(native_range({position, position})); }

  /// How much of the window somebody else may have changed.
  enum class Touch { none, part, all };
  /// Whether somebody else may have changed the window's text.
  bool is_touched() const { return send(EM_GETMODIFY, 0, LPARAM{0}) != 0; }
  /// Text with which somebody else has replaced a part of the box's.
  struct ForeignEdit {
    richtext::Extent extent;
    std::u16string text;
  };
  /// Returns somebody else's edit of the window's text, and shows the box's text there again.
  std::optional<ForeignEdit> take_text(Touch touch);

  /// Whether this class is changing the window, so that messages to the window are its own.
  bool is_busy() const { return busy_ > 0; }
  /// The line of the caret or of the end of the selection, from 0; wrapped lines count.
  LONG line_of_caret() const;
  /// The position nearest to a point in the window.
  std::size_t position_at(POINT point) const;
  /// The point in the window of the character at a position.
  POINT point_of(std::size_t position) const;
  /// The place in the window of a caret before that character.
  RECT caret_at(std::size_t position) const;

 private:
  class Frozen;
  using Deadline = std::chrono::steady_clock::time_point;

  /// A selection in the window's positions.
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
  bool put_in_place(const box::Change& change);
  bool put_streamed(const box::Change& change);
  void put_by_runs(const box::Change& change);
  void select_replaced(const box::Change& change);
  void replace_selection(richtext::Extent extent, std::u16string_view text);
  void note_replaced(richtext::Extent extent, std::u16string_view text);
  void stream(std::string_view rtf);
  void find_unread(richtext::Extent extent);
  CHARFORMAT2W read_format() const;
  void put_format(const richtext::CharFormat& format);
  richtext::Extent put_formats(richtext::Extent extent, Deadline deadline);
  void put_visible_formats(Deadline deadline);
  std::optional<richtext::Alignment> read_alignment() const;
  void align_selection(richtext::Alignment alignment);
  void put_alignments(richtext::Extent extent);

  const box::Box& box_;
  HWND window_ = nullptr;
  WNDPROC procedure_ = nullptr;   // its class's: messages would pass through ours first
  Positions positions_;           // of the text in the window
  richtext::Extent unformatted_;  // covers all visible formats that are left for later
  richtext::Extent unread_;       // covers all others that the window has dropped
  NativeSelection selected_;      // when it was last shown or taken
  long caret_ = 0;                // the window's caret at that time
  ShownColors colors_;
  int dpi_ = dpi_of_screen();
  bool read_only_ = false;
  mutable int busy_ = 0;
};

}  // namespace qel::windows
