#include "windows/BoxDisplay.h"

#include <algorithm>
#include <cmath>
#include <limits>
#include <utility>

#include "qel/base/Scoped.h"
#include "qel/base/Utf16.h"
#include "windows/FormatMapping.h"
#include "windows/Text.h"

namespace qel::windows {

using box::Change;
using box::Selection;
using richtext::CharFormat;
using richtext::Document;
using richtext::Extent;
using richtext::RunList;

namespace {

constexpr UINT utf16_code_page = 1200;
/// Where formats have to be put run by run, a long text gets the rest of them while the user
/// already sees its beginning.
constexpr std::chrono::milliseconds time_for_formats(40);

bool is_same(CHARRANGE a, CHARRANGE b) { return a.cpMin == b.cpMin && a.cpMax == b.cpMax; }

/// The part in which two texts differ; around it they are equal. It cuts no surrogate pair.
struct Difference {
  Extent before;
  Extent after;
};

Difference difference(std::u16string_view before, std::u16string_view after) {
  const std::size_t shorter = std::min(before.size(), after.size());
  std::size_t front = 0;
  while (front < shorter && before[front] == after[front]) ++front;
  if (front > 0 && is_high_surrogate(before[front - 1])) --front;
  std::size_t back = 0;
  while (back < shorter - front &&
         before[before.size() - back - 1] == after[after.size() - back - 1]) {
    ++back;
  }
  if (back > 0 && is_low_surrogate(before[before.size() - back])) --back;
  return {{front, before.size() - back}, {front, after.size() - back}};
}

}  // namespace

/// As long as it lives, nothing is painted and a read-only window's text can be changed.
class BoxDisplay::Frozen {
 public:
  explicit Frozen(const BoxDisplay& display)
      : display_(display), is_visible_(IsWindowVisible(display.window_) != 0) {
    // Thawing would show a hidden window.
    if (is_visible_) display_.send(WM_SETREDRAW, FALSE, LPARAM{0});
    if (display_.read_only_) display_.send(EM_SETREADONLY, FALSE, LPARAM{0});
    display_.send(EM_GETSCROLLPOS, 0, &scrolled_);
  }
  Frozen(const Frozen&) = delete;
  Frozen& operator=(const Frozen&) = delete;
  ~Frozen() {
    display_.send(EM_SETSCROLLPOS, 0, &scrolled_);
    if (display_.read_only_) display_.send(EM_SETREADONLY, TRUE, LPARAM{0});
    if (!is_visible_) return;
    display_.send(WM_SETREDRAW, TRUE, LPARAM{0});
    InvalidateRect(display_.window_, nullptr, TRUE);
  }

