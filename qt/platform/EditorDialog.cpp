#include "qt/platform/EditorDialog.h"

#include <QCloseEvent>
#include <QCoreApplication>
#include <QFontDatabase>
#include <QMenuBar>
#include <QMessageBox>
#include <QPlainTextEdit>
#include <QPointer>
#include <QPushButton>
#include <QScreen>
#include <QSettings>
#include <QToolBar>
#include <QToolButton>
#include <QVBoxLayout>
#include <algorithm>
#include <chrono>
#include <string>

#include "qel/qt/QtPlatform.h"
#include "qt/platform/BoxHost.h"
#include "qt/platform/BoxMenu.h"
#include "qt/platform/BoxView.h"
#include "qt/platform/FormatIcons.h"
#include "qt/platform/FormatMapping.h"
#include "qt/platform/Spelling.h"
#include "qt/platform/Text.h"

namespace qel::qt {
namespace {

/// Where the size that the user left the form with is kept, in the settings of the program.
constexpr QLatin1String size_key("QEL/LargeEditor/size");

}  // namespace

EditorDialog::EditorDialog(const platform::EditorDescription& description, QWidget* parent)
    : QDialog(parent),
      form_(new QWidget(this)),
      box_(BoxView::create(form_)),
      ok_(new QPushButton(caption_of(description.ok_caption), form_)),
      cancel_(new QPushButton(caption_of(description.cancel_caption), form_)) {
  setWindowTitle(caption_of(description.caption));
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
  if (description.replaced != nullptr) {
    if (BoxView* const replaced = BoxView::of(*description.replaced)) take_over(*replaced);
  }
  add_menus(description.menus);
  if (!description.pane_caption.empty()) add_pane(caption_of(description.pane_caption));
}

BoxView& EditorDialog::view() const { return *BoxView::of(*box_); }

EditorDialog::~EditorDialog() {
  // The box outlives the dialog if somebody still holds it.
  if (box_.use_count() > 1) view().setParent(nullptr);
}

/// Takes over how the box that it replaces shows text, and the bar of its host.
void EditorDialog::take_over(BoxView& replaced) {
  replaced_size_ = replaced.size();
  view().put_options(replaced.options());
  view().put_host(replaced.host());
  if (const Spelling* const spelling = Spelling::of(replaced)) {
    new Spelling(view(), spelling->words());
  }
  if (replaced.host() == nullptr) return;
  QToolBar* const bar = replaced.host()->create_bar(*this);
  if (bar == nullptr) return;
  static_cast<QVBoxLayout*>(layout())->insertWidget(0, bar);
  replaced_size_.setWidth(std::max(replaced_size_.width(), bar->sizeHint().width()));
}

void EditorDialog::add_menus(const std::vector<platform::Menu>& menus) {
  auto* bar = new QMenuBar(this);
  layout()->setMenuBar(bar);
  for (const platform::Menu& menu : menus) {
    QMenu* const shown = bar->addMenu(caption_of(menu.caption));
    for (const platform::MenuItem& item : menu.items) {
      if (item.name.empty()) {
        shown->addSeparator();
      } else {
        add_item(*shown, item);
      }
    }
    connect(shown, &QMenu::aboutToShow, this, &EditorDialog::show_items);
  }
}

void EditorDialog::add_item(QMenu& menu, const platform::MenuItem& item) {
  // The shortcut in a caption is only shown: the listener handles the key itself.
  const QStringList parts = to_qt(item.caption).split(QLatin1Char('\t'));
  QString caption = item.font.empty() ? caption_of(from_qt(parts.front())) : parts.front();
  if (!item.font.empty()) caption.replace(QLatin1Char('&'), QLatin1String("&&"));
  if (parts.size() > 1) caption += QLatin1Char('\t') + parts.back();
  QAction* const action = menu.addAction(caption);
  action->setObjectName(to_qt(item.name));
  action->setCheckable(item.has_check);
  if (!item.font.empty()) action->setFont(icons::menu_font(to_qt(item.font), menu.font()));
  if (item.swatch) {
    const QColor text = view().palette().color(QPalette::Text);
    action->setIcon(icons::swatch(*item.swatch == 0 ? text : to_qt(*item.swatch)));
  }
  items_.push_back(action);
  connect(action, &QAction::triggered, this, [this, name = item.name] {
    const QPointer<EditorDialog> alive(this);
    if (listener_ != nullptr) listener_->on_command(name);
    if (alive.isNull()) return;
    view().ensureCursorVisible();
    show_items();
  });
}

void EditorDialog::show_items() {
  if (listener_ == nullptr) return;
  for (QAction* const action : items_) {
    const QString name = action->objectName();
    action->setEnabled(listener_->is_enabled(view_of(name)));
    if (action->isCheckable()) action->setChecked(listener_->is_checked(view_of(name)));
  }
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

void EditorDialog::open_form(QSize size) {
  layout()->activate();
  const int extra = sizeHint().height() - form_->sizeHint().expandedTo({0, 0}).height();
  const QSettings settings;
  const QSize kept = settings.value(size_key).toSize();
  const QRect screen =
      (parentWidget() == nullptr ? this : parentWidget())->screen()->availableGeometry();
  if (kept.isValid()) {
    size = kept.boundedTo(screen.size());
  } else if (!replaced_size_.isEmpty()) {
    // The form is larger than its box by its margins and buttons.
    constexpr QSize around(16, 50);
    size = size.expandedTo(replaced_size_ + around).boundedTo(screen.size() * 2 / 3);
  }
  resize(size.width(), size.height() + extra);
  layout()->activate();
}

void EditorDialog::remember_size() const {
  // Without the name of a program there is nowhere to keep it.
  if (QCoreApplication::organizationName().isEmpty() || isMaximized()) return;
  QSettings().setValue(size_key, form_->size());
}

bool EditorDialog::may_drop_edits() {
  const bool asks = view().host() != nullptr && view().host()->asks_before_closing() &&
                    listener_ != nullptr && listener_->has_edits();
  if (!asks) return true;
  // The program may end the window, and all that is on it, before the user has answered.
  const QPointer<QMessageBox> question =
      new QMessageBox(QMessageBox::Question, windowTitle(), tr("Keep what was edited?"),
                      QMessageBox::Save | QMessageBox::Discard | QMessageBox::Cancel, this);
  question->button(QMessageBox::Save)->setText(tr("&Keep"));
  const QPointer<EditorDialog> alive(this);
  const int answer = question->exec();
  delete question;
  if (alive.isNull() || listener_ == nullptr) return false;
  if (answer == QMessageBox::Save) listener_->on_ok();
  return answer == QMessageBox::Discard;
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
  if (listener_ != nullptr && may_drop_edits()) listener_->on_cancel();
}

void EditorDialog::done(int result) {
  remember_size();
  QDialog::done(result);
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
  const QPointer<EditorDialog> alive(this);
  if (!may_drop_edits()) {
    // It has been closed already where the edits are kept.
    event->setAccepted(alive.isNull() || !isVisible());
    return;
  }
  if (listener_ != nullptr) listener_->on_close();
  event->accept();
  done(Rejected);
}

}  // namespace qel::qt
