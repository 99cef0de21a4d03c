#include "Notice.h"

#include <QAccessible>
#include <QHBoxLayout>
#include <QLabel>
#include <QPushButton>
#include <QToolButton>
#include <chrono>
#include <utility>

#include "Glyphs.h"

namespace qel::forms {
namespace {

constexpr auto time_to_read = std::chrono::seconds(12);

}  // namespace

Notice::Notice(QWidget* parent)
    : QFrame(parent), label_(new QLabel), button_(new QPushButton), timer_(this) {
  constexpr int margin = 8;
  constexpr int side_margin = 32;  // as that of the text above
  setAutoFillBackground(true);
  setBackgroundRole(QPalette::AlternateBase);
  label_->setWordWrap(true);
  button_->setFocusPolicy(Qt::TabFocus);
  auto* const close = new QToolButton;
  close->setAutoRaise(true);
  close->setFocusPolicy(Qt::TabFocus);
  close->setIcon(glyph(Glyph::close, *label_));
  close->setToolTip(tr("Dismiss"));
  close->setAccessibleName(tr("Dismiss"));
  auto* const layout = new QHBoxLayout(this);
  layout->setContentsMargins(side_margin, margin, margin, margin);
  layout->addWidget(label_, 1);
  layout->addWidget(button_);
  layout->addWidget(close);
  connect(close, &QToolButton::clicked, this, &Notice::take_back);
  connect(button_, &QPushButton::clicked, this, [this] {
    const auto work = std::exchange(work_, {});
    hide();
    if (work) work();
  });
  timer_.setSingleShot(true);
  timer_.callOnTimeout(this, [this] {
    if (!isAncestorOf(focusWidget())) hide();
  });
  hide();
}

void Notice::tell(const QString& text, const QString& caption, std::function<void()> work) {
  tell_until_done(text, caption, std::move(work));
  timer_.start(time_to_read);
}

void Notice::tell_until_done(const QString& text, const QString& caption,
                             std::function<void()> work) {
  timer_.stop();
  label_->setText(text);
  button_->setText(caption);
  button_->setVisible(!caption.isEmpty());
  work_ = std::move(work);
  setAccessibleName(text);
  show();
  QAccessibleEvent event(this, QAccessible::Alert);
  QAccessible::updateAccessibility(&event);
}

void Notice::take_back() {
  timer_.stop();
  hide();
}

QString Notice::text() const { return isHidden() ? QString() : label_->text(); }

}  // namespace qel::forms
