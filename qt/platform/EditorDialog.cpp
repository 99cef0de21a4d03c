#include "qt/platform/EditorDialog.h"

#include <QCloseEvent>
#include <QFontDatabase>
#include <QMenuBar>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QToolButton>
#include <QVBoxLayout>
#include <chrono>
#include <string>

#include "qel/qt/QtPlatform.h"
#include "qt/platform/BoxView.h"
#include "qt/platform/Text.h"

namespace qel::qt {

EditorDialog::EditorDialog(const platform::EditorDescription& description, QWidget* parent)
    : QDialog(parent),
      form_(new QWidget(this)),
      box_(BoxView::create(form_)),
      ok_(new QPushButton(to_qt(description.ok_caption), form_)),
      cancel_(new QPushButton(to_qt(description.cancel_caption), form_)) {
  setWindowTitle(to_qt(description.caption));
  setWindowFlag(Qt::WindowMaximizeButtonHint);
  setModal(true);
  auto* layout = new QVBoxLayout(this);
  layout->setContentsMargins({});
  layout->setSpacing(0);
  layout->addWidget(form_, 1);
  ok_->setDefault(true);
  view().setAccessibleName(windowTitle());
  form_->installEventFilter(this);
  connect(ok_, &QPushButton::clicked, this, [this] {
    if (listener_ != nullptr) listener_->on_ok();
  });
  connect(cancel_, &QPushButton::clicked, this, [this] {
    if (listener_ != nullptr) listener_->on_cancel();
  });
  add_menus(description.menus);
  if (!description.pane_caption.empty()) add_pane(to_qt(description.pane_caption));
}

BoxView& EditorDialog::view() const { return *BoxView::of(*box_); }

EditorDialog::~EditorDialog() {
  // The box outlives the dialog if somebody still holds it.
  if (box_.use_count() > 1) view().setParent(nullptr);
}

void EditorDialog::add_menus(const std::vector<platform::Menu>& menus) {
  auto* bar = new QMenuBar(this);
  layout()->setMenuBar(bar);
  for (const platform::Menu& menu : menus) {
    QMenu* const shown = bar->addMenu(to_qt(menu.caption));
    for (const platform::MenuItem& item : menu.items) {
      if (item.name.empty()) {
        shown->addSeparator();
        continue;
      }
      // The shortcut in a caption is only shown: the listener handles the key itself.
      QAction* const action = shown->addAction(to_qt(item.caption));
      action->setObjectName(to_qt(item.name));
      action->setCheckable(item.has_check);
      if (item.has_check) checks_.emplace_back(action, item.name);
      connect(action, &QAction::triggered, this, [this, name = std::u16string(item.name)] {
        if (listener_ != nullptr) listener_->on_command(name);
        show_checks();
      });
    }
    connect(shown, &QMenu::aboutToShow, this, &EditorDialog::show_checks);
  }
}

void EditorDialog::show_checks() {
  if (listener_ == nullptr) return;
  for (const auto& [action, name] : checks_) action->setChecked(listener_->is_checked(name));
}

void EditorDialog::add_pane(const QString& caption) {
  fold_ = new QToolButton(this);
  fold_->setText(caption);
  fold_->setObjectName(QStringLiteral("fold"));
  fold_->setCheckable(true);
  fold_->setAutoRaise(true);
  fold_->setFocusPolicy(Qt::StrongFocus);
  fold_->setToolButtonStyle(Qt::ToolButtonTextBesideIcon);
  fold_->setArrowType(Qt::RightArrow);
  pane_ = new QPlainTextEdit(this);
  pane_->setObjectName(QStringLiteral("pane"));
  pane_->setAccessibleName(caption);
  pane_->setReadOnly(true);
  pane_->setTextInteractionFlags(Qt::TextSelectableByMouse | Qt::TextSelectableByKeyboard);
  pane_->setTabChangesFocus(true);
  pane_->setFont(QFontDatabase::systemFont(QFontDatabase::FixedFont));
  constexpr int lines = 5;
  pane_->setFixedHeight(lines * pane_->fontMetrics().lineSpacing() + 2 * pane_->frameWidth());
  pane_->hide();
  auto* below = new QVBoxLayout;
  constexpr int margin = 8;
  below->setContentsMargins(margin, 0, margin, margin);
  below->setSpacing(2);
  below->addWidget(fold_);
  below->addWidget(pane_);
  static_cast<QVBoxLayout*>(layout())->addLayout(below);

  connect(fold_, &QToolButton::toggled, this, [this](bool is_open) {
    fold_->setArrowType(is_open ? Qt::DownArrow : Qt::RightArrow);
    pane_->setVisible(is_open);
    if (!isMaximized()) resize(width(), height() + (is_open ? pane_->height() : -pane_->height()));
    show_pane_text();
  });
  // Converting the whole text at each key would slow typing noticeably.
  using namespace std::chrono_literals;
  pane_delay_.setSingleShot(true);
  pane_delay_.setInterval(150ms);
  connect(&pane_delay_, &QTimer::timeout, this, &EditorDialog::show_pane_text);
  connect(&view(), &QTextEdit::textChanged, this, [this] {
    if (!pane_delay_.isActive()) pane_delay_.start();
  });
}

void EditorDialog::show_pane_text() {
  if (listener_ == nullptr || !fold_->isChecked()) return;
  pane_->setPlainText(to_qt(listener_->pane_text()));
}

void EditorDialog::resize_form(QSize size) {
  layout()->activate();
  const int extra = sizeHint().height() - form_->sizeHint().expandedTo({0, 0}).height();
  resize(size.width(), size.height() + extra);
  layout()->activate();
}

void EditorDialog::lay_out(const QRect& box, const QRect& ok, const QRect& cancel) {
  platform::BoxAppearance appearance = box_->appearance();
  appearance.left = box.left();
  appearance.top = box.top();
  appearance.width = box.width();
  appearance.height = box.height();
  box_->put_appearance(appearance);
  ok_->setGeometry(ok);
  cancel_->setGeometry(cancel);
}

void EditorDialog::tell_size() {
  if (listener_ == nullptr) return;
  const platform::Screen screen = QtPlatform().screen();
  listener_->on_resize(form_->width() * screen.twips_per_pixel_x,
                       form_->height() * screen.twips_per_pixel_y);
}

void EditorDialog::reject() {
  if (listener_ != nullptr) listener_->on_cancel();
}

bool EditorDialog::eventFilter(QObject* watched, QEvent* event) {
  if (watched == form_ && event->type() == QEvent::Resize) tell_size();
  return QDialog::eventFilter(watched, event);
}

bool EditorDialog::event(QEvent* event) {
  const bool handled = QDialog::event(event);
  const bool activates = event->type() == QEvent::WindowActivate || event->type() == QEvent::Show;
  if (activates && listener_ != nullptr) listener_->on_activate();
  return handled;
}

void EditorDialog::closeEvent(QCloseEvent* event) {
  if (listener_ != nullptr) listener_->on_close();
  event->accept();
  done(Rejected);
}

}  // namespace qel::qt
