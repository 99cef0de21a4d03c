#include "qel/qt/FormatBar.h"

#include <QActionEvent>
#include <QApplication>
#include <QKeyEvent>
#include <QMenuBar>
#include <QShortcut>
#include <QToolButton>

#include "qel/base/ColorNames.h"
#include "qt/platform/BoxMenu.h"
#include "qt/platform/BoxView.h"
#include "qt/platform/FormatIcons.h"
#include "qt/platform/Text.h"
#include "qt/widget/FormatActions.h"
#include "qt/widget/FormatPainter.h"

namespace qel::qt {
namespace {

template <class Widget>
Widget* ancestor(QWidget* widget) {
  while (widget != nullptr && qobject_cast<Widget*>(widget) == nullptr) {
    widget = widget->parentWidget();
  }
  return static_cast<Widget*>(widget);
}

/// Whether the focus is in something that serves the box, as bars and menus do.
bool serves_box(QWidget* widget) {
  if (ancestor<QToolBar>(widget) != nullptr || ancestor<QMenu>(widget) != nullptr ||
      ancestor<QMenuBar>(widget) != nullptr) {
    return true;
  }
  for (; widget != nullptr; widget = widget->parentWidget()) {
    if (widget->inherits("qel::qt::FindBar")) return true;
  }
  return false;
}

}  // namespace

FormatBar::FormatBar(QWidget* parent)
    : QToolBar(parent),
      actions_(new FormatActions(this)),
      painter_(std::make_unique<FormatPainter>(*actions_)),
      brush_(new QAction(icons::sign(icons::Sign::brush), tr("Copy Format"), this)),
      reach_(new QShortcut(QKeySequence(Qt::Key_F6), this)) {
  setWindowTitle(tr("Format"));
  setAccessibleName(windowTitle());
  constexpr int icon_side = 20;
  setIconSize({icon_side, icon_side});
  brush_->setObjectName(QStringLiteral("CopyFormat"));
  brush_->setToolTip(tr("Copy format: what is selected next gets it (double click: until Escape)"));
  brush_->setCheckable(true);
  brush_->setIconVisibleInMenu(false);
  for (QAction* const action : {actions_->undo(), actions_->redo()}) addAction(action);
  addSeparator();
  addAction(actions_->font());
  addAction(actions_->color());
  addSeparator();
  for (QAction* const action : actions_->toggles()) addAction(action);
  addSeparator();
  addAction(actions_->plain());
  addAction(brush_);
  connect(brush_, &QAction::triggered, this, [this] {
    if (painter_->state() == FormatPainter::State::off) {
      painter_->begin(FormatPainter::State::once);
    } else {
      painter_->end();
    }
    brush_->setChecked(painter_->state() != FormatPainter::State::off);
  });
  connect(painter_.get(), &FormatPainter::state_changed, this,
          [this] { brush_->setChecked(painter_->state() != FormatPainter::State::off); });
  connect(actions_, &FormatActions::updated, this, &FormatBar::show_state);
  connect(reach_, &QShortcut::activated, this, &FormatBar::reach);
  connect(qApp, &QApplication::focusChanged, this,
          [this](QWidget*, QWidget* now) { note_focus(now); });
  note_focus(QApplication::focusWidget());
  show_state();
}

FormatBar::~FormatBar() {
  // The focus leaves its buttons when it is no longer a bar.
  qApp->disconnect(this);
  painter_->end();
}

QString FormatBar::color_name(int color) { return caption_of(qel::color_name(color)); }

TextBox* FormatBar::box() const { return actions_->box(); }

void FormatBar::follow(TextBox* box) {
  is_fixed_ = box != nullptr;
  put_box(box);
  if (!is_fixed_) note_focus(QApplication::focusWidget());
}

void FormatBar::note_focus(QWidget* now) {
  // Menus and other windows leave the box that had the focus the one that gets it back.
  if (is_fixed_ || now == nullptr || now->window() != window() || serves_box(now)) return;
  put_box(ancestor<TextBox>(now));
}

void FormatBar::put_box(TextBox* box) {
  if (box == this->box()) return;
  painter_->end();
  actions_->put_box(box);
  emit BoxChanged(box);
}

void FormatBar::show_state() {
  brush_->setEnabled(actions_->may_format());
  if (!brush_->isEnabled()) painter_->end();
  QToolButton* const button = button_of(actions_->font());
  if (button == nullptr) return;
  // Beside an icon, text is on the left in every layout.
  button->setToolButtonStyle(isRightToLeft() ? Qt::ToolButtonTextOnly
                                             : Qt::ToolButtonTextBesideIcon);
  const QString name = actions_->font()->iconText();
  QString shown = button->fontMetrics().elidedText(name, Qt::ElideRight, font_width());
  button->setText(shown.replace(QLatin1Char('&'), QLatin1String("&&")));
}

// The buttons.

QToolButton* FormatBar::button_of(QAction* action) const {
  return qobject_cast<QToolButton*>(widgetForAction(action));
}

int FormatBar::font_width() const {
  return fontMetrics().horizontalAdvance(QStringLiteral("Times New Roman"));
}

void FormatBar::actionEvent(QActionEvent* event) {
  QToolBar::actionEvent(event);
  QToolButton* const button = button_of(event->action());
  if (event->type() == QEvent::ActionRemoved || button == nullptr) return;
  if (event->type() == QEvent::ActionAdded) {
    // The bar's own key leads to the buttons, and arrows from one to the next.
    button->setFocusPolicy(Qt::NoFocus);
    button->installEventFilter(this);
    if (event->action()->menu() != nullptr) button->setPopupMode(QToolButton::InstantPopup);
    if (event->action() == actions_->font()) {
      constexpr int around = 24;  // with the arrow
      button->setFixedWidth(iconSize().width() + font_width() + around);
    } else if (event->action() == actions_->color()) {
      constexpr int around = 22;
      button->setFixedWidth(iconSize().width() + around);
    }
  }
  if (event->action() == actions_->font()) {
    button->setAccessibleName(event->action()->toolTip());
  } else if (event->action() == actions_->color()) {
    button->setAccessibleName(tr("Colour"));
  } else {
    button->setAccessibleName(event->action()->iconText());
  }
}

bool FormatBar::eventFilter(QObject* watched, QEvent* event) {
  auto* const button = qobject_cast<QToolButton*>(watched);
  if (button != nullptr && event->type() == QEvent::KeyPress) {
    if (handle_key(*button, static_cast<QKeyEvent*>(event)->key())) return true;
  }
  if (button != nullptr && event->type() == QEvent::FocusIn) last_ = button;
  const bool is_second_click =
      event->type() == QEvent::MouseButtonDblClick && button == button_of(brush_);
  if (is_second_click) {
    painter_->begin(FormatPainter::State::until_ended);
    return true;
  }
  return QToolBar::eventFilter(watched, event);
}

std::vector<QToolButton*> FormatBar::reachable() const {
  std::vector<QToolButton*> buttons;
  for (QAction* const action : actions()) {
    QToolButton* const button = button_of(action);
    if (button != nullptr && button->isEnabled() && button->isVisible()) buttons.push_back(button);
  }
  return buttons;
}

bool FormatBar::handle_key(QToolButton& button, int key) {
  const std::vector<QToolButton*> buttons = reachable();
  const auto at = std::find(buttons.begin(), buttons.end(), &button);
  if (at == buttons.end()) return false;
  const auto count = static_cast<std::ptrdiff_t>(buttons.size());
  const std::ptrdiff_t here = at - buttons.begin();
  const auto go_to = [&](std::ptrdiff_t place) {
    buttons[static_cast<std::size_t>((place + count) % count)]->setFocus(Qt::TabFocusReason);
  };
  const int towards_end = isRightToLeft() ? Qt::Key_Left : Qt::Key_Right;
  switch (key) {
    case Qt::Key_Left:
    case Qt::Key_Right:
      go_to(here + (key == towards_end ? 1 : -1));
      return true;
    case Qt::Key_Home:
      go_to(0);
      return true;
    case Qt::Key_End:
      go_to(count - 1);
      return true;
    case Qt::Key_Down:
      if (button.menu() != nullptr) button.showMenu();
      return true;
    case Qt::Key_Return:
    case Qt::Key_Enter:
      button.click();
      return true;
    case Qt::Key_Escape:
      leave();
      return true;
    default:
      return false;
  }
}

QKeySequence FormatBar::get_ReachKey() const { return reach_->key(); }

void FormatBar::put_ReachKey(const QKeySequence& Value) { reach_->setKey(Value); }

void FormatBar::reach() {
  const std::vector<QToolButton*> buttons = reachable();
  if (buttons.empty()) return;
  const auto last = std::find(buttons.begin(), buttons.end(), last_.data());
  (last == buttons.end() ? buttons.front() : *last)->setFocus(Qt::ShortcutFocusReason);
}

void FormatBar::leave() {
  if (box() == nullptr) return;
  if (BoxView* const view = edited_view(*box())) view->setFocus(Qt::OtherFocusReason);
}

}  // namespace qel::qt
