#pragma once

#include <QString>
#include <QWidget>
#include <memory>

namespace qel::qt {

class TextBox;

/// A bar that finds and replaces, to be put above or below any text box. It is hidden at first; a
/// host calls `open` or `open_replace`, usually for Ctrl+F and Ctrl+H.
///
/// It finds while the user types, from the caret on and, at the end, from the beginning again; all
/// hits are marked, and the one found is selected. F3 and Shift+F3, in the box as well as in the
/// bar, and Enter and Shift+Enter go to the next and the previous hit; Escape hides the bar and
/// gives the focus back. Formats can be found alone, or text that is wholly in them. A replacement
/// takes the format of the first character that it replaces; replacing all is undone in one step.
class FindBar : public QWidget {
  Q_OBJECT
  Q_PROPERTY(QString text READ text WRITE put_text)
  Q_PROPERTY(QString replacement READ replacement WRITE put_replacement)
  Q_PROPERTY(bool matchesCase READ matches_case WRITE put_matches_case)
  Q_PROPERTY(bool wholeWords READ whole_words WRITE put_whole_words)

 public:
  explicit FindBar(QWidget* parent = nullptr);
  ~FindBar() override;

  /// Searches that text box. Null, the default, stands for the box of the bar's window that has the
  /// focus, or had it last; one that never had it is found when the bar opens.
  void follow(TextBox* box);

  QString text() const;
  void put_text(const QString& text);
  QString replacement() const;
  void put_replacement(const QString& text);
  bool matches_case() const;
  void put_matches_case(bool matches);
  bool whole_words() const;
  void put_whole_words(bool whole);
  /// What the bar says, such as "3 of 17".
  QString status() const;

  QSize minimumSizeHint() const override;

 public slots:
  /// Shows the bar, with the selected text as that to be found, if it is in one line.
  void open();
  /// The same, with what replaces.
  void open_replace();
  /// Hides the bar and gives the focus back to the box.
  void dismiss();
  /// With the bar hidden, these find what it found last.
  void find_next();
  void find_previous();
  /// Replaces the selected hit and goes to the next. Neither does anything in a text that the user
  /// may not change.
  void replace();
  void replace_all();

 protected:
  bool event(QEvent* event) override;
  bool eventFilter(QObject* watched, QEvent* event) override;
  void keyPressEvent(QKeyEvent* event) override;
  void showEvent(QShowEvent* event) override;
  void hideEvent(QHideEvent* event) override;
  void resizeEvent(QResizeEvent* event) override;

 private:
  struct Parts;

  void build();
  void arrange();
  void look_for_box();
  void note_focus(QWidget* now);
  void search_anew();
  void show_state();
  void show_status(const QString& note);
  void say(const QString& text);

  std::unique_ptr<Parts> parts_;
};

}  // namespace qel::qt
