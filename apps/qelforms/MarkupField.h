#pragma once

#include <functional>
#include <string>
#include <string_view>

#include "qel/control/ControlEvents.h"
#include "qel/control/QELTextbox.h"

namespace qel::forms {

/// One text of a record in its control, which is lossless. A text that nobody edits, or whose edits
/// were all taken back, comes back letter for letter.
class MarkupField : public ControlEvents {
 public:
  /// Listens to the control, which has to outlive the field. `on_change` is called after each
  /// change by the user.
  MarkupField(QELTextbox& control, std::function<void()> on_change);
  MarkupField(const MarkupField&) = delete;
  MarkupField& operator=(const MarkupField&) = delete;
  ~MarkupField() override { control_.listen(nullptr); }

  /// The current markup. Line breaks that the user types while codes are revealed become line
  /// codes.
  std::u16string markup() const;
  /// Shows a text that is not saved in the record yet.
  void put_markup(std::u16string_view markup);
  /// Shows the record's saved text, with which later texts are compared.
  void show_saved(std::u16string_view markup);
  /// Takes the current text as the record's saved text.
  void accept_saved();
  /// Whether the text differs from the record's saved text.
  bool is_changed() const { return (touched_ ? markup() : shown_) != saved_; }

  /// Sets whether the control shows codes. The text survives the switch, the selection does not.
  void put_RevealCodes(bool value);
  /// Shows the text again after `change` has changed the control's tables.
  void show_anew(const std::function<void(QELTextbox& control)>& change);

  void Change() override;

 private:
  void show(std::u16string_view markup);

  QELTextbox& control_;
  std::function<void()> on_change_;
  std::u16string saved_;
  std::u16string shown_;
  bool touched_ = false;  // since it was shown
  bool is_showing_ = false;
};

}  // namespace qel::forms
