#pragma once

#include <QStringList>
#include <QWidget>

#include "qel/qt/FindBar.h"
#include "qel/qt/FormatBar.h"
#include "qel/qt/TextBox.h"

namespace qel::forms {

class Notice;
class TagLine;

/// The side of the window where a record is edited: a bar of formats, its title as a large line,
/// its tags, its text, and below that a bar to find in it, and what there is to tell.
class EditorSide : public QWidget {
  Q_OBJECT

 public:
  explicit EditorSide(QWidget* parent = nullptr);
  ~EditorSide() override;

  qt::TextBox& title() { return *title_; }
  qt::TextBox& body() { return *body_; }
  TagLine& tags() { return *tags_; }
  qt::FormatBar& format_bar() { return *format_bar_; }
  qt::FindBar& find_bar() { return *find_bar_; }
  Notice& notice() { return *notice_; }
  /// The box that has the focus, or had it last.
  qt::TextBox& edited_box() const { return *edited_; }

  /// The size of the text, in per cent; the title is larger.
  void put_zoom(int percent);
  void put_editable(bool editable);
  void show_format_bar(bool shows);
  /// Marks these words in the title and the text.
  void mark(const QStringList& words);

 signals:
  /// Another box is the edited one.
  void box_changed();

 private:
  void prepare(qt::TextBox& box, const QString& name);
  void follow_focus(const QWidget* now);
  void follow_zoom_of_title(int zoom);

  qt::FormatBar* format_bar_;
  qt::TextBox* title_;
  TagLine* tags_;
  qt::TextBox* body_;
  qt::FindBar* find_bar_;
  Notice* notice_;
  qt::TextBox* edited_;
};

}  // namespace qel::forms
