#include "qt/platform/DocumentDisplay.h"

#include <QTextBlock>
#include <QTextCursor>
#include <algorithm>
#include <cstddef>
#include <string_view>
#include <utility>
#include <vector>

#include "qel/base/Graphemes.h"
#include "qel/base/Scan.h"
#include "qel/base/Utf16.h"
#include "qt/platform/Text.h"

namespace qel::qt {

using box::Change;
using richtext::Document;
using richtext::Extent;
using richtext::RunList;

namespace {

constexpr char16_t paragraph_separator = 0x2029;
constexpr char16_t begin_of_frame = 0xFDD0;
constexpr char16_t end_of_frame = 0xFDD1;

/// The character, or a substitute where Qt cannot hold it.
char16_t storable(char16_t unit) {
  if (unit == paragraph_separator) return QChar::LineSeparator;
  return unit == begin_of_frame || unit == end_of_frame ? char16_t{QChar::ReplacementCharacter}
                                                        : unit;
}

QString storable_text(std::u16string_view text, bool is_symbols) {
  QString stored = to_qt(text);
  if (is_symbols) {
    for (QChar& unit : stored) unit = shown_symbol(unit.unicode());
  }
  std::size_t at = find_any<paragraph_separator, begin_of_frame, end_of_frame>(text, 0);
  for (; at < text.size(); ++at) stored[static_cast<qsizetype>(at)] = storable(text[at]);
  return stored;
}

void append_shown(std::u16string& shown, std::u16string_view text, bool is_symbols) {
  for (const char16_t unit : text) {
    if (unit == u'\n') {
      shown.push_back(paragraph_separator);
    } else if (unit != u'\r') {
      shown.push_back(is_symbols ? shown_symbol(storable(unit)) : storable(unit));
    }
  }
}

/// Tells formats of symbol fonts, by their values in runs; a name is looked at once.
class SymbolFormats {
 public:
  explicit SymbolFormats(const Document& content) : content_(content) {}

  bool has(const RunList::Run& run) {
    if (run.value >= known_.size()) known_.resize(run.value + 1);
    auto& known = known_[run.value];
    if (!known) known = is_symbol_font(content_.format(run.value).font_name);
    return *known;
  }

 private:
  const Document& content_;
  std::vector<std::optional<bool>> known_;
};

/// The content's text as it is in a Qt document, where a break is one character.
std::u16string shown_text(const Document& content) {
  const RunList& runs = content.runs();
  const std::u16string_view text = content.text();
  SymbolFormats symbols(content);
  std::u16string shown;
  shown.reserve(text.size());
  for (std::size_t i = 0; i < runs.run_count(); ++i) {
    const RunList::Run run = runs.run(i);
    append_shown(shown, text.substr(run.start, run.end - run.start), symbols.has(run));
  }
  return shown;
}

bool has_symbols(const Document& content, Extent extent) {
  const RunList& runs = content.runs();
  SymbolFormats symbols(content);
  std::size_t index = runs.find(extent.start);
  for (; index < runs.run_count() && runs.run(index).start < extent.end; ++index) {
    if (symbols.has(runs.run(index))) return true;
  }
  return false;
}

/// Whether so much changes that it is quicker to load the whole content again.
bool is_large(std::size_t length, const Document& content) {
  constexpr std::size_t large = 20'000;
  constexpr std::size_t share = 4;
  return length > large && length * share > content.size();
}

/// Groups the changes of a document as long as it lives.
class Edits {
 public:
  explicit Edits(QTextCursor& cursor) : cursor_(cursor) { cursor_.beginEditBlock(); }
  Edits(const Edits&) = delete;
  Edits& operator=(const Edits&) = delete;
  ~Edits() { cursor_.endEditBlock(); }

