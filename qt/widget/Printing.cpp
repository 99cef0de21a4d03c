#include "qel/qt/Printing.h"

#include <QBuffer>
#include <QCoreApplication>
#include <QFontMetricsF>
#include <QImage>
#include <QLocale>
#include <QPageRanges>
#include <QPainter>
#include <QPdfWriter>
#include <QPrintDialog>
#include <QPrintPreviewDialog>
#include <QPrinter>
#include <QScreen>
#include <QWidget>
#include <algorithm>
#include <cstddef>
#include <deque>
#include <utility>

#include "qel/qt/PainterCanvas.h"
#include "qel/text/PageBreaks.h"
#include "qel/text/Paragraph.h"
#include "qel/text/ParagraphWriter.h"
#include "qel/text/Typesetter.h"
#include "qt/platform/FormatMapping.h"
#include "qt/platform/Text.h"

namespace qel::qt {
namespace {

constexpr float points_per_inch = 72;

QELIndexFonts fonts_of_titles(const QELIndexFonts& fonts) {
  constexpr float larger = 1.25F;
  QELIndexFonts of_titles = fonts;
  of_titles.put_FontSize(fonts.get_FontSize() * larger);
  return of_titles;
}

/// A canvas whose own font is the first of a table, and what is set there.
class Setting {
 public:
  Setting(QPainter& painter, const QELIndexFonts& fonts)
      : canvas_(painter), typesetter_(in_own_font(canvas_, fonts), fonts) {}

  PainterCanvas& canvas() { return canvas_; }
  Typesetter& typesetter() { return typesetter_; }

 private:
  static PainterCanvas& in_own_font(PainterCanvas& canvas, const QELIndexFonts& fonts) {
    canvas.put_FontName(fonts.get_DefaultFont());
    canvas.put_FontSize(fonts.get_FontSize());
    return canvas;
  }

  PainterCanvas canvas_;
  Typesetter typesetter_;
};

/// Widths are measured as finely as a PDF has them.
QImage fine_image() {
  constexpr double dots_per_meter = 1200 / 0.0254;
  QImage image(1, 1, QImage::Format_RGB32);
  image.setDotsPerMeterX(static_cast<int>(dots_per_meter));
  image.setDotsPerMeterY(static_cast<int>(dots_per_meter));
  return image;
}

QPageSize paper_of(const PrintOptions& options) {
  if (options.paper.isValid()) return options.paper;
  const bool in_inches = QLocale().measurementSystem() == QLocale::ImperialUSSystem;
  return QPageSize(in_inches ? QPageSize::Letter : QPageSize::A4);
}

}  // namespace

class PageWriter::Pages {
 public:
  Pages(const std::vector<PrintSection>& sections, const PrintOptions& options,
        const QPageLayout& page)
      : options_(options), title_fonts_(fonts_of_titles(options.fonts)) {
    const QRectF area = page.paintRect(QPageLayout::Point);
    const QMarginsF margins = page.margins(QPageLayout::Point);
    size_ = area.size();
    above_ = margins.top();
    below_ = margins.bottom();
    QImage image = fine_image();
    QPainter painter(&image);
    Setting text(painter, options_.fonts);
    Setting title(painter, title_fonts_);
    for (const PrintSection& section : sections) add(section, text, title);
    starts_ = page_starts(breakable_, static_cast<float>(size_.height()));
  }

  int count() const { return std::max(static_cast<int>(starts_.size()), 1); }

  void draw(QPainter& painter, int page) const {
    Setting text(painter, options_.fonts);
    Setting title(painter, title_fonts_);
    float top = 0;
    const auto [begin, end] = lines_of(page);
    for (std::size_t at = begin; at < end; ++at) {
      const Line& line = lines_[at];
      if (at > begin) top += breakable_[at].space_before;
      Setting& setting = line.is_title ? title : text;
      ParagraphWriter writer(setting.canvas(), setting.typesetter(),
                             {0, static_cast<float>(size_.width()), line.alignment});
      writer.set_colors(*options_.colors, false, 0);
      top = writer.write(std::vector{line.line}, top);
    }
    const double height = size_.height();
    if (options_.heads_pages) draw_aside(painter, options_.title, -above_, above_);
    if (options_.numbers_pages) {
      const QString number = QCoreApplication::translate("qel::qt::PageWriter", "%1 / %2");
      draw_aside(painter, number.arg(page + 1).arg(count()), height, below_);
    }
  }

  QString text(int page) const {
    QString text;
    const auto [begin, end] = lines_of(page);
    for (std::size_t at = begin; at < end; ++at) {
      for (const ParagraphPiece& piece : lines_[at].line.pieces) text.append(to_qt(piece.text));
      text.append(QLatin1Char('\n'));
    }
    return text;
  }

 private:
  struct Line {
    ParagraphLine line;
    TextAlignment alignment = alLeft;
    bool is_title = false;
  };

  /// From the first line of a page up to, but not including, the first of the next.
  std::pair<std::size_t, std::size_t> lines_of(int page) const {
    const auto index = static_cast<std::size_t>(page);
    if (page < 0 || index >= starts_.size()) return {0, 0};
    return {starts_[index], index + 1 < starts_.size() ? starts_[index + 1] : lines_.size()};
  }

  void add(const PrintSection& section, Setting& text, Setting& title) {
    const std::size_t first = lines_.size();
    add(u"/b1" + from_qt(section.title), {}, true, title);
    const std::size_t body = lines_.size();
    add(from_qt(section.markup), section.alignments, false, text);
    if (lines_.size() == first) return;
    for (std::size_t at = first; at < body; ++at) {
      breakable_[at].keeps_with_next = at + 1 < lines_.size();
    }
    breakable_[first].begins_page = options_.pages_for_each;
    if (first > 0) breakable_[first].space_before = breakable_[first].height;
  }

