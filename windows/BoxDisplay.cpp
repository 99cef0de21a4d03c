#include "windows/BoxDisplay.h"

#include <algorithm>
#include <utility>

#include "qel/base/Scoped.h"
#include "windows/FormatMapping.h"
#include "windows/Positions.h"
#include "windows/Text.h"

namespace qel::windows {

using richtext::CharFormat;
using richtext::Document;
using richtext::Extent;
using richtext::RunList;

namespace {

constexpr UINT utf16_code_page = 1200;
/// Windows lay out a paragraph anew for each of its runs that gets a format, so a long text goes on
/// in its formats when the user sees its beginning.
constexpr std::chrono::milliseconds time_for_formats(40);

Extent common(Extent a, Extent b) {
  const std::size_t start = std::max(a.start, b.start);
  return {start, std::max(start, std::min(a.end, b.end))};
}

}  // namespace

/// While one of these lives nothing is painted, and a text that may only be read can be changed.
class BoxDisplay::Frozen {
 public:
  explicit Frozen(const BoxDisplay& display)
      : display_(display), is_visible_(IsWindowVisible(display.window_) != 0) {
    // A hidden window would come to light by being thawed.
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
  return SendMessageW(window_, message, parameter, data);
}

void BoxDisplay::attach(HWND window) {
  window_ = window;
  shown_ = Document();
  selected_ = {0, 0};
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

void BoxDisplay::put_background(Color color) {
  send(EM_SETBKGNDCOLOR, 0, static_cast<LPARAM>(color_value(color)));
  const std::optional<COLORREF> before = std::exchange(automatic_, text_color_on(color));
  if (before == automatic_ || shown_.size() == 0) return;
  // All text of no colour is in another one now.
  forget({0, shown_.size()}, std::u16string(shown_.text()));
}

void BoxDisplay::put_font(const std::u16string& name, float size) {
  CharFormat format;
  format.font_name = name;
  if (size > 0) format.size = size;
  CHARFORMAT2W native = native_format(format, automatic_);
  send(EM_SETCHARFORMAT, SCF_DEFAULT, &native);
}

void BoxDisplay::show(const Document& document, Extent selection, Patience patience) {
  if (window_ == nullptr) return;
  const Deadline deadline = patience == Patience::all
                                ? Deadline::max()
                                : std::chrono::steady_clock::now() + time_for_formats;
  const Difference change = difference(shown_, document);
  const bool is_same_text = change.text.is_empty();
  const bool is_same = is_same_text && change.formats.is_empty() && change.alignments.is_empty();
  if (!is_same) {
    const Frozen frozen(*this);
    if (!is_same_text) replace_text(document, change.text);
    // What the window makes of paragraphs that were joined or cut is its own.
    Extent aligned = change.alignments.after;
    if (!is_same_text) aligned.end = std::max(aligned.end, change.text.after.end + 1);
    put_alignments(document, aligned);
    // What the user has just changed comes before what is left from earlier.
    put_formats(document,
                is_same_text ? common(change.formats.after, selection) : change.text.after,
                deadline);
    const bool goes_on = is_same_text || patience == Patience::all;
    if (goes_on) put_formats(document, difference(shown_, document).formats.after, deadline);
    select(native_range(selection));
  }
  show_selection(selection);
  if (!is_same_text) send(EM_SCROLLCARET, 0, LPARAM{0});
  if (!is_same) send(EM_SETMODIFY, FALSE, LPARAM{0});
  is_complete_ = is_same || difference(shown_, document).formats.is_empty();
}

void BoxDisplay::show_selection(Extent selection) {
  const CHARRANGE wanted = native_range(selection);
  const CHARRANGE now = native_selection();
  if (wanted.cpMin != now.cpMin || wanted.cpMax != now.cpMax) select(wanted);
  selected_ = native_selection();
}

void BoxDisplay::replace_text(const Document& document, const Change& change) {
  select(native_range(change.before));
  const std::u16string_view text = document.text();
  const std::u16string_view put = text.substr(change.after.start, change.after.length());
  std::u16string native = native_text(put);
  send(EM_REPLACESEL, FALSE, native.data());
  forget(change.before, put);
}

/// Text stands in place of an extent in the window, in formats that nobody knows.
void BoxDisplay::forget(Extent extent, std::u16string_view text) {
  // No format and no alignment is the same as these.
  CharFormat unknown;
  unknown.size = 0;
  shown_.replace(extent, richtext::plain_document(text, unknown));
  shown_.align({extent.start, extent.start + text.size()}, static_cast<richtext::Alignment>(-1));
}

/// Run by run, until the time is up; at least one of them.
void BoxDisplay::put_formats(const Document& document, Extent extent, Deadline deadline) {
  if (extent.length() == 0) return;
  const RunList& runs = document.runs();
  NativePositions positions(document.text());
  std::size_t done = extent.start;
  for (std::size_t i = runs.find(extent.start); done < extent.end; ++i) {
    const RunList::Run run = runs.run(i);
    const long start = positions.of(done);
    done = std::min(run.end, extent.end);
    select({start, positions.of(done)});
    CHARFORMAT2W format = native_format(document.format(run.value), automatic_);
    send(EM_SETCHARFORMAT, SCF_SELECTION, &format);
    if (std::chrono::steady_clock::now() > deadline) break;
  }
  shown_.restore({extent.start, done}, document.part({extent.start, done}));
}

void BoxDisplay::put_alignments(const Document& document, Extent extent) {
  if (extent.length() == 0) return;
  const RunList& runs = document.alignments();
  NativePositions positions(document.text());
  for (std::size_t i = runs.find(extent.start); i < runs.run_count(); ++i) {
    const RunList::Run run = runs.run(i);
    if (run.start >= extent.end) return;
    const std::size_t start = std::max(run.start, extent.start);
    const std::size_t last = std::min(run.end, extent.end) - 1;
    select({positions.of(document.without_cut_breaks({start, start}).start),
            positions.of(document.without_cut_breaks({last, last}).start)});
    const auto alignment = static_cast<richtext::Alignment>(run.value);
    PARAFORMAT2 format = native_format(alignment);
    send(EM_SETPARAFORMAT, 0, &format);
    shown_.align({start, last}, alignment);
  }
}

CHARRANGE BoxDisplay::native_selection() const {
  CHARRANGE range = {0, 0};
  send(EM_EXGETSEL, 0, &range);
  return range;
}

/// Of a part of what is shown.
CHARRANGE BoxDisplay::native_range(Extent extent) const {
  NativePositions positions(shown_.text());
  const Extent whole = shown_.without_cut_breaks(extent);
  const long start = positions.of(whole.start);
  return {start, positions.of(whole.end)};
}

void BoxDisplay::select(CHARRANGE range) const { send(EM_EXSETSEL, 0, &range); }

std::optional<Extent> BoxDisplay::take_selection() {
  const CHARRANGE now = native_selection();
  if (now.cpMin == selected_.cpMin && now.cpMax == selected_.cpMax) return {};
  selected_ = now;
  return Extent{box_position(shown_.text(), now.cpMin), box_position(shown_.text(), now.cpMax)};
}

bool BoxDisplay::is_touched() const { return send(EM_GETMODIFY, 0, LPARAM{0}) != 0; }

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

BoxDisplay::ForeignChange BoxDisplay::take_text(Touch touch) {
  send(EM_SETMODIFY, FALSE, LPARAM{0});
  const std::u16string native = read_text();
  const Change change = text_change(native_text(shown_.text()), native);
  const auto position = [&](std::size_t at) {
    return box_position(shown_.text(), static_cast<long>(at));
  };
  ForeignChange foreign = {
      {position(change.before.start), position(change.before.end)},
      box_text(std::u16string_view(native).substr(change.after.start, change.after.length()))};
  if (!change.is_empty()) forget(foreign.extent, foreign.text);
  if (touch == Touch::all) forget({0, shown_.size()}, std::u16string(shown_.text()));
  return foreign;
}

LONG BoxDisplay::line_of_caret() const {
  return static_cast<LONG>(send(EM_EXLINEFROMCHAR, 0, LPARAM{native_selection().cpMax}));
}

std::int32_t BoxDisplay::position_at(POINT point) const {
  POINTL asked = {point.x, point.y};
  const LRESULT native = send(EM_CHARFROMPOS, 0, &asked);
  return static_cast<std::int32_t>(box_position(shown_.text(), static_cast<long>(native)));
}

POINT BoxDisplay::point_of(std::int32_t position) const {
  const auto at = static_cast<std::size_t>(std::max(position, 0));
  POINTL point = {0, 0};
  const CHARRANGE range = native_range({std::min(at, shown_.size()), std::min(at, shown_.size())});
  send(EM_POSFROMCHAR, reinterpret_cast<WPARAM>(&point), static_cast<LPARAM>(range.cpMin));
  return {point.x, point.y};
}

}  // namespace qel::windows
