#pragma once

#include <QObject>

class QMenu;
class QToolBar;
class QWidget;

namespace qel::qt {

class BoxView;

/// The widget to which a box belongs, as the box's window and that of the large editor see it.
class BoxHost : public QObject {
 public:
  using QObject::QObject;

  /// Fills the menu of a box's window, opened at a position of the text.
  virtual void fill_menu(QMenu& menu, BoxView& view, int position) = 0;
  /// A bar of formats for the large editor, on its window; null for none.
  virtual QToolBar* create_bar(QWidget& window) = 0;
  /// Whether closing the large editor asks before it drops what was edited.
  virtual bool asks_before_closing() const = 0;
};

}  // namespace qel::qt
