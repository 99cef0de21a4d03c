// Pages and PDF.

#include "qel/qt/Printing.h"

#include <gtest/gtest.h>

#include <QImage>
#include <QPainter>
#include <QRegularExpression>
#include <map>
#include <string>

#include "qel/qt/TextBox.h"
#include "support/Random.h"

namespace qel::qt {
namespace {

/// Words that say where they stand: "s2p3w14 ", and "s2t0 " in a title.
struct Numbered {
  std::vector<PrintSection> sections;
  QString words;  ///< all of them, in order

  explicit Numbered(test::Random& random) {
    for (std::size_t s = 1 + random.below(6); s > 0; --s) {
      const QString section = QStringLiteral("s%1").arg(sections.size());
      PrintSection added;
      if (!random.one_in(4)) added.title = add(section + QStringLiteral("t"), 1);
      const std::size_t paragraphs = random.below(8);
      for (std::size_t p = 0; p < paragraphs; ++p) {
        if (p > 0) added.markup += QStringLiteral("/nl");
        const QString code = random.one_in(3) ? QStringLiteral("/p1") : QString();
        added.markup += code + add(section + QStringLiteral("p%1w").arg(p), random.below(90));
      }
      sections.push_back(added);
    }
  }

 private:
  QString add(const QString& prefix, std::size_t count) {
    QString added;
    for (std::size_t i = 0; i < count; ++i) added += prefix + QString::number(i) + QLatin1Char(' ');
    words += added;
    return added;
  }
};

QStringList words_of(const QString& text) {
  return text.split(QRegularExpression(QStringLiteral("\\s+")), Qt::SkipEmptyParts);
}

/// "s2p3" of a line: what it is part of.
QString paragraph_of(const QString& line) { return line.section(QLatin1Char('w'), 0, 0); }

const QPageLayout small_page(QPageSize(QSizeF(240, 130), QPageSize::Point), QPageLayout::Portrait,
                             QMarginsF(10, 10, 10, 10));

TEST(Printing, LeavesNoLineAlone) {
  for (std::uint32_t seed = 0; seed < 40; ++seed) {
    test::Random random(test::base_seed() + seed);
    SCOPED_TRACE(random.describe());
    const Numbered numbered(random);
    PrintOptions options;
    options.pages_for_each = random.one_in(3);
    const PageWriter writer(numbered.sections, options, small_page);
    QString all;
    std::map<QString, int> count;  // of the lines of a paragraph
    for (int page = 0; page < writer.page_count(); ++page) {
      all += writer.text(page);
      for (const QString& line : writer.text(page).split(QLatin1Char('\n'))) {
        ++count[paragraph_of(line)];
      }
    }
    ASSERT_EQ(words_of(all), words_of(numbered.words)) << "all of it, once and in order";
    std::map<QString, int> seen;
    for (int page = 0; page < writer.page_count(); ++page) {
      QStringList lines = writer.text(page).split(QLatin1Char('\n'));
      lines.removeLast();  // behind the last line break
      if (lines.isEmpty()) continue;
      for (qsizetype i = 0; i < lines.size(); ++i) {
        const QString paragraph = paragraph_of(lines[i]);
        const int number = ++seen[paragraph];
        if (paragraph.isEmpty() || count[paragraph] == 1) continue;
        const bool is_first = number == 1;
        const bool is_last = number == count[paragraph];
        EXPECT_FALSE(i == 0 && is_last) << page << ": " << lines[i].toStdString();
        EXPECT_FALSE(i + 1 == lines.size() && is_first) << page << ": " << lines[i].toStdString();
      }
      const bool ends_with_title = lines.last().contains(QLatin1Char('t'));
      const bool has_text =
          page + 1 < writer.page_count() &&
          writer.text(page + 1).startsWith(lines.last().section(QLatin1Char('t'), 0, 0) + u'p');
      EXPECT_FALSE(ends_with_title && has_text) << page;
    }
  }
}

/// The part of a page, drawn on paper, that has ink; in points.
QRectF ink(const PageWriter& writer, int page, const QRectF& part) {
  constexpr int scale = 2;
  constexpr double inch = 0.0254;
  QImage paper(240 * scale, 130 * scale, QImage::Format_RGB32);
  paper.setDotsPerMeterX(static_cast<int>(72 * scale / inch));
  paper.setDotsPerMeterY(static_cast<int>(72 * scale / inch));
  paper.fill(Qt::white);
  QPainter painter(&paper);
  painter.translate(10 * scale, 10 * scale);
  writer.draw(painter, page);
  painter.end();
  QRectF inked;
  for (int y = 0; y < paper.height(); ++y) {
    for (int x = 0; x < paper.width(); ++x) {
      const QRectF dot(x / double{scale}, y / double{scale}, 1.0 / scale, 1.0 / scale);
      if (part.contains(dot) && paper.pixelColor(x, y).lightness() < 200) inked |= dot;
    }
  }
  return inked;
}

TEST(Printing, DrawsTextWithinTheMarginsAndTitleAndNumberInThem) {
  const QRectF above(0, 0, 240, 9.5);
  const QRectF text(0, 10, 240, 110);
  const QRectF below(0, 120.5, 240, 9.5);
  PrintOptions options;
  options.title = QStringLiteral("Title");
  options.fonts.put_FontSize(6);
  PrintSection section;
  section.markup = QStringLiteral("left and/nlright/nlcentre");
  section.alignments = {alLeft, alRight, alCenter};
  for (const bool asides : {true, false}) {
    options.heads_pages = options.numbers_pages = asides;
    const PageWriter writer({section}, options, small_page);
    EXPECT_EQ(ink(writer, 0, above).isEmpty(), !asides);
    EXPECT_EQ(ink(writer, 0, below).isEmpty(), !asides);
    const QRectF inked = ink(writer, 0, text);
    EXPECT_NEAR(inked.left(), 10, 2);
    EXPECT_NEAR(inked.right(), 230, 2);
    const QRectF third = ink(writer, 0, QRectF(0, inked.top() + 13, 240, 30));
    EXPECT_NEAR(third.center().x(), 120, 2) << "centred";
  }
  EXPECT_EQ(PageWriter({}, options, small_page).page_count(), 1) << "an empty page";
}

TEST(Printing, MakesAPdfOfABox) {
  for (const bool lossless : {true, false}) {
    TextBox box;
    box.put_Lossless(lossless);
    box.put_Multiline(true);
    QString text;
    for (int i = 0; i < 200; ++i) text += QStringLiteral("line /u1under/u0/nl");
    box.put_TextQEL(text);
    box.control().put_SelStart(0);
    box.control().put_SelAlignment(2);
    const PrintSection section = section_of(box);
    EXPECT_EQ(section.markup.count(QStringLiteral("/nl")), 200);
    ASSERT_EQ(section.alignments.size(), 201U);
    EXPECT_EQ(section.alignments[0], alCenter);
    EXPECT_EQ(section.alignments[1], alLeft);
    PrintOptions options = options_of(box, QStringLiteral("Letters"));
    options.paper = QPageSize(QPageSize::A4);
    const QByteArray pdf = pdf_of({section}, options);
    EXPECT_TRUE(pdf.startsWith("%PDF-1."));
    const auto pages = pdf.count("/Type /Page\n");
    EXPECT_GE(pages, 2);
    EXPECT_LE(pages, 4);
    const char16_t title[] = u"Letters";
    QByteArray written;
    for (const char16_t c : std::u16string_view(title))
      written.append('\0').append(static_cast<char>(c));
    EXPECT_TRUE(pdf.contains("/Title (\xFE\xFF" + written)) << pdf.left(300).toStdString();
  }
}

}  // namespace
}  // namespace qel::qt
