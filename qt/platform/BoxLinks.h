#pragma once

#include <QPoint>
#include <QUrl>
#include <cstddef>
#include <optional>
#include <vector>

#include "qt/platform/BoxMarks.h"

class QMenu;

namespace qel::qt {

/// The addresses in a box's text. The one under the pointer is underlined; they are recognised as
/// needed, and nothing of them is stored.
class BoxLinks : public MarkSource {
  Q_OBJECT

 public:
  struct Link {
    richtext::Extent extent;
    QUrl url;
  };

  /// The view must outlive this.
  explicit BoxLinks(BoxView& view) : view_(view) {}

  /// The link at a position of the box, which may also be the end of the link; none where the
  /// view's options say so.
  std::optional<Link> link_at(std::size_t position) const;
  /// The link that is shown at a place in the window.
  std::optional<Link> link_under(QPoint place) const;
  /// Adds what can be done with the link under the pointer, or else with that at the caret, and a
  /// separator; nothing where there is none.
  void fill_menu(QMenu& menu) const;
  /// The pointer has moved, with Ctrl held or not; to nowhere when it has left the window.
  void point_at(std::optional<QPoint> place, bool with_ctrl);
  /// Ctrl has gone down or come up.
  void put_ctrl(bool is_held);

  std::vector<Mark> marks(const box::Box& box, richtext::Extent visible) override;

 private:
  BoxView& view_;
  std::optional<QPoint> pointer_;
  std::optional<std::size_t> hovered_;  // where the link under it begins
};

}  // namespace qel::qt
