#include "RecordForm.h"

#include <utility>

#include "FormTables.h"

namespace qel::forms {

RecordForm::RecordForm(RecordStore& store, QELTextbox& title, QELTextbox& body,
                       std::function<void()> on_change)
    : store_(store),
      on_change_([this, tell = std::move(on_change)] {
        has_unkept_work_ = true;
        tell();
      }),
      title_(title, on_change_),
      body_(body, on_change_) {
  title.put_Multiline(false);
  body.put_Multiline(true);
  put_tables(load_tables(store_));
  show({});
}

void RecordForm::put_title(std::u16string_view markup) {
  title_.put_markup(markup);
  on_change_();
}

void RecordForm::put_body(std::u16string_view markup) {
  body_.put_markup(markup);
  on_change_();
}

void RecordForm::show(Record record) {
  record_ = std::move(record);
  title_.show_saved(record_.title);
  body_.show_saved(record_.body);
  has_unkept_work_ = false;
}

void RecordForm::give_up_draft() {
  if (draft_id_ != 0) store_.drop_draft(draft_id_);
  draft_id_ = 0;
}

void RecordForm::load(std::int64_t id) {
  Record record = store_.load(id);
  give_up_draft();
  show(std::move(record));
}

void RecordForm::new_record() {
  give_up_draft();
  show({});
}

void RecordForm::revert() {
  if (record_.id == 0) return new_record();
  load(record_.id);
}

void RecordForm::save() {
  if (record_.id != 0 && !is_changed()) return give_up_draft();
  save_record(record_);
}

void RecordForm::save_as_new() { save_record({}); }

void RecordForm::save_record(Record record) {
  record.title = title_.markup();
  record.body = body_.markup();
  store_.together([&] {
    store_.save(record);
    if (draft_id_ != 0) store_.drop_draft(draft_id_);
  });
  draft_id_ = 0;
  has_unkept_work_ = false;
  record_ = std::move(record);
  title_.accept_saved();
  body_.accept_saved();
}

bool RecordForm::keep_draft() {
  if (!has_unkept_work_ || !is_changed()) return false;
  Draft draft;
  draft.id = draft_id_;
  draft.record_id = record_.id;
  draft.revision = record_.revision;
  draft.title = title_.markup();
  draft.body = body_.markup();
  store_.keep_draft(draft);
  draft_id_ = draft.id;
  has_unkept_work_ = false;
  return true;
}

void RecordForm::recover(const Draft& draft) {
  const bool has_record = draft.record_id != 0 && draft.basis != Draft::Basis::removed;
  Record record = has_record ? store_.load(draft.record_id) : Record();
  if (draft.id != draft_id_) give_up_draft();
  show(std::move(record));
  draft_id_ = draft.id;
  title_.put_markup(draft.title);
  body_.put_markup(draft.body);
}

void RecordForm::put_RevealCodes(bool value) {
  reveals_codes_ = value;
  title_.put_RevealCodes(value);
  body_.put_RevealCodes(value);
}

void RecordForm::put_tables(const command::Tables& tables) {
  const auto take_over = [&tables](QELTextbox& control) {
    control.get_Fonts()->CopyFrom(tables.fonts);
    // A new font applies to all text in the control, so the text must have been read before.
    control.put_FontName(tables.fonts.get_DefaultFont());
    control.put_FontSize(tables.fonts.get_FontSize());
    QELIndexColors& colors = *control.get_Colors();
    colors.CopyFrom(*tables.colors);
    // Copying leaves the RTF colour table as it was; setting a colour rebuilds it.
    colors.put_DefaultColor(colors.get_DefaultColor());
  };
  title_.show_anew(take_over);
  body_.show_anew(take_over);
}

}  // namespace qel::forms
