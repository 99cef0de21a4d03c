#pragma once

#include <cstdint>
#include <functional>
#include <string>
#include <string_view>

#include "MarkupField.h"
#include "RecordStore.h"
#include "Tables.h"

namespace qel::forms {

/// The form that edits a record: a single-line control for the title, a multi-line control for the
/// body, and the record that they show.
///
/// The form begins with a new record. Changes by the user are unsaved work until they are saved or
/// given up; `keep_draft` makes them survive a crash. When a member raises an error of the store,
/// the unsaved work is still in the controls.
class RecordForm {
 public:
  /// All of these have to outlive the form, which sets up the controls and listens to them.
  /// `on_change` is called after each change by the user: the time to keep a draft, now or soon.
  RecordForm(
      RecordStore& store, QELTextbox& title, QELTextbox& body,
      std::function<void()> on_change = [] {});

  /// The record as last loaded or saved.
  const Record& record() const { return record_; }
  /// The markup in the controls.
  std::u16string title() const { return title_.markup(); }
  std::u16string body() const { return body_.markup(); }
  /// Put markup there, as unsaved work.
  void put_title(std::u16string_view markup);
  void put_body(std::u16string_view markup);
  bool is_changed() const { return title_.is_changed() || body_.is_changed(); }

  // Each of these gives up unsaved work and its draft: check `is_changed` first.

  void load(std::int64_t id);
  void new_record();
  /// Loads the record again from the store.
  void revert();

  /// Saves the changes and drops the draft, both or neither. A record without changes is left
  /// alone, but a new one is always saved.
  void save();
  /// Saves the work as a new record, even if others have changed or removed the old one.
  void save_as_new();

  /// Keeps unsaved work that has not been kept yet. Returns whether there was any.
  bool keep_draft();
  /// Shows a draft of the store as unsaved work on its record, or on a new one if the record is
  /// gone. Later work is kept in this draft. Other unsaved work is given up.
  void recover(const Draft& draft);

  bool get_RevealCodes() const { return reveals_codes_; }
  /// Makes both controls show codes, or neither; the texts stay.
  void put_RevealCodes(bool value);

  /// Gives both controls these fonts and colours; the texts stay.
  void put_tables(const command::Tables& tables);

  /// For a host that listens to the controls itself: pass their `Change` events on to these.
  ControlEvents& title_events() { return title_; }
  ControlEvents& body_events() { return body_; }

 private:
  void show(Record record);
  void give_up_draft();
  void save_record(Record record);

  RecordStore& store_;
  std::function<void()> on_change_;
  MarkupField title_;
  MarkupField body_;
  Record record_;
  std::int64_t draft_id_ = 0;
  bool has_unkept_work_ = false;
  bool reveals_codes_ = false;
};

}  // namespace qel::forms
