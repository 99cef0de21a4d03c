#include "qt/platform/HtmlReading.h"

#include <QStringConverter>
#include <QTextBlock>
#include <QTextCursor>
#include <QTextDocument>
#include <QTextFragment>
#include <QTextList>
#include <QTextTable>
#include <utility>

#include "qel/base/Utf8.h"
#include "qel/richtext/DocumentReader.h"
#include "qt/platform/FormatMapping.h"
#include "qt/platform/Text.h"
#ifdef QEL_QT_READS_HTML
#include "qel/html/HtmlReader.h"
#endif

namespace qel::qt {

using richtext::CharFormat;
using richtext::Document;

namespace {

/// Whether the first characters, which are ASCII in HTML, are in UTF-16, and in which of the two.
std::optional<QStringConverter::Encoding> unmarked_utf16(const QByteArray& bytes) {
  if (bytes.size() < 2) return {};
  if (bytes[0] != '\0' && bytes[1] == '\0') return QStringConverter::Utf16LE;
  if (bytes[0] == '\0' && bytes[1] != '\0') return QStringConverter::Utf16BE;
  return {};
}

/// Reads what Qt has made of HTML.
class Walk {
 public:
  Walk(const CharFormat& base, richtext::DocumentSink& sink) : base_(base), sink_(sink) {}

  void read(const QTextDocument& document) {
    richtext::Alignment alignment = richtext::Alignment::left;
    int row = 0;
    for (QTextBlock block = document.begin(); block.isValid(); block = block.next()) {
      // The cells of a row stand in one line.
      const int last_row = std::exchange(row, row_of(block));
      // Qt needs a paragraph behind a table.
      if (last_row != 0 && row == 0 && block.length() == 1) continue;
      if (row != 0 && row == last_row) {
        sink_.text(u"\t", last_);
      } else if (block != document.begin()) {
        sink_.paragraph_break(last_, alignment);
      }
      alignment = alignment_of(block.blockFormat());
      read(block);
    }
    sink_.finish(alignment);
  }

 private:
  /// A number that is different for each row of each table; 0 outside of them.
  static int row_of(const QTextBlock& block) {
    const QTextTable* const table = QTextCursor(block).currentTable();
    if (table == nullptr) return 0;
    const int row = table->cellAt(block.position()).row();
    return table->cellAt(row, 0).firstPosition() + 1;
  }

  void read(const QTextBlock& block) {
    last_ = sink_.intern(format_of(block.charFormat(), base_));
    if (const QTextList* const list = block.textList()) {
      const bool is_numbered = list->format().style() <= QTextListFormat::ListDecimal;
      add((is_numbered ? list->itemText(block) : QStringLiteral("\u2022")) + QLatin1Char('\t'),
          last_);
    }
    for (auto at = block.begin(); !at.atEnd(); ++at) {
      QTextCharFormat format = at.fragment().charFormat();
      if (format.isImageFormat()) continue;
      // Qt gives links a look of their own.
      if (format.isAnchor()) {
        format.clearForeground();
        format.setFontUnderline(false);
      }
      last_ = sink_.intern(format_of(format, base_));
      QString text = at.fragment().text();
      const bool ends = at.fragment().position() + at.fragment().length() ==
                        block.position() + block.length() - 1;
      if (ends && text.endsWith(QLatin1Char(' '))) text.chop(1);
      add(text, last_);
    }
  }

  void add(const QString& text, richtext::DocumentSink::FormatId format) {
    const QStringList lines = text.split(QChar::LineSeparator);
    for (qsizetype i = 0; i < lines.size(); ++i) {
      if (i > 0) sink_.paragraph_break(format, richtext::Alignment::left);
      if (!lines[i].isEmpty()) sink_.text(view_of(lines[i]), format);
    }
  }

  const CharFormat& base_;
  richtext::DocumentSink& sink_;
  richtext::DocumentSink::FormatId last_ = 0;
};

}  // namespace

std::u16string decode_html(const QByteArray& bytes) {
  const auto encoding = QStringConverter::encodingForData(bytes).value_or(
      unmarked_utf16(bytes).value_or(QStringConverter::Utf8));
  QString html = QStringDecoder(encoding)(bytes);
  // Some end it like a string of C.
  while (html.endsWith(QChar::Null)) html.chop(1);
  return from_qt(html);
}

Document read_html_by_qt(const QString& html, const CharFormat& base) {
  // Of HTML with the header of a clipboard, what stands behind that.
  const bool has_header = html.startsWith(QLatin1String("Version:"));
  QTextDocument page;
  page.setUndoRedoEnabled(false);
  page.setHtml(has_header ? html.mid(html.indexOf(QLatin1Char('<'))) : html);
  Document document;
  richtext::DocumentBuilder builder(document);
  Walk(base, builder).read(page);
  document.release_unused();
  return document;
}

Document read_html(std::u16string_view html, const CharFormat& base) {
#ifdef QEL_QT_READS_HTML
  Document document;
  richtext::DocumentBuilder builder(document);
  // The mark overrides what the HTML says of the encoding that it once had.
  html::read_html("\xEF\xBB\xBF" + to_utf8(html), base, builder);
  document.release_unused();
  return document;
#else
  return read_html_by_qt(to_qt(html), base);
#endif
}

}  // namespace qel::qt
