#include "qt/platform/BoxLinks.h"

#include <QClipboard>
#include <QDesktopServices>
#include <QGuiApplication>
#include <QHelpEvent>
#include <QMenu>
#include <QToolTip>

#include "qel/base/Addresses.h"
#include "qt/platform/BoxHandling.h"
#include "qt/platform/Text.h"

namespace qel::qt {

using richtext::Extent;

std::optional<BoxLinks::Link> BoxLinks::link_at(std::size_t position) const {
  if (view_.box() == nullptr || !view_.options().opens_links) return {};
  const std::u16string_view text = view_.box()->text();
  auto address = address_at(text, position);
  if (!address && position > 0) address = address_at(text, position - 1);
  if (!address) return {};
  const QUrl url(to_qt(address->target));
  if (!url.isValid()) return {};
  return Link{{address->start, address->end}, url};
}

std::optional<BoxLinks::Link> BoxLinks::link_under(QPoint place) const {
  const std::optional<std::size_t> position = view_.character_at(place);
  return position ? link_at(*position) : std::nullopt;
}

void BoxLinks::fill_menu(QMenu& menu) const {
  std::optional<Link> link = pointer_ ? link_under(*pointer_) : std::nullopt;
  if (!link && view_.box() != nullptr) link = link_at(view_.box()->selected().caret);
  if (!link) return;
  const QUrl url = link->url;
  const auto add = [&](const QString& caption, const char* name, auto act) {
    QAction* const action = menu.addAction(caption, &view_, act);
    action->setObjectName(QLatin1String(name));
  };
  add(tr("&Open Link"), "openLink", [&view = view_, url] { view.open_link(url); });
  add(tr("Copy &Link Address"), "copyLink", [url] {
    const bool is_mailbox = url.scheme() == QLatin1String("mailto");
    QGuiApplication::clipboard()->setText(is_mailbox ? url.path() : url.toString());
  });
  menu.addSeparator();
}

void BoxLinks::point_at(std::optional<QPoint> place, bool with_ctrl) {
  pointer_ = place;
  const std::optional<Link> link = place ? link_under(*place) : std::nullopt;
  const auto start = link ? std::optional(link->extent.start) : std::nullopt;
  if (start != hovered_) {
    hovered_ = start;
    // Where nothing is marked, typing costs nothing.
    if (hovered_) {
      view_.marks().add(*this, BoxMarks::Layer::links);
      emit changed();
    } else {
      view_.marks().remove(*this);
    }
  }
  put_ctrl(with_ctrl);
}

void BoxLinks::put_ctrl(bool is_held) {
  const auto shape = hovered_ && is_held ? Qt::PointingHandCursor : Qt::IBeamCursor;
  if (view_.viewport()->cursor().shape() != shape) view_.viewport()->setCursor(shape);
}

std::vector<Mark> BoxLinks::marks(const box::Box& /*box*/, Extent /*visible*/) {
  // The text may have changed under the pointer.
  const std::optional<Link> link = pointer_ ? link_under(*pointer_) : std::nullopt;
  if (!link) return {};
  hovered_ = link->extent.start;
  QTextCharFormat format;
  format.setFontUnderline(true);
  return {{link->extent, format}};
}

// The view's part.

void BoxView::open_link(const QUrl& url) {
  const Handling handling(*this);
  bool opens = true;
  emit link_activated(url, &opens);
  if (opens) QDesktopServices::openUrl(url);
}

bool BoxView::viewportEvent(QEvent* event) {
  if (event->type() == QEvent::Leave) links_.point_at({}, false);
  if (event->type() != QEvent::ToolTip || box_ == nullptr) return QTextEdit::viewportEvent(event);
  const auto& help = static_cast<QHelpEvent&>(*event);
  const auto link = links_.link_under(help.pos());
  if (!link) return QTextEdit::viewportEvent(event);
  QToolTip::showText(help.globalPos(),
                     tr("%1\nCtrl+click to open").arg(link->url.toDisplayString()), viewport());
  return true;
}

}  // namespace qel::qt
