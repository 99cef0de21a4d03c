#include "MarkupField.h"

#include <utility>

#include "Markup.h"

namespace qel::forms {

MarkupField::MarkupField(QELTextbox& control, std::function<void()> on_change)
    : control_(control), on_change_(std::move(on_change)) {
  control_.put_Lossless(true);
  control_.listen(this);
}

std::u16string MarkupField::markup() const {
  if (!touched_) return shown_;
  return control_.get_RevealCodes() ? with_line_codes(control_.get_TextQEL())
                                    : control_.get_TextQEL();
}

void MarkupField::show(std::u16string_view markup) {
  shown_ = markup;
  touched_ = false;
  is_showing_ = true;
  try {
    control_.put_TextQEL(shown_);
    // An emptied box would go on in the format of the text before.
    if (shown_.empty()) control_.SelPlain();
  } catch (...) {
    is_showing_ = false;
    throw;
  }
  is_showing_ = false;
}

void MarkupField::put_markup(std::u16string_view markup) { show(markup); }

void MarkupField::show_saved(std::u16string_view markup) {
  show(markup);
  saved_ = shown_;
}

void MarkupField::accept_saved() {
  saved_ = shown_ = markup();
  touched_ = false;
}

void MarkupField::put_RevealCodes(bool value) {
  if (value == control_.get_RevealCodes()) return;
  show_anew([value](QELTextbox& control) { control.put_RevealCodes(value); });
}

void MarkupField::show_anew(const std::function<void(QELTextbox& control)>& change) {
  const std::u16string text = markup();
  change(control_);
  show(text);
}

void MarkupField::Change() {
  if (is_showing_) return;
  touched_ = true;
  on_change_();
}

}  // namespace qel::forms
