#pragma once

#include <QAccessibleWidget>
#include <QRect>

#include "qt/platform/BoxView.h"

namespace qel::qt {

/// What assistive programs see of a box: its text with the formats that it is shown in, caret and
/// selection. It takes the name of the widget that it stands in, and is described by its
/// placeholder. An edit is the user's, and refused where the user may not. Positions are those of
/// the view's document, in which a break is one character.
class BoxAccessible : public QAccessibleWidget,
                      public QAccessibleTextInterface,
                      public QAccessibleEditableTextInterface {
 public:
  explicit BoxAccessible(BoxView* view);
  /// Makes Qt ask here about boxes; later calls do nothing.
  static void install();

  void* interface_cast(QAccessible::InterfaceType type) override;
  QString text(QAccessible::Text kind) const override;
  QAccessible::State state() const override;
  QVector<QPair<QAccessibleInterface*, QAccessible::Relation>> relations(
      QAccessible::Relation match) const override;

  int selectionCount() const override;
  void selection(int index, int* start, int* end) const override;
  void addSelection(int start, int end) override;
  void removeSelection(int index) override;
  void setSelection(int index, int start, int end) override;
  int cursorPosition() const override;
  void setCursorPosition(int position) override;
  QString text(int start, int end) const override;
  int characterCount() const override;
  QRect characterRect(int offset) const override;
  int offsetAtPoint(const QPoint& point) const override;
  void scrollToSubstring(int start, int end) override;
  QString attributes(int offset, int* start, int* end) const override;

  void deleteText(int start, int end) override;
  void insertText(int offset, const QString& text) override;
  void replaceText(int start, int end, const QString& text) override;

 private:
  BoxView& view() const { return *static_cast<BoxView*>(object()); }
  /// Of the widget around the box; null for none.
  QAccessibleInterface* around() const;
  QTextCursor cursor(int start, int end) const;
  void select(int anchor, int caret);
};

}  // namespace qel::qt
