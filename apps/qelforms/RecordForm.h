#pragma once

#include <cstdint>
#include <functional>
#include <string>
#include <string_view>

#include "MarkupField.h"
#include "RecordStore.h"
#include "Tables.h"

namespace qel::forms {

/// The form in which a record is edited: a control for a single line that holds the title, one for
/// many that holds the body, and the record that they show.
///
/// The form begins with a new record. What the user changes is unsaved work until it is saved or
/// given up; `keep_draft` keeps it over a crash. When a member raises an error of the store, the
/// unsaved work stands in the controls as before.
class RecordForm {
 public:
  /// All have to outlive the form, which sets the controls up and listens to them. `on_change` is
  /// called after each change by the user: the time to keep a draft, now or soon.
  RecordForm(
      RecordStore& store, QELTextbox& title, QELTextbox& body,
      std::function<void()> on_change = [] {});

  /// The record as it was last loaded or saved.
  const Record& record() const { return record_; }
  /// The markup that stands in the controls.
  std::u16string title() const { return title_.markup(); }
  std::u16string body() const { return body_.markup(); }
  /// Puts texts there, as unsaved work.
  void put_title(std::u16string_view markup);
  void put_body(std::u16string_view markup);
  bool is_changed() const { return title_.is_changed() || body_.is_changed(); }

  // Each of these gives up unsaved work, and its draft: ask `is_changed` first.

  void load(std::int64_t id);
  void new_record();
  /// The record as it is in the store.
  void revert();

  /// Saves what was changed and drops the draft, both or nothing. Nothing happens to a record that
  /// is not changed, but a new one is always saved.
  void save();
  /// The same as a new record, whoever has changed or removed the old one.
  void save_as_new();

  /// Keeps unsaved work, if there is any that was not kept; whether there was.
  bool keep_draft();
  /// Shows a draft of the store as unsaved work on its record, or on a new one where the record is
  /// gone, and goes on with it. Other unsaved work is given up.
  void recover(const Draft& draft);

  bool get_RevealCodes() const { return reveals_codes_; }
  /// Both controls show codes, or neither; the texts stay.
  void put_RevealCodes(bool value);

  /// Gives both controls these fonts and colours; the texts stay.
  void put_tables(const command::Tables& tables);

  /// For a host that listens to the controls itself: what to hand their `Change` on to.
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