 private:
  const BoxDisplay& display_;
  bool is_visible_;
  POINT scrolled_ = {0, 0};
};

LRESULT BoxDisplay::send(UINT message, WPARAM parameter, LPARAM data) const {
  if (window_ == nullptr) return 0;
  const Scoped busy(busy_, busy_ + 1);
  return CallWindowProcW(procedure_, window_, message, parameter, data);
}

BoxDisplay::Deadline BoxDisplay::moment() {
  return std::chrono::steady_clock::now() + time_for_formats;
}

void BoxDisplay::attach(HWND window) {
  window_ = window;
  procedure_ = window == nullptr
                   ? nullptr
                   : reinterpret_cast<WNDPROC>(GetWindowLongPtrW(window, GWLP_WNDPROC));
  positions_ = Positions();
  unformatted_ = {};
  unread_ = {};
  selected_ = {};
  caret_ = 0;
  constexpr LPARAM no_limit = 0x7FFFFFFE;
  send(EM_EXLIMITTEXT, 0, no_limit);
  send(EM_SETUNDOLIMIT, 0, LPARAM{0});
  send(EM_SETEVENTMASK, 0, LPARAM{0});
  send(EM_SETREADONLY, read_only_ ? TRUE : FALSE, LPARAM{0});
}

void BoxDisplay::put_read_only(bool read_only) {
  read_only_ = read_only;
  send(EM_SETREADONLY, read_only ? TRUE : FALSE, LPARAM{0});
}

bool BoxDisplay::put_colors(const ShownColors& colors) {
  send(EM_SETBKGNDCOLOR, 0, static_cast<LPARAM>(colors.background));
  const ShownColors before = std::exchange(colors_, colors);
  if (before.automatic != colors.automatic) return true;
  const bool is_adapted = before.contrast > 0 || colors.contrast > 0;
  return is_adapted && before != colors;
}

void BoxDisplay::put_dpi(int dpi) {
  send(EM_SETZOOM, static_cast<WPARAM>(dpi), LPARAM{dpi_of_screen()});
  dpi_ = dpi;
}

void BoxDisplay::put_font(const std::u16string& name, float size) {
  CharFormat format;
  format.font_name = name;
  if (size > 0) format.size = size;
  CHARFORMAT2W native = native_format(format, colors_);
  send(EM_SETCHARFORMAT, SCF_DEFAULT, &native);
}

void BoxDisplay::show(const Change& change) {
  if (window_ == nullptr) return;
  const bool has_new_text =
      change.kind == Change::Kind::everything || change.kind == Change::Kind::content;
  if (put_in_place(change)) {
    show_selection();
  } else {
    const Frozen frozen(*this);
    const bool has_formats = change.kind == Change::Kind::alignments || put_streamed(change);
    if (!has_formats) put_by_runs(change);
    put_alignments(change.after());
    show_selection();
  }
  if (has_new_text) send(EM_SCROLLCARET, 0, LPARAM{0});
  send(EM_SETMODIFY, FALSE, LPARAM{0});
}

void BoxDisplay::put_visible_formats(Deadline deadline) {
  if (window_ == nullptr || is_complete()) return;
  {
    const Frozen frozen(*this);
    unformatted_ = put_formats(unformatted_, deadline);
    show_selection();
  }
  send(EM_SETMODIFY, FALSE, LPARAM{0});
}

void BoxDisplay::put_formats_for_reader(bool of_selection) {
  put_visible_formats(Deadline::max());
  if (window_ == nullptr || unread_.length() == 0) return;
  Extent asked = unread_;
  if (of_selection) {
    const Extent selected = box_.selected().extent();
    // At a caret, the format is that of the character before it or behind it.
    const std::size_t start = selected.start - std::min<std::size_t>(selected.start, 2);
    asked = {std::max(asked.start, start), std::min(asked.end, selected.end + 2)};
    if (asked.start >= asked.end) return;
    asked = box_.document().without_cut_breaks(asked);
  } else {
    unread_ = {};
  }
  {
    const Frozen frozen(*this);
    put_formats(asked, Deadline::max());
    show_selection();
  }
  send(EM_SETMODIFY, FALSE, LPARAM{0});
}

void BoxDisplay::put_typing_format() {
  if (box_.selected().is_empty()) put_format(box_.typing_format());
}

// The selection.

CHARRANGE BoxDisplay::native_selection() const {
  CHARRANGE range = {0, 0};
  send(EM_EXGETSEL, 0, &range);
  return range;
}

void BoxDisplay::select(CHARRANGE range) {
  send(EM_EXSETSEL, 0, &range);
  selected_ = {range.cpMin, range.cpMax};
  caret_ = range.cpMax;
}

/// The window would put its caret at the end and scroll there, which has to be undone.
void BoxDisplay::select_backward(NativeSelection selection) {
  select({selection.caret, selection.caret});
  send(EM_SCROLLCARET, 0, LPARAM{0});
  POINT scrolled = {0, 0};
  send(EM_GETSCROLLPOS, 0, &scrolled);
  select(selection.range());
  send(EM_SETSCROLLPOS, 0, &scrolled);
  selected_ = selection;
}

void BoxDisplay::show_selection() {
  take_selection();
  const Selection& selection = box_.selected();
  const NativeSelection wanted = {positions_.native(selection.anchor),
                                  positions_.native(selection.caret)};
  if (wanted == selected_) return;
  if (wanted.caret < wanted.anchor) return select_backward(wanted);
  // The window ignores a selection that it already has.
  if (is_same(wanted.range(), selected_.range())) put_caret(selection.caret);
  select(wanted.range());
}

std::optional<Selection> BoxDisplay::take_selection() {
  const CHARRANGE now = native_selection();
  if (!is_same(now, selected_.range())) {
    // The end from which the user selects stays where it was.
    const bool is_backward = now.cpMax == selected_.anchor;
    selected_ =
        is_backward ? NativeSelection{now.cpMax, now.cpMin} : NativeSelection{now.cpMin, now.cpMax};
    caret_ = selected_.caret;
  }
  const Selection taken = {positions_.of_native(selected_.anchor),
                           positions_.of_native(selected_.caret)};
  return taken == box_.selected() ? std::nullopt : std::optional(taken);
}

// Edits by others.

std::u16string BoxDisplay::read_text() const {
  GETTEXTLENGTHEX measured = {GTL_NUMCHARS | GTL_PRECISE, utf16_code_page};
  const LRESULT length = send(EM_GETTEXTLENGTHEX, reinterpret_cast<WPARAM>(&measured), LPARAM{0});
  std::u16string text(static_cast<std::size_t>(std::max<LRESULT>(length, 0)), u'\0');
  GETTEXTEX asked = {};
  asked.cb = static_cast<DWORD>((text.size() + 1) * sizeof(char16_t));
  asked.codepage = utf16_code_page;
  const LRESULT read = send(EM_GETTEXTEX, reinterpret_cast<WPARAM>(&asked), text.data());
  text.resize(std::min(text.size(), static_cast<std::size_t>(std::max<LRESULT>(read, 0))));
  return text;
}

std::optional<BoxDisplay::ForeignEdit> BoxDisplay::take_text(Touch touch) {
  send(EM_SETMODIFY, FALSE, LPARAM{0});
  const std::u16string native = read_text();
  const auto [before, after] = difference(native_text(box_.text()), native);
  const bool is_same = before.length() == 0 && after.length() == 0;
  const Extent selected = box_.selected().extent();
  if (is_same && selected.length() == 0 && touch != Touch::all) return {};
  const auto position = [this](std::size_t at) {
    return positions_.of_native(static_cast<long>(at));
  };
  ForeignEdit edit = {{position(before.start), position(before.end)},
                      box_text(std::u16string_view(native).substr(after.start, after.length()))};
  note_replaced(edit.extent, edit.text);
  if (touch == Touch::all) {
    show_everything();
  } else {
    // The same text may have another format where it has replaced the selection.
    Extent own = selected;
    if (!is_same) {
      own = {std::min(edit.extent.start, own.start), std::max(edit.extent.end, own.end)};
    }
    const std::size_t length = own.length() - edit.extent.length() + edit.text.size();
    show({Change::Kind::content, {own.start, own.start + length}, own.length()});
  }
  return is_same ? std::nullopt : std::optional(std::move(edit));
}

LONG BoxDisplay::line_of_caret() const {
  return static_cast<LONG>(send(EM_EXLINEFROMCHAR, 0, LPARAM{native_selection().cpMax}));
}

std::size_t BoxDisplay::position_at(POINT point) const {
  POINTL asked = {point.x, point.y};
  const auto native = static_cast<long>(send(EM_CHARFROMPOS, 0, &asked));
  return std::min(positions_.of_native(native), box_.text().size());
}

POINT BoxDisplay::point_of(std::size_t position) const {
  POINTL point = {0, 0};
  send(EM_POSFROMCHAR, reinterpret_cast<WPARAM>(&point), LPARAM{positions_.native(position)});
  return {point.x, point.y};
}

RECT BoxDisplay::caret_at(std::size_t position) const {
  constexpr double line_of_points = 1.2 / 72;
  DWORD width = 1;
  SystemParametersInfoW(SPI_GETCARETWIDTH, 0, &width, 0);
  const int pixels = std::max(scaled(static_cast<int>(width), dpi_), 1);
  const Document& document = box_.document();
  const std::size_t last = std::max<std::size_t>(document.size(), 1) - 1;
  const CharFormat& format =
      document.size() == 0 ? box_.typing_format() : document.format_at(std::min(position, last));
  const double size = format.size;
  const POINT top = point_of(position);
  return {top.x, top.y, top.x + pixels, top.y + std::lround(size * line_of_points * dpi_)};
}

}  // namespace qel::windows
