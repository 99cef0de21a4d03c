#include "qt/platform/DocumentMapping.h"

#include <cstddef>
#include <string>
#include <vector>

#include "qel/base/Scan.h"
#include "qt/platform/Text.h"

namespace qel::qt {

using richtext::CharFormat;
using richtext::Document;
using richtext::RunList;

namespace {

constexpr std::u16string_view line_break = u"\r\n";

constexpr char16_t begin_of_frame = 0xFDD0;
constexpr char16_t end_of_frame = 0xFDD1;

/// The character as Qt can hold it.
char16_t storable(char16_t unit) {
  if (unit == QChar::ParagraphSeparator) return QChar::LineSeparator;
  return unit == begin_of_frame || unit == end_of_frame ? char16_t{QChar::ReplacementCharacter}
                                                        : unit;
}

QString storable_text(std::u16string_view text) {
  QString stored = to_qt(text);
  const auto changes = [](char16_t unit) { return storable(unit) != unit; };
  if (std::none_of(text.begin(), text.end(), changes)) return stored;
  for (QChar& unit : stored) unit = storable(unit.unicode());
  return stored;
}

void align(QTextDocument& document, int start, int end, const QTextBlockFormat& format) {
  QTextCursor cursor(&document);
  cursor.setPosition(start);
  cursor.setPosition(end, QTextCursor::KeepAnchor);
  cursor.mergeBlockFormat(format);
}

QTextBlockFormat alignment_format(richtext::Alignment alignment) {
  QTextBlockFormat format;
  format.setAlignment(to_qt(alignment));
  return format;
}

/// Aligns the paragraphs of content that stands from `start` on.
void align_content(QTextDocument& document, int start, const Document& content,
                   richtext::Alignment rest) {
  const RunList& alignments = content.alignments();
  const std::int32_t base = box_position(document, start);
  const auto position = [&](std::size_t in_content) {
    return document_position(document, base + static_cast<std::int64_t>(in_content),
                             InBreak::before);
  };
  for (std::size_t i = 0; i < alignments.run_count(); ++i) {
    const RunList::Run run = alignments.run(i);
    align(document, position(run.start), position(run.end - 1),
          alignment_format(static_cast<richtext::Alignment>(run.value)));
  }
  const int end = position(content.size());
  align(document, end, end, alignment_format(rest));
}

}  // namespace

void insert(QTextCursor& cursor, const Document& content, Color window_text) {
  const richtext::Alignment here = alignment_of(cursor.blockFormat());
  const int start = cursor.position();
  const RunList& runs = content.runs();
  std::vector<std::optional<QTextCharFormat>> formats;
  const std::u16string_view text = content.text();
  cursor.beginEditBlock();
  for (std::size_t i = 0; i < runs.run_count(); ++i) {
    const RunList::Run run = runs.run(i);
    if (run.value >= formats.size()) formats.resize(run.value + 1);
    auto& format = formats[run.value];
    const bool is_new = !format;
    if (is_new) format = to_qt(content.format(run.value), window_text);
    cursor.insertText(storable_text(text.substr(run.start, run.end - run.start)), *format);
    // The document looks each format up; its own copy it knows without comparing every property.
    const QTextCharFormat known = is_new ? cursor.charFormat() : QTextCharFormat();
    if (is_new && known == *format) format = known;
  }
  const RunList& alignments = content.alignments();
  const bool is_aligned = alignments.run_count() == 1 && content.alignment_at(0) == here;
  if (!is_aligned) align_content(*cursor.document(), start, content, here);
  cursor.endEditBlock();
}

Document read(const QTextDocument& document, Span span) {
  Document content;
  FormatReader formats(document);
  std::unordered_map<int, richtext::FormatPool::Id> ids;
  content.reserve(static_cast<std::size_t>(span.end - span.start));
  QTextBlock block = document.findBlock(span.start);
  QString text = block.text();
  for_each_piece(document, span, [&](const Piece& piece) {
    const auto [entry, is_new] = ids.try_emplace(piece.format, 0);
    if (is_new) entry->second = content.intern(formats[piece.format]);
    if (piece.is_break) {
      content.append_break(entry->second, alignment_of(block.blockFormat()));
      block = block.next();
      text = block.text();
    } else {
      content.append(view_of(QStringView(text).mid(piece.span.start - block.position(),
                                                   piece.span.end - piece.span.start)),
                     entry->second);
    }
    return true;
  });
  content.align_last(alignment_of(block.blockFormat()));
  return content;
}

std::u16string text_in(const QTextDocument& document, Span span) {
  if (span == whole(document)) {
    constexpr std::u16string_view separator = u"\u2029";
    return replace_all(from_qt(document.toRawText()), separator, line_break);
  }
  std::u16string text;
  for (QTextBlock block = document.findBlock(span.start);
       block.isValid() && block.position() < span.end; block = block.next()) {
    const int start = std::max(span.start - block.position(), 0);
    const int end = std::min(span.end - block.position(), block.length() - 1);
    text.append(view_of(QStringView(block.text()).mid(start, end - start)));
    if (span.end >= block.position() + block.length()) text.append(line_break);
  }
  return text;
}

const CharFormat& FormatReader::operator[](int format) {
  const auto [entry, is_new] = formats_.try_emplace(format);
  if (is_new) entry->second = from_qt(document_.allFormats().at(format).toCharFormat());
  return entry->second;
}

namespace {

/// Where the run begins that `position` lies in.
int run_start(const QTextDocument& document, int position, FormatReader& formats) {
  std::optional<CharFormat> format;
  int start = position;
  std::vector<Piece> pieces;
  for (QTextBlock block = document.findBlock(position); block.isValid(); block = block.previous()) {
    pieces.clear();
    for_each_piece(document,
                   {block.position(), format ? block.position() + block.length() : position + 1},
                   [&](const Piece& piece) {
                     pieces.push_back(piece);
                     return true;
                   });
    std::reverse(pieces.begin(), pieces.end());
    for (const Piece& piece : pieces) {
      if (!format) format = formats[piece.format];
      if (formats[piece.format] != *format) return start;
      start = piece.span.start;
    }
  }
  return start;
}

}  // namespace

void visit_runs(const QTextDocument& document, std::int32_t from,
                const platform::RunVisitor& visit) {
  if (from >= box_length(document)) return;
  FormatReader formats(document);
  const int start =
      run_start(document, document_position(document, from, InBreak::before), formats);
  std::u16string text;
  std::int32_t run_at = box_position(document, start);
  const CharFormat* format = nullptr;
  QTextBlock block = document.findBlock(start);
  QString paragraph = block.text();
  bool goes_on = true;
  const auto end_run = [&] {
    goes_on = visit({run_at, text, *format});
    run_at += static_cast<std::int32_t>(text.size());
    text.clear();
  };
  for_each_piece(document, {start, whole(document).end}, [&](const Piece& piece) {
    const CharFormat& next = formats[piece.format];
    if (format != nullptr && *format != next) end_run();
    format = &next;
    if (piece.is_break) {
      text.append(line_break);
      block = block.next();
      paragraph = block.text();
    } else {
      text.append(view_of(QStringView(paragraph).mid(piece.span.start - block.position(),
                                                     piece.span.end - piece.span.start)));
    }
    return goes_on;
  });
  if (goes_on && format != nullptr) end_run();
}

}  // namespace qel::qt
