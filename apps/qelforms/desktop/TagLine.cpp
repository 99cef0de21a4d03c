#include "TagLine.h"

#include <QAbstractButton>
#include <QCompleter>
#include <QKeyEvent>
#include <QPainter>
#include <QStringListModel>
#include <QStyle>

#include "FlatField.h"
#include "Glyphs.h"
#include "RecordDelegate.h"

namespace qel::forms {
namespace {

constexpr int gap = 6;
constexpr int around = 8;
constexpr int cross = 12;
constexpr int field_width = 110;
constexpr int field_inset = 2;  // of its text from its edge

/// A tag; a click or Delete takes it away.
class Chip : public QAbstractButton {
 public:
  Chip(const QString& tag, QWidget* parent) : QAbstractButton(parent) {
    setText(tag);
    setFocusPolicy(Qt::TabFocus);
    setCursor(Qt::ArrowCursor);
    setToolTip(TagLine::tr("Remove the tag"));
    setAccessibleName(TagLine::tr("Tag %1").arg(tag));
    setAccessibleDescription(TagLine::tr("Press to remove it"));
  }

  QSize sizeHint() const override {
    const int removal = isEnabled() ? cross : 0;
    return {fontMetrics().horizontalAdvance(text()) + 2 * around + removal,
            fontMetrics().height() + gap};
  }

 protected:
  void paintEvent(QPaintEvent* /*event*/) override {
    constexpr double tint = 0.14;
    constexpr double stronger = 0.28;
    const QPalette& colors = palette();
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    const bool stands_out = underMouse() || hasFocus();
    painter.setPen(hasFocus() ? QPen(colors.color(QPalette::Highlight)) : QPen(Qt::NoPen));
    painter.setBrush(mixed(colors.color(QPalette::Base),
                           colors.color(QPalette::Active, QPalette::Highlight),
                           stands_out ? stronger : tint));
    const QRectF all = QRectF(rect()).adjusted(0.5, 0.5, -0.5, -0.5);
    painter.drawRoundedRect(all, all.height() / 2, all.height() / 2);
    painter.setPen(colors.color(QPalette::Active, QPalette::Text));
    const int removal = isEnabled() ? cross : 0;
    const QRect words = QStyle::visualRect(layoutDirection(), rect(),
                                           rect().adjusted(around, 0, -around - removal, 0));
    painter.drawText(words, Qt::AlignCenter, text());
    if (removal == 0) return;
    const QRect sign(width() - around - cross + 2, (height() - cross) / 2, cross, cross);
    glyph(Glyph::close, *this)
        .paint(&painter, QStyle::visualRect(layoutDirection(), rect(), sign), Qt::AlignCenter,
               stands_out ? QIcon::Normal : QIcon::Disabled);
  }
  void keyPressEvent(QKeyEvent* event) override {
    if (event->key() == Qt::Key_Delete || event->key() == Qt::Key_Backspace) {
      click();
    } else {
      QAbstractButton::keyPressEvent(event);
    }
  }
};

}  // namespace

TagLine::TagLine(QWidget* parent) : QWidget(parent), field_(new FlatField(this)) {
  field_->setPlaceholderText(tr("Add a tag"));
  field_->setAccessibleName(tr("Add a tag"));
  field_->installEventFilter(this);
  auto* const completer = new QCompleter(new QStringListModel(field_), field_);
  completer->setCaseSensitivity(Qt::CaseInsensitive);
  field_->setCompleter(completer);
  setFocusProxy(field_);
  connect(field_, &QLineEdit::editingFinished, this, &TagLine::finish);
  QSizePolicy policy(QSizePolicy::Preferred, QSizePolicy::Fixed);
  policy.setHeightForWidth(true);
  setSizePolicy(policy);
}

void TagLine::put_tags(const QStringList& tags) {
  if (tags == tags_ && chips_.size() == static_cast<std::size_t>(tags.size())) return;
  tags_ = tags;
  show_chips();
}

void TagLine::offer(const QStringList& known) {
  static_cast<QStringListModel*>(field_->completer()->model())->setStringList(known);
}

void TagLine::put_editable(bool editable) {
  field_->setVisible(editable);
  for (QAbstractButton* const chip : chips_) chip->setEnabled(editable);
  updateGeometry();
}

void TagLine::show_chips() {
  for (QAbstractButton* const chip : chips_) {
    chip->hide();
    chip->deleteLater();  // it may be what was clicked
  }
  chips_.clear();
  for (const QString& tag : tags_) {
    auto* const chip = new Chip(tag, this);
    chip->setEnabled(field_->isVisibleTo(this));
    connect(chip, &QAbstractButton::clicked, this, [this, tag] { take_away(tag); });
    chip->show();
    chips_.push_back(chip);
  }
  for (std::size_t i = 1; i < chips_.size(); ++i) setTabOrder(chips_[i - 1], chips_[i]);
  if (!chips_.empty()) setTabOrder(chips_.back(), field_);
  updateGeometry();
  place(width(), true);
}

void TagLine::finish() {
  const QString tag = field_->text().simplified();
  field_->clear();
  if (tag.isEmpty() || tags_.contains(tag, Qt::CaseInsensitive)) return;
  tags_.append(tag);
  show_chips();
  emit edited();
}

void TagLine::take_away(const QString& tag) {
  tags_.removeAll(tag);
  field_->setFocus();
  show_chips();
  emit edited();
}

bool TagLine::eventFilter(QObject* watched, QEvent* event) {
  if (watched != field_ || event->type() != QEvent::KeyPress) {
    return QWidget::eventFilter(watched, event);
  }
  const auto& key = *static_cast<QKeyEvent*>(event);
  if (key.text() == QLatin1String(",")) {
    finish();
    return true;
  }
  if (key.key() == Qt::Key_Escape && !field_->text().isEmpty()) {
    field_->clear();
    return true;
  }
  if (key.key() == Qt::Key_Backspace && field_->text().isEmpty() && !tags_.isEmpty()) {
    const QString last = tags_.back();
    take_away(last);
    field_->setText(last);
    return true;
  }
  return false;
}

/// Enter in the field stays here: it ends a tag and presses no button.
void TagLine::keyPressEvent(QKeyEvent* event) {
  if (event->key() != Qt::Key_Return && event->key() != Qt::Key_Enter) event->ignore();
}

QSize TagLine::sizeHint() const { return {field_width, place(width(), false)}; }

QSize TagLine::minimumSizeHint() const { return {field_width, 0}; }

void TagLine::resizeEvent(QResizeEvent* event) {
  QWidget::resizeEvent(event);
  place(width(), true);
}

/// Places the chips and the field in rows; returns their height.
int TagLine::place(int width, bool moves) const {
  int x = 0;
  int y = 0;
  int row = field_->sizeHint().height();
  const auto put = [&](QWidget& widget, QSize size) {
    if (x > 0 && x + size.width() > width) {
      x = 0;
      y += row + gap;
    }
    const int left = x == 0 && &widget == field_ ? -field_inset : x;
    const QRect place(QPoint(left, y + (row - size.height()) / 2), size);
    if (moves) widget.setGeometry(QStyle::visualRect(layoutDirection(), rect(), place));
    x += size.width() + gap;
  };
  for (QAbstractButton* const chip : chips_) {
    const QSize size = chip->sizeHint();
    row = qMax(row, size.height());
    put(*chip, {qMin(size.width(), width), size.height()});
  }
  if (field_->isVisibleTo(this)) put(*field_, {field_width, field_->sizeHint().height()});
  return y + row;
}

}  // namespace qel::forms
