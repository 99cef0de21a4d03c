#include "qt/widget/FormatActions.h"

#include <QAction>
#include <QEvent>
#include <QFontDatabase>
#include <QMenu>
#include <utility>

#include "qel/base/CaseMapping.h"
#include "qt/platform/BoxHandling.h"
#include "qt/platform/BoxMenu.h"
#include "qt/platform/BoxView.h"
#include "qt/platform/FormatIcons.h"
#include "qt/platform/FormatMapping.h"
#include "qt/platform/Text.h"

namespace qel::qt {

namespace commands = format_commands;
using icons::Sign;

namespace {

constexpr std::pair<std::u16string_view, Sign> signs[] = {
    {u"mnuBold", Sign::bold},
    {u"mnuItalic", Sign::italic},
    {u"mnuUnderline", Sign::underline},
    {u"mnuStrikeOut", Sign::strike_out},
    {u"mnuSuperscript", Sign::raised},
    {u"mnuSubscript", Sign::lowered},
    {u"mnuSmallCaps", Sign::small_capitals},
    {u"mnuPlain", Sign::plain},
    {u"mnuUndoStep", Sign::undo},
    {u"mnuRedo", Sign::redo},
};

/// The name of the object that does what a command of the large editor does.
QString name_of(std::u16string_view command) {
  constexpr std::u16string_view prefix = u"mnu";
  return to_qt(command.substr(prefix.size()));
}

QString without_letter_sign(QString caption) { return caption.remove(QLatin1Char('&')); }

/// Text of an action in which no "&" stands for a letter.
QString literal(QString text) { return text.replace(QLatin1Char('&'), QLatin1String("&&")); }

QString with_key(const QString& caption, std::int16_t index, std::int16_t shift) {
  if (index == 0) return caption;
  return caption + QLatin1Char('\t') + to_qt(commands::key_text(keys::function_key(index), shift));
}

/// The tool tip, and the name for assistive programs, that say what the caption says.
void describe(QAction& action, const QString& caption, const QString& key) {
  const QString name = without_letter_sign(caption);
  action.setIconText(name);
  action.setToolTip(key.isEmpty() ? name : QStringLiteral("%1 (%2)").arg(name, key));
}

}  // namespace

BoxView* edited_view(TextBox& box) { return BoxView::of(*box.control().CurrentRichTextBox()); }

FormatActions::FormatActions(QObject* parent) : QObject(parent) {
  for (const commands::Toggle& toggle : commands::toggles) {
    toggles_.push_back(create(toggle.label, [&toggle](TextBox& box) {
      QELTextbox& control = box.control();
      (control.*toggle.put)(!(control.*toggle.get)());
    }));
    toggles_.back()->setCheckable(true);
  }
  plain_ = create(commands::plain, [](TextBox& box) { box.SelPlain(); });
  undo_ = create_step(commands::undo);
  redo_ = create_step(commands::redo);
  menus_.push_back(std::make_unique<QMenu>());
  font_ = create_menu(tr("&Font"), *menus_.back());
  font_->setObjectName(QStringLiteral("Font"));
  font_->setIcon(icons::sign(Sign::font));
  connect(menus_.back().get(), &QMenu::aboutToShow, this, [this] { fill_fonts(*font_->menu()); });
  menus_.push_back(std::make_unique<QMenu>());
  color_ = create_menu(tr("Co&lour"), *menus_.back());
  color_->setObjectName(QStringLiteral("Color"));
  connect(menus_.back().get(), &QMenu::aboutToShow, this, [this] { fill_colors(*color_->menu()); });
  create_cases();
  soon_.setSingleShot(true);
  connect(&soon_, &QTimer::timeout, this, &FormatActions::update);
  update();
}

FormatActions::~FormatActions() = default;

QAction* FormatActions::create(const Label& label, std::function<void(TextBox&)> act) {
  auto* const action = new QAction(menu_text_of(label), this);
  action->setObjectName(name_of(label.name));
  describe(*action, caption_of(label.caption),
           to_qt(commands::key_text(label.key_code, label.shift)));
  for (const auto& [name, sign] : signs) {
    if (name == label.name) action->setIcon(icons::sign(sign));
  }
  action->setIconVisibleInMenu(false);
  connect(action, &QAction::triggered, this, [this, act = std::move(act)] { run(act); });
  return action;
}

/// Lets the box act, which may end the box, its menu, and this with that.
void FormatActions::run(const std::function<void(TextBox&)>& act) {
  BoxView* const view = box_.isNull() ? nullptr : edited_view(*box_);
  if (view == nullptr) return;
  const QPointer<FormatActions> alive(this);
  const BoxView::Handling handling(*view);
  if (alive != nullptr && !box_.isNull()) act(*box_);
  if (alive != nullptr) update();
}

QAction* FormatActions::create_menu(const QString& caption, QMenu& menu) {
  auto* const action = new QAction(caption, this);
  describe(*action, caption, {});
  action->setMenu(&menu);
  action->setIconVisibleInMenu(false);
  return action;
}

QAction* FormatActions::create_step(const Label& label) {
  return create(label, [&label](TextBox& box) {
    if (BoxView* const view = edited_view(box)) view->run_command(label.key_code, label.shift);
  });
}

void FormatActions::create_cases() {
  menus_.push_back(std::make_unique<QMenu>());
  cases_ = create_menu(tr("Change C&ase"), *menus_.back());
  for (const commands::Case& row : commands::cases) {
    cases_->menu()->addAction(
        create(row.label, [&row](TextBox& box) { box.control().change_case(row.change); }));
  }
}

void FormatActions::put_box(TextBox* box) {
  if (box == box_) return;
  for (const auto& connection : std::exchange(connections_, {})) disconnect(connection);
  if (box_ != nullptr) box_->removeEventFilter(this);
  box_ = box;
  if (box != nullptr) {
    box->installEventFilter(this);
    const auto soon = [this] {
      if (!soon_.isActive()) soon_.start(0);
    };
    connections_ = {connect(box, &TextBox::SelectionChanged, this, soon),
                    connect(box, &TextBox::PropertyChanged, this, soon),
                    connect(box, &QObject::destroyed, this, soon)};
  }
  update();
}

/// A form may disable all that is on it.
bool FormatActions::eventFilter(QObject* watched, QEvent* event) {
  // Other events also come from a box that is going, which must not be looked at as one.
  if (event->type() == QEvent::EnabledChange && watched == box_) soon_.start(0);
  return QObject::eventFilter(watched, event);
}

bool FormatActions::may_format() const {
  if (box_.isNull()) return false;
  return box_->get_AllowEdits() && box_->isEnabled() && !box_->get_RevealCodes();
}

void FormatActions::update() {
  soon_.stop();
  const bool formats = may_format();
  for (std::size_t i = 0; i < toggles_.size(); ++i) {
    const commands::Toggle& toggle = commands::toggles[i];
    const bool is_small_caps = toggle.get == &QELTextbox::get_SelSmallCaps;
    toggles_[i]->setEnabled(formats && (!is_small_caps || box_->get_Lossless()));
    toggles_[i]->setChecked(formats && (box_->control().*toggle.get)());
  }
  plain_->setEnabled(formats);
  font_->setEnabled(formats);
  color_->setEnabled(formats);
  const auto current = box_.isNull() ? nullptr : box_->control().CurrentRichTextBox();
  const bool edits = current && box_->get_AllowEdits() && box_->isEnabled();
  cases_->setEnabled(edits && current->get_SelLength() > 0);
  undo_->setEnabled(edits && current->can_undo());
  redo_->setEnabled(edits && current->can_redo());
  show_font();
  show_color();
  emit updated();
}

void FormatActions::show_font() {
  const QString name = may_format() ? to_qt(box_->control().get_SelFontName()) : QString();
  font_->setIconText(name);
  font_->setToolTip(name.isEmpty() ? tr("Font") : tr("Font: %1").arg(name));
}

void FormatActions::show_color() {
  const auto color =
      may_format() ? box_->control().CurrentRichTextBox()->get_SelColor() : std::optional<Color>();
  if (!color_->icon().isNull() && color == shown_color_) return;
  shown_color_ = color;
  const bool is_plain = color.value_or(0) == 0;
  color_->setIcon(icons::sign(Sign::color, is_plain ? QColor() : to_qt(*color)));
}

void FormatActions::fill_fonts(QMenu& menu) {
  menu.clear();
  if (box_.isNull()) return;
  QELTextbox& control = box_->control();
  const auto chosen = control.CurrentRichTextBox()->get_SelFontName();
  for (std::int16_t i = 0; i < 10; ++i) {
    const std::u16string name =
        i == 0 ? control.get_FontName() : control.GetFontNameGivenFontIndex(i);
    const QString caption = to_qt(commands::font_caption(i, name));
    if (caption.isEmpty()) continue;
    QAction* const action = menu.addAction(with_key(literal(caption), i, keys::alt_key));
    action->setObjectName(name_of(commands::font_command(i)));
    action->setFont(icons::menu_font(to_qt(name), menu.font()));
    action->setCheckable(true);
    action->setChecked(chosen && equal_ignoring_case(*chosen, name));
    const auto act = [i](TextBox& box) {
      QELTextbox& target = box.control();
      if (i == 0) {
        target.make_font_plain();
      } else {
        target.put_SelFontName(target.GetFontNameGivenFontIndex(i));
      }
    };
    connect(action, &QAction::triggered, this, [this, act] { run(act); });
  }
}

void FormatActions::fill_colors(QMenu& menu) {
  menu.clear();
  if (box_.isNull()) return;
  QELTextbox& control = box_->control();
  const auto chosen = control.CurrentRichTextBox()->get_SelColor();
  const BoxView* const view = edited_view(*box_);
  for (std::int16_t i = 0; i < 10; ++i) {
    const Color color = control.GetColorGivenColorIndex(i);
    const QString caption = caption_of(commands::color_caption(i, color));
    QAction* const action = menu.addAction(with_key(caption, i, keys::ctrl_key));
    action->setObjectName(name_of(commands::color_command(i)));
    const bool is_text = i == 0 && view != nullptr;
    action->setIcon(icons::swatch(is_text ? view->palette().color(QPalette::Text) : to_qt(color)));
    action->setCheckable(true);
    action->setChecked(chosen == color);
    const auto act = [i](TextBox& box) {
      QELTextbox& target = box.control();
      if (i == 0) {
        target.make_color_plain();
      } else {
        target.put_SelColor(target.GetColorGivenColorIndex(i));
      }
    };
    connect(action, &QAction::triggered, this, [this, act] { run(act); });
    constexpr std::int16_t last_reserved = 3;
    if (i == 0 || i == last_reserved) menu.addSeparator();
  }
}

}  // namespace qel::qt
