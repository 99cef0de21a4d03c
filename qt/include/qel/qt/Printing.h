#pragma once

#include <QByteArray>
#include <QMarginsF>
#include <QPageLayout>
#include <QPageSize>
#include <QString>
#include <memory>
#include <vector>

#include "qel/tables/QELIndexColors.h"
#include "qel/tables/QELIndexFonts.h"
#include "qel/text/TextAndFormatting.h"

class QPagedPaintDevice;
class QPainter;
class QWidget;

/// Printing of formatted text, and PDF.
namespace qel::qt {

class TextBox;

/// A text to print with its title, a record for instance. Both are markup; either may be empty.
struct PrintSection {
  QString title;   ///< a heading, bold and larger, on the page of the text that follows
  QString markup;  ///< a line code, or a line break, ends a paragraph
  /// Of the paragraphs; those after the last in here are aligned as that one.
  std::vector<TextAlignment> alignments = {};
};

/// How sections are put on pages.
struct PrintOptions {
  QString title;                ///< of the document: in a PDF's properties and a printer's queue
  bool heads_pages = false;     ///< whether the title stands above every page, too
  bool numbers_pages = true;    ///< whether "2 / 7" stands below every page
  bool pages_for_each = false;  ///< whether every section begins a page
  QMarginsF margins{20, 20, 20, 20};  ///< in millimetres; title and number stand within them
  /// Where it is invalid, a printer's own, and elsewhere that of the locale: Letter in the United
  /// States, or A4.
  QPageSize paper;
  QPageLayout::Orientation orientation = QPageLayout::Portrait;
  QELIndexFonts fonts;
  /// Text without a colour is printed in colour 0.
  std::shared_ptr<const QELIndexColors> colors = std::make_shared<const QELIndexColors>();
  bool lossless = true;  ///< how markup is read (see `RTFParser::get_Lossless`)
};

/// Text laid out on pages, as often as it is drawn.
///
/// A paragraph's first line is never alone at the bottom of a page, nor its last alone at the top;
/// titles stay with the text that follows. A paragraph that is alone taller than a page is broken
/// where it has to be.
class PageWriter {
 public:
  /// The page's paper and margins are those of `page`.
  PageWriter(const std::vector<PrintSection>& sections, const PrintOptions& options,
             const QPageLayout& page);
  PageWriter(const PageWriter&) = delete;
  PageWriter& operator=(const PageWriter&) = delete;
  ~PageWriter();

  /// At least 1.
  int page_count() const;
  /// Draws a page, from 0. The painter's origin is the top left corner within the margins, as it is
  /// for one on a printer or a PDF.
  void draw(QPainter& painter, int page) const;
  /// The text of a page, a line each, without title and number.
  QString text(int page) const;

 private:
  class Pages;
  std::unique_ptr<const Pages> pages_;
};

/// A PDF of the sections. Needs a `QGuiApplication`, but no window and no display: a command names
/// the platform "offscreen" (`QT_QPA_PLATFORM=offscreen`, or `-platform offscreen` among the
/// application's arguments). Empty where it cannot be made.
QByteArray pdf_of(const std::vector<PrintSection>& sections, const PrintOptions& options);
/// Prints on a `QPrinter` or another device: in its paper size and orientation, the range of pages
/// that it says, and the margins of the options. Whether that has worked.
bool print(QPagedPaintDevice& device, const std::vector<PrintSection>& sections,
           const PrintOptions& options);
/// Asks for a printer, on `parent`, and prints. Whether anything was printed.
bool print(QWidget* parent, const std::vector<PrintSection>& sections, const PrintOptions& options);
/// Shows the pages, on `parent`, from where they can be printed.
void preview(QWidget* parent, const std::vector<PrintSection>& sections,
             const PrintOptions& options);

/// The text of a box as a section, with the alignments of its paragraphs. With `RevealCodes` it is
/// the markup that is printed.
PrintSection section_of(const TextBox& box);
/// The box's fonts and colours, with its `FontName` and `FontSize` for text that has no font; all
/// else is as it is at first.
PrintOptions options_of(const TextBox& box, const QString& title = {});
QByteArray pdf_of(const TextBox& box, const QString& title = {});
/// Both on the box's window.
bool print(TextBox& box, const QString& title = {});
void preview(TextBox& box, const QString& title = {});

}  // namespace qel::qt
