#include "Pdf.h"

#include <QBuffer>
#include <QMarginsF>
#include <QPageLayout>
#include <QPageSize>
#include <QPainter>
#include <QPdfWriter>
#include <memory>
#include <stdexcept>

#include "Export.h"
#include "Pages.h"
#include "qel/qt/PainterCanvas.h"
#include "qel/text/TextAndFormatting.h"

namespace qel::forms {

std::string pdf_of(std::span<const Record> records, const command::Tables& tables) {
  QBuffer file;
  file.open(QIODevice::WriteOnly);
  QPdfWriter writer(&file);
  constexpr qreal margin = 20;
  writer.setPageLayout(QPageLayout(QPageSize(QPageSize::A4), QPageLayout::Portrait,
                                   QMarginsF(margin, margin, margin, margin),
                                   QPageLayout::Millimeter));
  writer.setCreator(QStringLiteral("qelforms"));
  QPainter painter;
  if (!painter.begin(&writer)) throw std::runtime_error("no PDF can be made");
  const QRectF area = writer.pageLayout().paintRect(QPageLayout::Point);
  qt::PainterCanvas page(painter);
  const auto pages = std::make_shared<Pages>(page, static_cast<float>(area.height()),
                                             [&writer] { writer.newPage(); });
  TextAndFormatting layout;
  layout.put_Canvas(pages);
  layout.SetFontAndColors(tables.fonts, *tables.colors);
  layout.WriteParagraph(document_of(records), 0, 0, static_cast<float>(area.width()));
  pages->finish();
  painter.end();
  return file.data().toStdString();
}

}  // namespace qel::forms
