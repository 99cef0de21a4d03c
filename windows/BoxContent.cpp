// How a box's text and formats get into its window.

#include <algorithm>
#include <cstring>
#include <limits>
#include <map>
#include <utility>

#include "windows/BoxDisplay.h"
#include "windows/FormatMapping.h"
#include "windows/NativeRtf.h"
#include "windows/Text.h"

namespace qel::windows {

using box::Change;
using richtext::Document;
using richtext::Extent;
using richtext::FormatPool;
using richtext::RunList;

namespace {

/// A window lays out a paragraph again for each of its runs that gets a format. Reading them all as
/// RTF has it do so once, but costs more than that for a few.
constexpr std::size_t few_runs = 8;

/// Where a part of a text is after a change.
Extent moved(Extent part, const Change& change) {
  const auto move = [&](std::size_t position, std::size_t when_replaced) {
    if (position <= change.extent.start) return position;
    if (position < change.extent.end) return when_replaced;
    return position - change.extent.length() + change.length;
  };
  const std::size_t start = move(part.start, change.after().end);
  return {start, std::max(start, move(part.end, change.extent.start))};
}

/// Adds another part to the one that covers all of a kind.
void add(Extent& parts, Extent part) {
  if (part.length() == 0) return;
  const bool is_first = parts.length() == 0;
  parts =
      is_first ? part : Extent{std::min(parts.start, part.start), std::max(parts.end, part.end)};
}

std::size_t run_count(const Document& document, Extent extent) {
  if (extent.length() == 0) return 0;
  return document.runs().find(extent.end - 1) - document.runs().find(extent.start) + 1;
}

/// Calls `visit(part, format)` for the part of each run that is in the extent, as long as it
/// returns true.
template <class Visit>
void visit_runs(const Document& document, Extent extent, Visit visit) {
  if (extent.length() == 0) return;
  for (std::size_t i = document.runs().find(extent.start); extent.length() > 0; ++i) {
    const RunList::Run run = document.runs().run(i);
    const std::size_t end = std::min(run.end, extent.end);
    if (!visit(Extent{extent.start, end}, run.value)) return;
    extent.start = end;
  }
}

/// The format of most characters.
FormatPool::Id commonest_format(const Document& document, Extent extent) {
  std::map<FormatPool::Id, std::size_t> lengths;
  visit_runs(document, extent, [&](Extent part, FormatPool::Id format) {
    lengths[format] += part.length();
    return true;
  });
  return std::max_element(lengths.begin(), lengths.end(),
                          [](const auto& a, const auto& b) { return a.second < b.second; })
      ->first;
}

DWORD CALLBACK read_on(DWORD_PTR cookie, BYTE* buffer, LONG asked, LONG* read) {
  auto& rest = *reinterpret_cast<std::string_view*>(cookie);
  const std::size_t size = std::min(rest.size(), static_cast<std::size_t>(asked));
  std::memcpy(buffer, rest.data(), size);
  rest.remove_prefix(size);
  *read = static_cast<LONG>(size);
  return 0;
}

}  // namespace

/// Shows an insertion of one format or a removal, such as a key's, without freezing the window.
/// Whether it was one.
bool BoxDisplay::put_in_place(const Change& change) {
  const Document& document = box_.document();
  const Extent after = change.after();
  const bool is_simple = change.extent.length() == 0 || after.length() == 0;
  if (change.kind != Change::Kind::content || !is_simple || read_only_ ||
      run_count(document, after) > 1) {
    return false;
  }
  const std::u16string text = box_.text().substr(after.start, after.length());
  const CHARRANGE replaced = native_range(change.extent);
  const auto length = static_cast<std::size_t>(replaced.cpMax - replaced.cpMin);
  const bool has_breaks = length != change.extent.length() || text.find(u'\r') != text.npos;
  select(replaced);
  if (!text.empty()) put_format(document.format_at(after.start));
  replace_selection(change.extent, text);
  if (has_breaks || read_alignment() != document.alignment_at(after.start)) put_alignments(after);
  return true;
}

void BoxDisplay::put_by_runs(const Change& change) {
  const Extent after = change.after();
  if (change.kind != Change::Kind::formats) {
    select_replaced(change);
    replace_selection(change.extent, box_.text().substr(after.start, after.length()));
  }
  // What has just changed comes before what was left earlier.
  add(unformatted_, put_formats(after, moment()));
}

/// Replaces the text, together with its formats. Returns false, and does nothing, where that does
/// not pay; where the window has read another text, it puts the right one there and leaves the
/// formats for later.
bool BoxDisplay::put_streamed(const Change& change) {
  const Document& document = box_.document();
  const Extent after = change.after();
  if (run_count(document, after) <= few_runs) return false;
  const richtext::CharFormat& base = document.format(commonest_format(document, after));
  select_replaced(change);
  replace_selection(change.extent, {});
  put_format(base);
  stream(native_rtf(document, after, base, colors_));
  const std::u16string_view text =
      std::u16string_view(box_.text()).substr(after.start, after.length());
  note_replaced({after.start, after.start}, text);
  const std::u16string shown = read_text();
  const std::u16string wanted = native_text(box_.text());
  if (shown == wanted) {
    find_unread(after);
  } else {
    const auto surplus = static_cast<long>(shown.size()) - static_cast<long>(wanted.size());
    const CHARRANGE range = native_range(after);
    select({range.cpMin, std::max(range.cpMin, range.cpMax + surplus)});
    send(EM_REPLACESEL, FALSE, native_text(text).data());
    add(unformatted_, put_formats(after, moment()));
  }
  return true;
}

void BoxDisplay::stream(std::string_view rtf) {
  EDITSTREAM stream = {reinterpret_cast<DWORD_PTR>(&rtf), 0, read_on};
  send(EM_STREAMIN, SF_RTF | SFF_SELECTION, &stream);
}

/// Leaves for later what the window has dropped of the formats that it has read.
void BoxDisplay::find_unread(Extent extent) {
  const Document& document = box_.document();
  std::map<FormatPool::Id, Likeness> known;
  visit_runs(document, extent, [&](Extent part, FormatPool::Id format) {
    const auto [its, is_new] = known.try_emplace(format, Likeness::same);
    if (is_new) {
      select(native_range(part));
      its->second = likeness(read_format(), native_format(document.format(format), colors_));
    }
    if (its->second == Likeness::different) add(unformatted_, part);
    if (its->second == Likeness::looks_alike) add(unread_, part);
    return true;
  });
}

void BoxDisplay::select_replaced(const Change& change) {
  const bool is_all = change.kind == Change::Kind::everything;
  select(is_all ? CHARRANGE{0, std::numeric_limits<LONG>::max()} : native_range(change.extent));
}

void BoxDisplay::replace_selection(Extent extent, std::u16string_view text) {
  std::u16string native = native_text(text);
  send(EM_REPLACESEL, FALSE, native.data());
  note_replaced(extent, text);
}

/// In the window, text has replaced the extent.
void BoxDisplay::note_replaced(Extent extent, std::u16string_view text) {
  positions_.replace(extent, text);
  const Change made = {Change::Kind::content, extent, text.size()};
  unformatted_ = moved(unformatted_, made);
  unread_ = moved(unread_, made);
}

CHARFORMAT2W BoxDisplay::read_format() const {
  CHARFORMAT2W format = {};
  format.cbSize = sizeof format;
  send(EM_GETCHARFORMAT, SCF_SELECTION, &format);
  return format;
}

/// Gives the selection the format, unless it has it: the window would lay the paragraph out again.
void BoxDisplay::put_format(const richtext::CharFormat& format) {
  CHARFORMAT2W native = native_format(format, colors_);
  if (likeness(read_format(), native) == Likeness::same) return;
  send(EM_SETCHARFORMAT, SCF_SELECTION, &native);
}

/// Works run by run until the time is up, but does at least one run. Returns the rest.
Extent BoxDisplay::put_formats(Extent extent, Deadline deadline) {
  const Document& document = box_.document();
  if (run_count(document, extent) > few_runs) {
    select(native_range(extent));
    put_format(document.format(commonest_format(document, extent)));
  }
  visit_runs(document, extent, [&](Extent part, FormatPool::Id format) {
    select(native_range(part));
    put_format(document.format(format));
    extent.start = part.end;
    return std::chrono::steady_clock::now() <= deadline;
  });
  return extent;
}

std::optional<richtext::Alignment> BoxDisplay::read_alignment() const {
  PARAFORMAT2 format = {};
  format.cbSize = sizeof format;
  send(EM_GETPARAFORMAT, 0, &format);
  if ((format.dwMask & PFM_ALIGNMENT) == 0) return {};
  switch (format.wAlignment) {
    case PFA_CENTER:
      return richtext::Alignment::center;
    case PFA_RIGHT:
      return richtext::Alignment::right;
    case PFA_LEFT:
      return richtext::Alignment::left;
    default:
      return {};
  }
}

void BoxDisplay::align_selection(richtext::Alignment alignment) {
  if (read_alignment() == alignment) return;
  PARAFORMAT2 format = native_format(alignment);
  send(EM_SETPARAFORMAT, 0, &format);
}

/// Applies to all paragraphs that the extent touches: the window has its own way with those that
/// were joined or cut.
void BoxDisplay::put_alignments(Extent extent) {
  const Document& document = box_.document();
  const Extent paragraphs = document.paragraphs(extent);
  const RunList& runs = document.alignments();
  for (std::size_t i = runs.find(paragraphs.start); i < runs.run_count(); ++i) {
    const RunList::Run run = runs.run(i);
    if (run.start > paragraphs.end) return;
    const auto alignment = static_cast<richtext::Alignment>(run.value);
    const Extent aligned = {std::max(run.start, paragraphs.start),
                            std::min(run.end - 1, paragraphs.end)};
    const CHARRANGE range = native_range(aligned);
    select(range);
    align_selection(alignment);
    // An empty paragraph at the end of a selection is not part of it.
    const std::size_t last = document.paragraphs({aligned.end, aligned.end}).start;
    if (range.cpMin == range.cpMax || positions_.native(last) < range.cpMax) continue;
    select({range.cpMax, range.cpMax});
    align_selection(alignment);
  }
}

}  // namespace qel::windows
