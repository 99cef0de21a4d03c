#pragma once

#include <QMainWindow>
#include <QMessageBox>
#include <QTimer>
#include <cstdint>
#include <exception>
#include <functional>
#include <memory>
#include <vector>

#include "RecordForm.h"
#include "RecordStore.h"
#include "qel/qt/TextBox.h"

class QAction;
class QLabel;
class QLineEdit;
class QMenu;

namespace qel::forms {

class RecordList;

/// The window of the records: a list of them with a search field, and the form of one record.
///
/// Unsaved work is kept as a draft while the user works. Another record is shown, or the window
/// closed, only after unsaved work was saved or the user gave it up.
class MainWindow : public QMainWindow {
 public:
  /// The store has to outlive the window, which begins with a new record.
  explicit MainWindow(RecordStore& store);
  ~MainWindow() override;

  /// Must be called when the window is shown: shows the newest record or, if `recovers` is true,
  /// goes on with the newest unsaved work in the store.
  void begin(bool recovers);

  RecordForm& form() { return *form_; }
  qt::TextBox& title_box() { return *title_; }
  qt::TextBox& body_box() { return *body_; }

  /// Writes the selected records to a file, in the format that its extension stands for: rtf, txt,
  /// svg, pdf, or markup. Returns whether that succeeded; if not, the user is told, and no file is
  /// changed.
  bool export_to(const QString& path);

 protected:
  void closeEvent(QCloseEvent* event) override;

 private:
  struct Format {
    QAction* action;
    bool (QELTextbox::*get)() const;
    void (QELTextbox::*put)(bool);
  };

  // The window.

  QWidget* create_list_side();
  QWidget* create_form_side();
  void add_actions();
  void add_record_actions();
  void add_text_actions();
  QAction* add_action(QMenu& menu, const char* name, const QString& text,
                      std::function<void()> work);
  void add_format(QMenu& menu, const char* name, const QString& text, Format format);
  void refuse_changes();

  // What is shown.

  void list_records();
  void show_state();
  void show_formats();
  void tell(const QString& message);
  void apply_tables();
  /// The box that has the focus, or had it last.
  qt::TextBox& edited_box() const;

  // What the user asks for.

  void note_change();
  void keep_draft();
  void new_record();
  void show_record(std::int64_t id);
  void follow_selection();
  bool save();
  bool save_as_new();
  void revert();
  void remove_selected();
  void export_selected();
  void edit_tables();
  void recover_other();
  void recover(const Draft& draft);

  /// Returns whether there is no unsaved work left, or the user gives it up.
  bool settle();
  QMessageBox::StandardButton ask(const QString& question, QMessageBox::StandardButtons answers,
                                  QMessageBox::StandardButton preset);
  /// Returns whether the work was done; if not, the user is told.
  bool attempt(const std::function<void()>& work);
  void report(const std::exception& error);

  RecordStore& store_;
  QLineEdit* search_;
  RecordList* list_;
  qt::TextBox* title_;
  qt::TextBox* body_;
  QLabel* state_;
  QAction* save_ = nullptr;
  QAction* revert_ = nullptr;
  QAction* reveal_ = nullptr;
  std::vector<Format> formats_;
  QTimer draft_timer_;
  std::unique_ptr<RecordForm> form_;
  bool is_following_ = false;  // the selection, where the user may have to be asked
};

}  // namespace qel::forms