  void add(const std::u16string& markup, const std::vector<TextAlignment>& alignments,
           bool is_title, Setting& setting) {
    const Way way = options_.lossless ? Way::lossless : Way::stated;
    // The lines refer to it.
    const Paragraph& paragraph = texts_.emplace_back(markup, ParagraphReading{false, true, way});
    std::size_t number = 0;
    const auto width = static_cast<float>(size_.width());
    for (ParagraphLine& line : paragraph.lines({width, 0, true}, setting.typesetter())) {
      if (line.begins_paragraph) ++number;
      TextAlignment alignment = alLeft;
      if (!alignments.empty()) alignment = alignments[std::min(number, alignments.size()) - 1];
      PageLine breakable;
      breakable.height = line_height(line, setting.typesetter());
      breakable.begins_paragraph = line.begins_paragraph;
      breakable_.push_back(breakable);
      lines_.push_back({std::move(line), alignment, is_title});
    }
  }

  /// Draws a line in the middle of a margin, as much of it as there is room for.
  void draw_aside(QPainter& painter, const QString& text, double top, double height) const {
    constexpr float largest = 9;
    const double across = painter.device()->logicalDpiX() / double{points_per_inch};
    const double down = painter.device()->logicalDpiY() / double{points_per_inch};
    QFont font(to_qt(options_.fonts.get_DefaultFont()));
    font.setPointSizeF(static_cast<double>(std::min(options_.fonts.get_FontSize(), largest)));
    const QRectF place(0, top * down, size_.width() * across, height * down);
    const QFontMetricsF metrics(font, painter.device());
    painter.setFont(font);
    painter.setPen(Qt::darkGray);
    painter.drawText(place, Qt::AlignCenter | Qt::TextSingleLine,
                     metrics.elidedText(text, Qt::ElideRight, place.width()));
  }

  PrintOptions options_;
  QELIndexFonts title_fonts_;
  QSizeF size_;  // of the text's area, in points, as all lengths here
  double above_ = 0;
  double below_ = 0;
  std::deque<Paragraph> texts_;
  std::vector<Line> lines_;
  std::vector<PageLine> breakable_;
  std::vector<std::size_t> starts_;
};

PageWriter::PageWriter(const std::vector<PrintSection>& sections, const PrintOptions& options,
                       const QPageLayout& page)
    : pages_(std::make_unique<const Pages>(sections, options, page)) {}

PageWriter::~PageWriter() = default;

int PageWriter::page_count() const { return pages_->count(); }

void PageWriter::draw(QPainter& painter, int page) const { pages_->draw(painter, page); }

QString PageWriter::text(int page) const { return pages_->text(page); }

namespace {

/// With the margins that the device has.
bool write(QPagedPaintDevice& device, const std::vector<PrintSection>& sections,
           const PrintOptions& options) {
  const PageWriter writer(sections, options, device.pageLayout());
  QPainter painter;
  if (!painter.begin(&device)) return false;
  const QPageRanges chosen = device.pageRanges();
  bool is_first = true;
  for (int page = 0; page < writer.page_count(); ++page) {
    if (!chosen.isEmpty() && !chosen.contains(page + 1)) continue;
    if (!std::exchange(is_first, false) && !device.newPage()) return false;
    writer.draw(painter, page);
  }
  return painter.end();
}

}  // namespace

bool print(QPagedPaintDevice& device, const std::vector<PrintSection>& sections,
           const PrintOptions& options) {
  device.setPageMargins(options.margins, QPageLayout::Millimeter);
  return write(device, sections, options);
}

QByteArray pdf_of(const std::vector<PrintSection>& sections, const PrintOptions& options) {
  QBuffer file;
  file.open(QIODevice::WriteOnly);
  {
    QPdfWriter device(&file);
    device.setTitle(options.title);
    device.setCreator(QCoreApplication::applicationName());
    device.setPageSize(paper_of(options));
    device.setPageOrientation(options.orientation);
    if (!print(device, sections, options)) return {};
  }
  return file.data();
}

namespace {

void set_up(QPrinter& printer, const PrintOptions& options) {
  printer.setDocName(options.title);
  printer.setCreator(QCoreApplication::applicationName());
  if (options.paper.isValid()) printer.setPageSize(options.paper);
  printer.setPageOrientation(options.orientation);
  printer.setPageMargins(options.margins, QPageLayout::Millimeter);
}

}  // namespace

bool print(QWidget* parent, const std::vector<PrintSection>& sections,
           const PrintOptions& options) {
  QPrinter printer(QPrinter::HighResolution);
  set_up(printer, options);
  QPrintDialog dialog(&printer, parent);
  return dialog.exec() == QDialog::Accepted && write(printer, sections, options);
}

void preview(QWidget* parent, const std::vector<PrintSection>& sections,
             const PrintOptions& options) {
  QPrinter printer(QPrinter::HighResolution);
  set_up(printer, options);
  QPrintPreviewDialog dialog(&printer, parent);
  if (parent != nullptr) dialog.resize(parent->screen()->availableSize() * 2 / 3);
  QObject::connect(&dialog, &QPrintPreviewDialog::paintRequested, &dialog,
                   [&](QPrinter* device) { write(*device, sections, options); });
  dialog.exec();
}

}  // namespace qel::qt