 private:
  QTextCursor& cursor_;
};

}  // namespace

DocumentDisplay::DocumentDisplay(QTextDocument& document) : document_(document) {
  document_.setUndoRedoEnabled(false);
}

QTextBlockFormat DocumentDisplay::block_format(richtext::Alignment alignment) const {
  QTextBlockFormat format;
  format.setAlignment(to_qt(alignment));
  format.setLineHeight(line_spacing_, QTextBlockFormat::ProportionalHeight);
  return format;
}

bool DocumentDisplay::has_colors(const Document& content) {
  const RunList& runs = content.runs();
  for (std::size_t i = 0; i < runs.run_count(); ++i) {
    if (content.format(runs.run(i).value).color != 0) return true;
  }
  return false;
}

void DocumentDisplay::put_line_spacing(int per_cent) {
  if (std::exchange(line_spacing_, per_cent) == per_cent) return;
  QTextBlockFormat format;
  format.setLineHeight(line_spacing_, QTextBlockFormat::ProportionalHeight);
  QTextCursor cursor(&document_);
  cursor.select(QTextCursor::Document);
  cursor.mergeBlockFormat(format);
}

Span DocumentDisplay::span_of(Extent extent) const {
  const auto position = [this](std::size_t at) {
    return document_position(document_, static_cast<std::int64_t>(at));
  };
  const int start = position(extent.start);
  return {start, extent.length() == 0 ? start : position(extent.end)};
}

void DocumentDisplay::load(const Document& content) {
  document_.clear();
  shows_symbols_ = false;
  QTextCursor cursor(&document_);
  const Edits edits(cursor);
  // New paragraphs take the format of the one that is there.
  cursor.setBlockFormat(block_format(content.alignment_at(0)));
  if (content.size() != 0) cursor.setBlockCharFormat(to_qt(content.format_at(0), scheme_));
  insert(cursor, content, {0, content.size()});
  if (content.alignments().run_count() != 1) put_alignments(content, {0, content.size()});
}

bool DocumentDisplay::loads(const Document& content, const Change& change) {
  if (change.kind == Change::Kind::alignments) return false;
  return change.kind == Change::Kind::everything ||
         is_large(std::max(change.extent.length(), change.length), content);
}

void DocumentDisplay::show(const Document& content, const Change& change) {
  if (loads(content, change)) return load(content);
  if (change.kind == Change::Kind::alignments) return put_alignments(content, change.extent);
  if (change.kind == Change::Kind::formats) return put_formats(content, change.extent);
  replace(span_of(change.extent), content, change.after());
}

void DocumentDisplay::replace(Span span, const Document& content, Extent extent) {
  QTextCursor cursor(&document_);
  const Edits edits(cursor);
  cursor.setPosition(span.start);
  cursor.setPosition(span.end, QTextCursor::KeepAnchor);
  cursor.removeSelectedText();
  insert(cursor, content, extent);
  put_alignments(content, extent);
}

void DocumentDisplay::insert(QTextCursor& cursor, const Document& content, Extent extent) {
  const RunList& runs = content.runs();
  std::vector<std::optional<QTextCharFormat>> formats;
  SymbolFormats symbols(content);
  const std::u16string_view text = content.text();
  std::size_t index = runs.find(extent.start);
  for (std::size_t at = extent.start; at < extent.end; ++index) {
    const RunList::Run run = runs.run(index);
    const std::size_t end = std::min(run.end, extent.end);
    if (run.value >= formats.size()) formats.resize(run.value + 1);
    auto& format = formats[run.value];
    const bool is_new = !format;
    if (is_new) format = to_qt(content.format(run.value), scheme_);
    const bool is_symbols = symbols.has(run);
    shows_symbols_ = shows_symbols_ || is_symbols;
    cursor.insertText(storable_text(text.substr(at, end - at), is_symbols), *format);
    at = end;
    if (!is_new || at == extent.end) continue;
    // The document looks up each format; it recognises its own copy without comparing properties.
    const QTextCharFormat known = cursor.charFormat();
    if (known == *format) format = known;
  }
}

void DocumentDisplay::put_formats(const Document& content, Extent extent) {
  // Letters may have become signs, or signs letters.
  if (shows_symbols_ || has_symbols(content, extent)) {
    return replace(span_of(extent), content, extent);
  }
  const RunList& runs = content.runs();
  QTextCursor cursor(&document_);
  const Edits edits(cursor);
  std::size_t index = runs.find(extent.start);
  for (std::size_t at = extent.start; at < extent.end; ++index) {
    const RunList::Run run = runs.run(index);
    const std::size_t end = std::min(run.end, extent.end);
    const Span span = span_of({at, end});
    cursor.setPosition(span.start);
    cursor.setPosition(span.end, QTextCursor::KeepAnchor);
    cursor.setCharFormat(to_qt(content.format(run.value), scheme_));
    at = end;
  }
}

/// Applies to the paragraphs that the extent touches.
void DocumentDisplay::put_alignments(const Document& content, Extent extent) {
  const Span span = span_of(extent);
  const QTextBlock last = document_.findBlock(span.end);
  for (QTextBlock block = document_.findBlock(span.start); block.isValid(); block = block.next()) {
    const auto at = static_cast<std::size_t>(box_position(document_, block.position()));
    const richtext::Alignment alignment = content.alignment_at(at);
    if (alignment_of(block.blockFormat()) != alignment) {
      QTextCursor(block).mergeBlockFormat(block_format(alignment));
    }
    if (block == last) return;
  }
}

std::optional<DocumentDisplay::Edit> DocumentDisplay::foreign_edit(const Document& content) const {
  const std::u16string known = shown_text(content);
  std::u16string found = from_qt(document_.toRawText());
  const std::size_t shorter = std::min(known.size(), found.size());
  const auto differs = std::mismatch(
      known.begin(), known.begin() + static_cast<std::ptrdiff_t>(shorter), found.begin());
  auto front = static_cast<std::size_t>(differs.first - known.begin());
  if (front == known.size() && front == found.size()) return {};
  front = std::min(whole_position(known, front), whole_position(found, front));
  std::size_t back = 0;
  while (back < shorter - front &&
         known[known.size() - back - 1] == found[found.size() - back - 1]) {
    ++back;
  }
  if (back > 0 && is_low_surrogate(known[known.size() - back])) --back;

  const auto position = [&known](std::size_t at) {
    const auto end = known.begin() + static_cast<std::ptrdiff_t>(at);
    return at + static_cast<std::size_t>(std::count(known.begin(), end, paragraph_separator));
  };
  constexpr std::u16string_view separator = u"\u2029";
  std::u16string text = found.substr(front, found.size() - back - front);
  std::replace(text.begin(), text.end(), begin_of_frame, paragraph_separator);
  std::replace(text.begin(), text.end(), end_of_frame, paragraph_separator);
  return Edit{{position(front), position(known.size() - back)},
              replace_all(std::move(text), separator, u"\r\n")};
}

void DocumentDisplay::take_back(const Document& content, const Edit& edit) {
  // Only others make frames, tables and lists.
  if (document_.rootFrame()->childFrames().isEmpty()) {
    std::u16string shown;
    append_shown(shown, edit.text, false);
    const int start = span_of({edit.extent.start, edit.extent.start}).start;
    replace({start, start + static_cast<int>(shown.size())}, content, edit.extent);
  } else {
    load(content);
  }
}

}  // namespace qel::qt
