#include "qel/qt/FindBar.h"

#include <QAbstractButton>
#include <QApplication>
#include <QGridLayout>
#include <QKeyEvent>
#include <QLabel>
#include <QLineEdit>
#include <QPointer>
#include <QPushButton>
#include <QTimer>
#include <QToolButton>
#include <initializer_list>
#include <optional>

#include "qel/qt/TextBox.h"
#include "qt/platform/BoxView.h"
#include "qt/platform/Text.h"
#include "qt/widget/FindFormatMenu.h"
#include "qt/widget/FindIcons.h"
#include "qt/widget/Finding.h"

namespace qel::qt {

struct FindBar::Parts {
  Finding finding;
  QPointer<TextBox> given;
  QPointer<BoxView> last;      // the one that had the focus last
  QPointer<BoxView> filtered;  // whose keys pass through the bar
  QTimer count_delay;
  QGridLayout* grid = nullptr;
  QLineEdit* text = nullptr;
  QLineEdit* replacement = nullptr;
  QWidget* steps = nullptr;
  QWidget* options = nullptr;
  QWidget* buttons = nullptr;
  QToolButton* match_case = nullptr;
  QToolButton* whole_words = nullptr;
  QToolButton* format = nullptr;
  QToolButton* close = nullptr;
  QPushButton* replace = nullptr;
  QPushButton* replace_all = nullptr;
  QLabel* status = nullptr;
  FindFormatMenu* formats = nullptr;
  std::optional<bool> is_narrow;
};

namespace {

/// Widgets in a row without any space around them.
QWidget* row_of(QWidget* parent, std::initializer_list<QWidget*> widgets) {
  auto* const row = new QWidget(parent);
  auto* const layout = new QHBoxLayout(row);
  layout->setContentsMargins(0, 0, 0, 0);
  layout->setSpacing(2);
  for (QWidget* const widget : widgets) layout->addWidget(widget);
  return row;
}

const QELTextbox* control_of(const QWidget* widget) {
  for (; widget != nullptr; widget = widget->parentWidget()) {
    if (const auto* const box = qobject_cast<const TextBox*>(widget)) return &box->control();
  }
  return nullptr;
}

bool is_enter(const QKeyEvent& event) {
  return event.key() == Qt::Key_Return || event.key() == Qt::Key_Enter;
}

/// Whether the bar acts on the key, whichever of its parts has the focus.
bool is_of_bar(const QKeyEvent& event) {
  return event.key() == Qt::Key_F3 || event.key() == Qt::Key_Escape || is_enter(event);
}

QString note_of(Finding::Outcome outcome) {
  switch (outcome) {
    case Finding::Outcome::from_beginning:
      return FindBar::tr("from the beginning");
    case Finding::Outcome::from_end:
      return FindBar::tr("from the end");
    default:
      return {};
  }
}

}  // namespace

FindBar::FindBar(QWidget* parent) : QWidget(parent), parts_(std::make_unique<Parts>()) {
  build();
  hide();
  Parts& p = *parts_;
  constexpr int pause = 150;
  p.count_delay.setSingleShot(true);
  p.count_delay.setInterval(pause);
  connect(&p.count_delay, &QTimer::timeout, this, [this] { show_status({}); });
  connect(&p.finding, &Finding::text_changed, &p.count_delay, qOverload<>(&QTimer::start));
  connect(&p.finding, &Finding::selection_changed, this, [this] {
    if (isVisible() && !parts_->count_delay.isActive()) show_status({});
  });
  connect(&p.finding, &Finding::access_changed, this, &FindBar::show_state);
  connect(qApp, &QApplication::focusChanged, this,
          [this](QWidget* /*old*/, QWidget* now) { note_focus(now); });
  for (QLineEdit* const edit : {p.text, p.replacement}) edit->setClearButtonEnabled(true);
  connect(p.text, &QLineEdit::textChanged, this, &FindBar::search_anew);
  connect(p.match_case, &QToolButton::toggled, this, &FindBar::search_anew);
  connect(p.whole_words, &QToolButton::toggled, this, &FindBar::search_anew);
  connect(p.formats, &FindFormatMenu::format_changed, this, &FindBar::search_anew);
  connect(p.formats, &QMenu::aboutToShow, this,
          [this] { parts_->formats->fill(control_of(parts_->finding.view())); });
  connect(p.replace, &QPushButton::clicked, this, &FindBar::replace);
  connect(p.replace_all, &QPushButton::clicked, this, &FindBar::replace_all);
  connect(p.close, &QToolButton::clicked, this, &FindBar::dismiss);
  show_state();
}

FindBar::~FindBar() {
  // The focus leaves its fields when it is no longer a bar.
  qApp->disconnect(this);
}

// The widgets.

void FindBar::build() {
  Parts& p = *parts_;
  const auto edit = [this](const QString& name) {
    auto* const made = new QLineEdit(this);
    made->setPlaceholderText(name);
    made->setAccessibleName(name);
    return made;
  };
  const auto button = [this](FindIcon icon, const QString& name, const QString& tip) {
    auto* const made = new QToolButton(this);
    made->setIcon(icon_of(icon));
    made->setAutoRaise(true);
    made->setAccessibleName(name);
    made->setToolTip(tip);
    return made;
  };
  const auto push = [this](const QString& caption) {
    auto* const made = new QPushButton(caption, this);
    made->setAutoDefault(false);
    return made;
  };
  p.text = edit(tr("Find"));
  p.replacement = edit(tr("Replace with"));
  auto* const previous = button(FindIcon::previous, tr("Find Previous"), tr("Previous (Shift+F3)"));
  auto* const next = button(FindIcon::next, tr("Find Next"), tr("Next (F3)"));
  connect(previous, &QToolButton::clicked, this, &FindBar::find_previous);
  connect(next, &QToolButton::clicked, this, &FindBar::find_next);
  p.steps = row_of(this, {previous, next});
  p.match_case = button(FindIcon::match_case, tr("Match Case"), tr("Match case"));
  p.whole_words = button(FindIcon::whole_words, tr("Whole Words"), tr("Whole words only"));
  p.match_case->setCheckable(true);
  p.whole_words->setCheckable(true);
  p.format = button(FindIcon::format, tr("Find Format"), tr("Find a format"));
  p.format->setCheckable(true);  // shows that one is chosen
  p.formats = new FindFormatMenu(this);
  p.format->setMenu(p.formats);
  p.format->setPopupMode(QToolButton::InstantPopup);
  p.options = row_of(this, {p.match_case, p.whole_words, p.format});
  p.replace = push(tr("Replace"));
  p.replace_all = push(tr("Replace All"));
  p.buttons = row_of(this, {p.replace, p.replace_all});
  p.status = new QLabel(this);
  p.close = button(FindIcon::close, tr("Close"), tr("Close (Esc)"));
  p.grid = new QGridLayout(this);
  constexpr int margin = 4;
  p.grid->setContentsMargins(margin, margin, margin, margin);
  p.grid->setHorizontalSpacing(margin);
  p.grid->setVerticalSpacing(margin);
  p.grid->setSizeConstraint(QLayout::SetNoConstraint);
  p.grid->setColumnStretch(0, 1);
  p.replacement->hide();
  p.buttons->hide();
  arrange();
}

/// Puts the parts in two rows, or in four where there is little room.
void FindBar::arrange() {
  Parts& p = *parts_;
  constexpr int room_for_edit = 180;
  constexpr int room_for_status = 160;
  const int wide = room_for_edit + room_for_status + p.steps->sizeHint().width() +
                   p.options->sizeHint().width() + p.close->sizeHint().width();
  const bool is_narrow = width() < wide;
  if (p.is_narrow == is_narrow) return;
  p.is_narrow = is_narrow;
  p.grid->addWidget(p.text, 0, 0);
  if (is_narrow) {
    p.grid->addWidget(p.steps, 0, 1);
    p.grid->addWidget(p.close, 0, 2);
    p.grid->addWidget(p.status, 1, 0);
    p.grid->addWidget(p.options, 1, 1, 1, 2);
    p.grid->addWidget(p.replacement, 2, 0, 1, 3);
    p.grid->addWidget(p.buttons, 3, 0, 1, 3, Qt::AlignLeading);
  } else {
    p.grid->addWidget(p.steps, 0, 1);
    p.grid->addWidget(p.options, 0, 2);
    p.grid->addWidget(p.status, 0, 3);
    p.grid->addWidget(p.close, 0, 4);
    p.grid->addWidget(p.replacement, 1, 0);
    p.grid->addWidget(p.buttons, 1, 1, 1, 4, Qt::AlignLeading);
  }
  p.status->setMinimumWidth(is_narrow ? 0 : room_for_status);
  p.status->setSizePolicy(is_narrow ? QSizePolicy::Ignored : QSizePolicy::Preferred,
                          QSizePolicy::Preferred);
  updateGeometry();
}

QSize FindBar::minimumSizeHint() const {
  const Parts& p = *parts_;
  constexpr int edit = 80;
  return {edit + p.steps->sizeHint().width() + p.options->sizeHint().width(),
          p.grid->minimumSize().height()};
}

void FindBar::resizeEvent(QResizeEvent* event) {
  QWidget::resizeEvent(event);
  arrange();
}

// The box.

void FindBar::follow(TextBox* box) {
  parts_->given = box;
  if (isVisible()) look_for_box();
}

void FindBar::note_focus(QWidget* now) {
  auto* const view = qobject_cast<BoxView*>(now);
  if (view == nullptr || view->QWidget::window() != window()) return;
  parts_->last = view;
  if (isVisible()) look_for_box();
}

void FindBar::look_for_box() {
  Parts& p = *parts_;
  BoxView* view = p.last;
  if (p.given != nullptr) {
    view = qobject_cast<BoxView*>(p.given->focusProxy());
  } else if (view == nullptr || view->QWidget::window() != window() || view->isHidden()) {
    view = nullptr;
    for (BoxView* const other : window()->findChildren<BoxView*>()) {
      if (view == nullptr && other->isVisible()) view = other;
    }
  }
  p.finding.attach(view);
  if (p.filtered != view) {
    if (p.filtered != nullptr) p.filtered->removeEventFilter(this);
    p.filtered = view;
    if (view != nullptr) view->installEventFilter(this);
  }
  show_state();
}

void FindBar::showEvent(QShowEvent* event) {
  QWidget::showEvent(event);
  look_for_box();
  parts_->finding.show_marks(true);
}

void FindBar::hideEvent(QHideEvent* event) {
  QWidget::hideEvent(event);
  parts_->finding.show_marks(false);
}

// What is found, and how.

QString FindBar::text() const { return parts_->text->text(); }
void FindBar::put_text(const QString& text) { parts_->text->setText(text); }
QString FindBar::replacement() const { return parts_->replacement->text(); }
void FindBar::put_replacement(const QString& text) { parts_->replacement->setText(text); }
bool FindBar::matches_case() const { return parts_->match_case->isChecked(); }
void FindBar::put_matches_case(bool matches) { parts_->match_case->setChecked(matches); }
bool FindBar::whole_words() const { return parts_->whole_words->isChecked(); }
void FindBar::put_whole_words(bool whole) { parts_->whole_words->setChecked(whole); }
QString FindBar::status() const { return parts_->status->text(); }

void FindBar::search_anew() {
  Parts& p = *parts_;
  p.finding.put_wanted({from_qt(text()), matches_case(), whole_words(), p.formats->format()});
  const QString format = p.formats->description();
  p.format->setChecked(!format.isEmpty());
  p.format->setToolTip(format.isEmpty() ? tr("Find a format") : tr("Find only: %1").arg(format));
  p.text->setPlaceholderText(format.isEmpty() ? tr("Find") : tr("Find %1").arg(format));
  if (isVisible()) show_status(note_of(p.finding.find_here()));
}

void FindBar::open() {
  look_for_box();
  const auto box = parts_->finding.box();
  const std::u16string selected = box == nullptr ? u"" : box->get_SelText();
  constexpr std::size_t longest = 200;
  const bool is_wanted = !selected.empty() && selected.size() <= longest &&
                         selected.find_first_of(u"\r\n") == std::u16string::npos;
  if (is_wanted) put_text(to_qt(selected));
  show();
  parts_->text->setFocus(Qt::ShortcutFocusReason);
  parts_->text->selectAll();
  show_status({});
}

void FindBar::open_replace() {
  parts_->replacement->show();
  parts_->buttons->show();
  open();
}

void FindBar::dismiss() {
  if (BoxView* const view = parts_->finding.view()) view->setFocus(Qt::OtherFocusReason);
  hide();
  parts_->replacement->hide();
  parts_->buttons->hide();
}

void FindBar::find_next() {
  look_for_box();
  show_status(note_of(parts_->finding.find_next()));
}

void FindBar::find_previous() {
  look_for_box();
  show_status(note_of(parts_->finding.find_previous()));
}

void FindBar::replace() {
  look_for_box();
  if (!parts_->replace->isEnabled()) return;
  parts_->finding.replace(replacement());
  show_status(note_of(parts_->finding.find_next()));
}

void FindBar::replace_all() {
  look_for_box();
  if (!parts_->replace->isEnabled()) return;
  const std::size_t replaced = parts_->finding.replace_all(replacement());
  show_status({});
  if (replaced != 0) say(tr("%L1 replaced").arg(replaced));
}

// The keys.

bool FindBar::event(QEvent* event) {
  // The host's own shortcuts for these keys do not act in the bar.
  if (event->type() == QEvent::ShortcutOverride && is_of_bar(*static_cast<QKeyEvent*>(event))) {
    event->accept();
    return true;
  }
  return QWidget::event(event);
}

bool FindBar::eventFilter(QObject* watched, QEvent* event) {
  if (watched == parts_->filtered && event->type() == QEvent::KeyPress && isVisible()) {
    auto& key = *static_cast<QKeyEvent*>(event);
    if (key.key() == Qt::Key_F3) {
      keyPressEvent(&key);
      return true;
    }
  }
  return QWidget::eventFilter(watched, event);
}

void FindBar::keyPressEvent(QKeyEvent* event) {
  if (!is_of_bar(*event)) return QWidget::keyPressEvent(event);
  event->accept();
  if (event->key() == Qt::Key_Escape) return dismiss();
  QWidget* const focused = focusWidget();
  auto* const button = qobject_cast<QAbstractButton*>(focused);
  if (is_enter(*event) && button != nullptr) return button->click();
  if (is_enter(*event) && focused == parts_->replacement) return replace();
  if (event->modifiers().testFlag(Qt::ShiftModifier)) return find_previous();
  find_next();
}

// What the bar says.

void FindBar::show_state() {
  Parts& p = *parts_;
  const auto box = p.finding.box();
  const bool edits = box != nullptr && box->may_edit();
  for (QWidget* const widget :
       std::initializer_list<QWidget*>{p.replacement, p.replace, p.replace_all}) {
    widget->setEnabled(edits);
  }
  p.steps->setEnabled(box != nullptr);
}

void FindBar::show_status(const QString& note) {
  Parts& p = *parts_;
  p.count_delay.stop();
  const Finding::Count count = p.finding.count();
  QString all;
  if (count.current != 0) {
    all = (count.is_more ? tr("%L1 of more than %L2") : tr("%L1 of %L2"))
              .arg(count.current)
              .arg(count.total);
  } else if (count.total != 0) {
    all = count.is_more      ? tr("more than %L1").arg(count.total)
          : count.total == 1 ? tr("1 hit")
                             : tr("%L1 hits").arg(count.total);
  } else if (!p.finding.wanted().is_empty()) {
    all = tr("No hits");
  }
  say(note.isEmpty() ? all : tr("%1, %2").arg(all, note));
}

void FindBar::say(const QString& text) {
  parts_->status->setText(text);
  parts_->status->setToolTip(text);
  parts_->text->setAccessibleDescription(text);
}

}  // namespace qel::qt
