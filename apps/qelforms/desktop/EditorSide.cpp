#include "EditorSide.h"

#include <QApplication>
#include <QTextEdit>
#include <QVBoxLayout>

#include "Notice.h"
#include "TagLine.h"

namespace qel::forms {
namespace {

constexpr int side_margin = 32;
constexpr int top_margin = 24;
constexpr int gap = 8;
constexpr int title_scale = 170;  // per cent of the text
constexpr int line_spacing = 125;

}  // namespace

EditorSide::EditorSide(QWidget* parent)
    : QWidget(parent),
      format_bar_(new qt::FormatBar),
      title_(new qt::TextBox),
      tags_(new TagLine),
      body_(new qt::TextBox),
      find_bar_(new qt::FindBar),
      notice_(new Notice),
      edited_(body_) {
  setAutoFillBackground(true);
  setBackgroundRole(QPalette::Base);
  title_->setObjectName(QStringLiteral("title"));
  body_->setObjectName(QStringLiteral("body"));
  prepare(*title_, tr("Title"));
  prepare(*body_, tr("Text"));
  title_->put_PlaceholderText(tr("Title"));
  body_->put_PlaceholderText(tr("Write here"));
  body_->put_ScrollBars(2);
  body_->put_LineSpacing(line_spacing);
  body_->put_TextMargin(side_margin);
  title_->put_TextMargin(0);
  // Enter and Down lead from the title to the text.
  connect(title_, &qt::TextBox::KeyDown, this,
          [this](std::int16_t* key, const std::int16_t* shift) {
            if (*shift != 0 || (*key != '\r' && *key != 40)) return;
            *key = 0;
            body_->setFocus();
          });
  connect(title_, &qt::TextBox::ZoomChanged, this, &EditorSide::follow_zoom_of_title);
  auto* const bar = new QVBoxLayout;
  bar->setContentsMargins(side_margin - gap, gap / 2, side_margin - gap, 0);
  bar->addWidget(format_bar_);
  // On the colour of the window it stands apart from the text, and its fields from it.
  find_bar_->setAutoFillBackground(true);
  find_bar_->setBackgroundRole(QPalette::Window);
  find_bar_->setContentsMargins(side_margin - gap / 2, gap / 2, gap / 2, gap / 2);
  auto* const head = new QVBoxLayout;
  head->setContentsMargins(side_margin, top_margin, side_margin, 0);
  head->setSpacing(gap);
  head->addWidget(title_);
  head->addWidget(tags_);
  auto* const layout = new QVBoxLayout(this);
  layout->setContentsMargins(0, 0, 0, 0);
  layout->setSpacing(0);
  layout->addLayout(bar);
  layout->addLayout(head);
  layout->addWidget(body_, 1);
  layout->addWidget(find_bar_);
  layout->addWidget(notice_);
  setTabOrder(title_, tags_);
  setTabOrder(tags_, body_);
  connect(qApp, &QApplication::focusChanged, this,
          [this](const QWidget*, const QWidget* now) { follow_focus(now); });
}

EditorSide::~EditorSide() {
  // The focus leaves its texts when it is no longer this side.
  qApp->disconnect(this);
}

void EditorSide::prepare(qt::TextBox& box, const QString& name) {
  box.setAccessibleName(name);
  box.put_BorderStyle(0);
  box.put_ShowEditorOnShiftF2(true);
  box.put_OLEDropMode(2);
  box.put_OLEDragMode(1);
  for (QTextEdit* const view : box.findChildren<QTextEdit*>()) view->setAccessibleName(name);
}

/// A bar that is hidden while it has the focus gives it to the text.
void EditorSide::show_format_bar(bool shows) {
  if (!shows && format_bar_->isAncestorOf(QApplication::focusWidget())) edited_->setFocus();
  format_bar_->setVisible(shows);
}

void EditorSide::follow_focus(const QWidget* now) {
  qt::TextBox* const box = title_->isAncestorOf(now)  ? title_
                           : body_->isAncestorOf(now) ? body_
                                                      : edited_;
  if (box == edited_) return;
  edited_ = box;
  emit box_changed();
}

void EditorSide::put_zoom(int percent) {
  body_->put_Zoom(percent);
  title_->put_Zoom(body_->get_Zoom() * title_scale / 100);
}

/// The keys and the wheel over the title are about both boxes.
void EditorSide::follow_zoom_of_title(int zoom) {
  constexpr int step = 10;
  constexpr int normal = 100;
  const int text = body_->get_Zoom();
  const int usual = text * title_scale / 100;
  if (zoom == usual) return;
  put_zoom(zoom == normal ? normal : text + (zoom > usual ? step : -step));
}

void EditorSide::mark(const QStringList& words) {
  title_->MarkWords(words);
  body_->MarkWords(words);
}

void EditorSide::put_editable(bool editable) {
  title_->put_AllowEdits(editable);
  body_->put_AllowEdits(editable);
  tags_->put_editable(editable);
  tags_->setVisible(editable || !tags_->tags().isEmpty());
}

}  // namespace qel::forms
