#include "ListSide.h"

#include <QAction>
#include <QComboBox>
#include <QHBoxLayout>
#include <QMenu>
#include <QSignalBlocker>
#include <QToolButton>
#include <QVBoxLayout>
#include <utility>

#include "Glyphs.h"
#include "RecordList.h"
#include "SearchField.h"
#include "Words.h"

namespace qel::forms {
namespace {

constexpr int spacing = 8;

/// What an entry of the choice stands for; the text of an entry is the tag.
enum class Choice { all, tag, trash };

void add_choice(QComboBox& box, const QString& text, Choice choice) {
  box.addItem(text, static_cast<int>(choice));
}

Choice chosen(const QComboBox& box) { return static_cast<Choice>(box.currentData().toInt()); }

QToolButton* flat_button() {
  auto* const button = new QToolButton;
  button->setAutoRaise(true);
  button->setFocusPolicy(Qt::TabFocus);
  return button;
}

}  // namespace

ListSide::ListSide(QWidget* parent)
    : QWidget(parent),
      choice_(new QComboBox),
      order_button_(flat_button()),
      new_button_(flat_button()),
      list_(new RecordList),
      trash_bar_(new QWidget) {
  auto* const search = new SearchField;
  search_ = search;
  auto* const layout = new QVBoxLayout(this);
  layout->setContentsMargins(0, spacing, 0, 0);
  layout->setSpacing(spacing);
  layout->addWidget(create_head());
  layout->addWidget(list_, 1);
  auto* const trash_layout = new QHBoxLayout(trash_bar_);
  trash_layout->setContentsMargins(spacing, 0, spacing, spacing);
  layout->addWidget(trash_bar_);
  trash_bar_->hide();
  setTabOrder(choice_, order_button_);
  setTabOrder(order_button_, new_button_);
  setTabOrder(new_button_, search_);
  setTabOrder(search_, list_);
  setAutoFillBackground(true);
  setBackgroundRole(QPalette::Base);
  put_tags({});
  connect(search, &QLineEdit::textChanged, this, &ListSide::listing_changed);
  connect(search, &SearchField::entered, this, [this] { list_->enter(); });
  connect(search, &SearchField::left, this, &ListSide::left);
  connect(choice_, &QComboBox::currentIndexChanged, this, [this] {
    trash_bar_->setVisible(listing().trash);
    emit listing_changed();
    emit choice_changed();
  });
}

QWidget* ListSide::create_head() {
  choice_->setAccessibleName(tr("Records to show"));
  choice_->setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Fixed);
  choice_->setSizeAdjustPolicy(QComboBox::AdjustToMinimumContentsLengthWithIcon);
  order_button_->setIcon(
      glyph(Glyph::sort, *this));  // a button with a style sheet keeps its colours
  order_button_->setToolTip(tr("Sort by"));
  order_button_->setAccessibleName(tr("Sort by"));
  order_button_->setPopupMode(QToolButton::InstantPopup);
  order_button_->setStyleSheet(QStringLiteral("QToolButton::menu-indicator { image: none; }"));
  new_button_->setToolButtonStyle(Qt::ToolButtonIconOnly);
  auto* const head = new QWidget;
  auto* const rows = new QVBoxLayout(head);
  rows->setContentsMargins(spacing, 0, spacing, 0);
  rows->setSpacing(spacing);
  auto* const row = new QHBoxLayout;
  row->setSpacing(2);
  row->addWidget(choice_, 1);
  row->addWidget(order_button_);
  row->addWidget(new_button_);
  rows->addLayout(row);
  rows->addWidget(search_);
  return head;
}

Listing ListSide::listing() const {
  Listing listing;
  listing.order = order_;
  listing.ascending = ascending_;
  listing.trash = chosen(*choice_) == Choice::trash;
  if (chosen(*choice_) == Choice::tag) listing.tag = choice_->currentText().toStdU16String();
  return listing;
}

QString ListSide::wanted() const { return search_->text(); }

void ListSide::put_order(Order order, bool ascending) {
  order_ = order;
  ascending_ = ascending;
  emit listing_changed();
}

void ListSide::show_trash(bool shows) {
  choice_->setCurrentIndex(shows ? choice_->count() - 1 : 0);
}

void ListSide::put_tags(const std::vector<std::u16string>& tags) {
  const QString kept = choice_->currentText();
  const bool was_elsewhere = chosen(*choice_) != Choice::tag;
  const int entry = chosen(*choice_) == Choice::trash ? static_cast<int>(tags.size()) + 1 : 0;
  {
    const QSignalBlocker silence(choice_);
    choice_->clear();
    add_choice(*choice_, tr("All Records"), Choice::all);
    for (const std::u16string& tag : tags) {
      add_choice(*choice_, QString::fromStdU16String(tag), Choice::tag);
      choice_->setItemIcon(choice_->count() - 1, glyph(Glyph::tag, *choice_));
    }
    add_choice(*choice_, tr("Trash"), Choice::trash);
    choice_->setItemIcon(choice_->count() - 1, glyph(Glyph::trash, *choice_));
    choice_->setCurrentIndex(was_elsewhere ? entry : qMax(0, choice_->findText(kept)));
  }
  trash_bar_->setVisible(listing().trash);
  if (choice_->currentText() != kept && !kept.isEmpty()) emit listing_changed();
}

void ListSide::show_headings(std::vector<Heading> headings) {
  list_->show_headings(std::move(headings), order_);
  say_why_empty();
}

void ListSide::say_why_empty() {
  const Listing shown = listing();
  if (!wanted().trimmed().isEmpty()) {
    list_->put_empty_text(tr("No records contain %1.").arg(quoted(wanted().trimmed())),
                          shown.trash || !shown.tag.empty()
                              ? tr("Only %1 was searched.").arg(quoted(choice_->currentText()))
                              : tr("Escape shows all records again."));
  } else if (shown.trash) {
    list_->put_empty_text(tr("The trash is empty."), tr("Deleted records wait here."));
  } else if (!shown.tag.empty()) {
    list_->put_empty_text(tr("No records have this tag."), {});
  } else {
    list_->put_empty_text(tr("No records yet."),
                          tr("Write one on the right, or drop files here to import them."));
  }
}

void ListSide::put_new_action(QAction& action) {
  action.setIcon(glyph(Glyph::add, *new_button_));
  action.setIconVisibleInMenu(false);
  new_button_->setDefaultAction(&action);
}

void ListSide::put_order_menu(QMenu& menu) { order_button_->setMenu(&menu); }

void ListSide::put_trash_actions(const std::vector<QAction*>& actions) {
  for (QAction* const action : actions) {
    auto* const button = new QToolButton;
    button->setDefaultAction(action);
    button->setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Fixed);
    trash_bar_->layout()->addWidget(button);
  }
}

void ListSide::start_search() {
  search_->setFocus(Qt::ShortcutFocusReason);
  search_->selectAll();
}

void ListSide::end_search() { search_->clear(); }

}  // namespace qel::forms
