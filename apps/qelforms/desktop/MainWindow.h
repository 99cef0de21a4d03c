#pragma once

#include <QMainWindow>
#include <QMessageBox>
#include <QTimer>
#include <chrono>
#include <cstdint>
#include <exception>
#include <functional>
#include <memory>
#include <string>
#include <vector>

#include "RecordForm.h"
#include "RecordStore.h"
#include "Retries.h"
#include "SpareDrafts.h"
#include "WindowMemory.h"
#include "WindowOptions.h"
#include "qel/qt/TextBox.h"

class QAction;
class QActionGroup;
class QLabel;
class QMenu;
class QSplitter;

namespace qel::forms {

/// How soon the window sees what others do, and tries again what they hold up without haste.
constexpr auto others_delay = std::chrono::seconds(2);

class EditCommands;
class EditorSide;
class ListSide;
class RecordList;

/// The window of the records: a list of them with a search field, and the form of one record.
///
/// Unsaved work is kept as a draft while the user works. Another record is shown, or the window
/// closed, only after unsaved work was saved or the user gave it up. While another program writes
/// to the records, the window goes on, and does what was asked for as soon as it can.
///
/// The window itself shows what there is (MainWindow.cpp). What the user asks for is divided by
/// matter: saving and drafts, records, files, and the menus.
class MainWindow : public QMainWindow {
  Q_OBJECT

 public:
  /// The store, which should have no patience, has to outlive the window. The window begins with a
  /// new record.
  explicit MainWindow(RecordStore& store, WindowOptions options = {});
  ~MainWindow() override;

  /// Must be called when the window is shown: shows the first record or, if `recovers` is true,
  /// goes on with the newest unsaved work in the store.
  void begin(bool recovers);

  RecordForm& form() { return *form_; }
  qt::TextBox& title_box();
  qt::TextBox& body_box();

  /// Writes the selected records to a file, in the format that its ending stands for. Returns
  /// whether that succeeded; if not, the user is told, and no file is changed.
  bool export_to(const QString& path);
  /// Adds a record for each of the files, and for each in the folders.
  Q_INVOKABLE void import_from(const QStringList& paths);

 protected:
  void closeEvent(QCloseEvent* event) override;
  void changeEvent(QEvent* event) override;
  void dragEnterEvent(QDragEnterEvent* event) override;
  void dropEvent(QDropEvent* event) override;
  bool eventFilter(QObject* watched, QEvent* event) override;

 private:
  // The window.

  void connect_sides();
  void connect_form();
  void restore_look();
  void keep_look();

  // What is shown.

  void list_records();
  void list_now();
  void index_some();
  void show_tags();
  void show_state();
  void show_counts();
  void show_waiting();
  void apply_tables();
  void put_zoom(int percent);
  void tell(const QString& message);
  RecordList& list() const;
  /// The title of a record of the list between quotes, or how many records these are.
  QString name_of(const std::vector<std::int64_t>& ids) const;
  bool may_edit() const;
  bool has_unsaved_work() const;

  // The menus.

  void add_actions();
  void add_record_actions(QMenu& menu);
  void add_trash_actions(QMenu& menu);
  void add_file_actions(QMenu& menu);
  void add_edit_actions(QMenu& menu);
  void add_format_actions(QMenu& menu);
  void add_view_actions(QMenu& menu);
  void add_zoom_actions(QMenu& menu);
  void add_order_actions(QMenu& menu);
  void add_help_actions(QMenu& menu);
  QAction& add_action(QMenu& menu, const char* name, const QString& text,
                      std::function<void()> work);
  QAction& action(const char* name) const;
  void follow_order();

  // Saving and drafts.

  void note_change();
  void keep_draft();
  void keep_spare_draft();
  bool save();
  void save_now();
  bool save_and_wait(bool closes = false);
  void after_save();
  void note_full_disk();
  void solve_conflict();
  void save_as_new();
  void save_over(const Record& theirs);
  void revert();
  void recover_other();
  void recover(const Draft& draft);
  /// Returns whether there is no unsaved work left, or the user gives it up; for a window that
  /// closes, also whether the user leaves it as a draft.
  bool settle(bool closes = false);
  /// The same, and what the user gives up is gone at once, so that what is unsaved later is new.
  bool end_work();
  /// Waits for work that another program's writing holds up; false when the user has had enough.
  bool wait_for(const QString& name, bool closes = false);

  // Records.

  void new_record();
  void open_record(std::int64_t id, bool enters);
  QStringList tags_of(std::int64_t id) const;
  void show_record(std::int64_t id);
  void show_records(const std::vector<std::int64_t>& ids);
  void follow_selection();
  void follow_others();
  void show_what_is_listed();
  void duplicate_selected();
  void remove_selected();
  void move_to_trash(const std::vector<std::int64_t>& ids);
  void restore_selected();
  void restore(const std::vector<std::int64_t>& ids);
  void remove_for_good();
  void empty_trash();
  void after_removal(int row);
  void put_tags();

  // Files.

  void open_file(bool instead);
  void open_path(const QString& path, bool instead);
  void open_recent(const QString& path);
  void fill_recent_files(QMenu& menu);
  void choose_imports();
  void export_selected();
  void print();
  void preview();
  void edit_tables();
  std::vector<Record> selected_records() const;
  std::u16string document_title() const;

  QMessageBox::StandardButton ask(const QString& question, QMessageBox::StandardButtons answers,
                                  QMessageBox::StandardButton preset);
  /// Asks whether to do what the caption of the button says.
  bool confirm(const QString& question, const QString& detail, const QString& caption);
  /// Does work that writes, now or as soon as another program has ended writing. Returns whether
  /// it was done; if it failed, the user is told.
  bool attempt(const QString& name, const std::function<void()>& work);
  void report(const std::exception& error);

  RecordStore& store_;
  WindowOptions options_;
  WindowMemory memory_;
  WindowMemory::Look look_;
  Retries retries_;
  SpareDrafts spare_;
  QSplitter* splitter_;
  ListSide* side_;
  EditorSide* editor_;
  QLabel* counts_;
  QLabel* state_;
  EditCommands* edit_commands_;
  std::vector<QAction*> orders_;
  QTimer draft_timer_;
  QTimer count_timer_;
  QTimer others_timer_;
  QTimer index_timer_;
  std::unique_ptr<RecordForm> form_;
  QStringList new_tags_;      // of a record that was never saved
  std::int64_t others_ = 0;   // what other programs had done when the list was read
  bool is_trashed_ = false;   // the record that is shown
  bool is_asking_ = false;    // the user, so that the selection is not followed
  bool keeps_draft_ = false;  // the user wants to close with a draft
  std::function<void()> undo_removal_;
};

}  // namespace qel::forms
