#pragma once

#include <windows.h>
// Needs the types of the other.
#include <richedit.h>

#include <chrono>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

#include "qel/platform/RichEdit.h"
#include "qel/richtext/Document.h"
#include "windows/Difference.h"

namespace qel::windows {

/// A rich edit window of the system as the view of a document. It is told what has become of the
/// document and changes no more than what differs, character by character and run by run: its own
/// reader and writer of RTF are never used.
class BoxDisplay {
 public:
  /// Shows things in that empty window from now on; null for none.
  void attach(HWND window);
  HWND window() const { return window_; }

  void put_read_only(bool read_only);
  /// Colours the background; text of no colour of its own is shown in one that is readable on it.
  void put_background(Color color);
  /// The font of an empty text; a size that is none is left out.
  void put_font(const std::u16string& name, float size);

  /// Whether to come back before a long text has all of its formats.
  enum class Patience { some, all };
  /// Makes the window show the document, with that part of it selected, and scrolls to the caret
  /// where the text is another. Formats may be left over for the next time.
  void show(const richtext::Document& document, richtext::Extent selection, Patience patience);
  /// Shows which part of what is shown is selected.
  void show_selection(richtext::Extent selection);
  /// Whether no format is left over.
  bool is_complete() const { return is_complete_; }

  /// The part of the document that was selected in the window since it was shown; nothing when it
  /// is still the same.
  std::optional<richtext::Extent> take_selection();
  /// Whether somebody else may have changed the window's text.
  bool is_touched() const;
  /// How much of the window somebody else may have changed.
  enum class Touch { none, part, all };
  /// The change that brings the document to the text that somebody else has left in the window.
  struct ForeignChange {
    richtext::Extent extent;
    std::u16string text;
  };
  ForeignChange take_text(Touch touch);

  /// Whether this is at work on the window: messages that reach it are this class's own.
  bool is_busy() const { return busy_ > 0; }
  /// The line that the caret or the end of the selection is in, from 0; wrapped lines count.
  LONG line_of_caret() const;
  /// The position nearest to a point in the window.
  std::int32_t position_at(POINT point) const;
  /// Where the character at a position is in the window.
  POINT point_of(std::int32_t position) const;

 private:
  class Frozen;
  using Deadline = std::chrono::steady_clock::time_point;

  LRESULT send(UINT message, WPARAM parameter, LPARAM data) const;
  template <class Data>
  LRESULT send(UINT message, WPARAM parameter, Data* data) const {
    return send(message, parameter, reinterpret_cast<LPARAM>(data));
  }
  std::u16string read_text() const;
  CHARRANGE native_selection() const;
  CHARRANGE native_range(richtext::Extent extent) const;
  void select(CHARRANGE range) const;
  void replace_text(const richtext::Document& document, const Change& change);
  void forget(richtext::Extent extent, std::u16string_view text);
  void put_formats(const richtext::Document& document, richtext::Extent extent, Deadline deadline);
  void put_alignments(const richtext::Document& document, richtext::Extent extent);

  HWND window_ = nullptr;
  richtext::Document shown_;  // as the window has it
  CHARRANGE selected_ = {0, 0};
  std::optional<COLORREF> automatic_;
  bool read_only_ = false;
  bool is_complete_ = true;
  mutable int busy_ = 0;
};

}  // namespace qel::windows
