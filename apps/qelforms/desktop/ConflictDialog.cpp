#include "ConflictDialog.h"

#include <QDialogButtonBox>
#include <QGridLayout>
#include <QLabel>
#include <QPushButton>
#include <QScrollBar>
#include <QTextCursor>
#include <QTextEdit>
#include <QVBoxLayout>
#include <vector>

#include "Difference.h"
#include "Markup.h"
#include "RecordDelegate.h"
#include "qel/base/Utf8.h"
#include "qel/convert/Convert.h"

namespace qel::forms {
namespace {

/// What a reader sees of a text, with its lines.
QString shown(const std::u16string& markup) {
  return QString::fromStdString(convert::text_from_markup(to_utf8(markup)));
}

QString whole(const ConflictDialog::Version& version, bool shows_codes) {
  const QString title = QString::fromStdU16String(version.title);
  const QString body = QString::fromStdU16String(version.body);
  return shows_codes ? title + QStringLiteral("\n\n") + body
                     : shown(version.title) + QStringLiteral("\n\n") + shown(version.body);
}

QTextEdit* create_page(const QString& name) {
  auto* const page = new QTextEdit;
  page->setReadOnly(true);
  page->setAccessibleName(name);
  page->setTextInteractionFlags(Qt::TextSelectableByMouse | Qt::TextSelectableByKeyboard);
  constexpr int margin = 10;
  page->document()->setDocumentMargin(margin);
  return page;
}

/// What is only in one of the versions: struck out in theirs, underlined in mine.
QTextCharFormat mark_of(Difference::Kind kind, const QPalette& palette) {
  constexpr double tint = 0.3;
  QTextCharFormat format;
  format.setBackground(mixed(palette.color(QPalette::Base),
                             palette.color(QPalette::Active, QPalette::Highlight), tint));
  format.setFontWeight(QFont::DemiBold);
  format.setFontStrikeOut(kind == Difference::Kind::removed);
  format.setFontUnderline(kind == Difference::Kind::added);
  return format;
}

}  // namespace

ConflictDialog::ConflictDialog(const Version& theirs, const Version& mine, QWidget* parent)
    : QDialog(parent) {
  constexpr QSize preferred(780, 480);
  setWindowTitle(tr("Two Versions"));
  auto* const question = new QLabel(
      tr("This record was saved in another window while you were writing. What only theirs has is "
         "struck out, what only yours has is underlined."));
  question->setWordWrap(true);
  auto* const layout = new QVBoxLayout(this);
  layout->addWidget(question);
  layout->addWidget(create_versions(theirs, mine), 1);
  layout->addWidget(create_buttons());
  resize(preferred);
  findChild<QPushButton*>(QStringLiteral("keep_both"))->setDefault(true);
}

QWidget* ConflictDialog::create_versions(const Version& theirs, const Version& mine) {
  auto* const versions = new QWidget;
  auto* const grid = new QGridLayout(versions);
  grid->setContentsMargins(0, 0, 0, 0);
  auto* const their_page = create_page(tr("Their version"));
  auto* const my_page = create_page(tr("Your version"));
  auto* const their_label = new QLabel(tr("Th&eirs, saved"));
  auto* const my_label = new QLabel(tr("Yo&urs, not saved yet"));
  their_label->setBuddy(their_page);
  my_label->setBuddy(my_page);
  grid->addWidget(their_label, 0, 0);
  grid->addWidget(my_label, 0, 1);
  grid->addWidget(their_page, 1, 0);
  grid->addWidget(my_page, 1, 1);
  // Where only formats differ, the codes show how.
  const bool shows_codes = whole(theirs, false) == whole(mine, false);
  const std::vector<Difference> differences = word_differences(
      whole(theirs, shows_codes).toStdU16String(), whole(mine, shows_codes).toStdU16String());
  QTextCursor their_end(their_page->document());
  QTextCursor my_end(my_page->document());
  for (const Difference& part : differences) {
    const QString text = QString::fromStdU16String(part.text);
    const bool is_same = part.kind == Difference::Kind::same;
    const QTextCharFormat format = is_same ? QTextCharFormat() : mark_of(part.kind, palette());
    if (part.kind != Difference::Kind::added) their_end.insertText(text, format);
    if (part.kind != Difference::Kind::removed) my_end.insertText(text, format);
  }
  connect(their_page->verticalScrollBar(), &QScrollBar::valueChanged, my_page->verticalScrollBar(),
          &QScrollBar::setValue);
  connect(my_page->verticalScrollBar(), &QScrollBar::valueChanged, their_page->verticalScrollBar(),
          &QScrollBar::setValue);
  return versions;
}

QWidget* ConflictDialog::create_buttons() {
  auto* const buttons = new QDialogButtonBox(QDialogButtonBox::Cancel);
  const auto add = [&](const QString& caption, const char* name, Answer answer) {
    QPushButton* const button = buttons->addButton(caption, QDialogButtonBox::ActionRole);
    button->setObjectName(QLatin1String(name));
    connect(button, &QPushButton::clicked, this, [this, answer] {
      answer_ = answer;
      accept();
    });
  };
  add(tr("Keep &Both"), "keep_both", Answer::keep_both);
  add(tr("Keep &Yours"), "use_mine", Answer::use_mine);
  add(tr("Keep &Theirs"), "use_theirs", Answer::use_theirs);
  connect(buttons, &QDialogButtonBox::rejected, this, &QDialog::reject);
  return buttons;
}

}  // namespace qel::forms
