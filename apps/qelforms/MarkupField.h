#pragma once

#include <functional>
#include <string>
#include <string_view>

#include "qel/control/ControlEvents.h"
#include "qel/control/QELTextbox.h"

namespace qel::forms {

/// One text of a record in its control. A text that nobody touches comes back letter for letter,
/// although a box cannot show all that markup says.
class MarkupField : public ControlEvents {
 public:
  /// Listens to the control, which has to outlive the field. `on_change` is called when the user
  /// has changed the text.
  MarkupField(QELTextbox& control, std::function<void()> on_change);
  MarkupField(const MarkupField&) = delete;
  MarkupField& operator=(const MarkupField&) = delete;
  ~MarkupField() override { control_.listen(nullptr); }

  /// The markup as it stands. Line breaks that were typed while codes are revealed are line codes.
  std::u16string markup() const;
  /// Shows a text that the record does not have yet.
  void put_markup(std::u16string_view markup);
  /// Shows the record's text, with which later ones are compared.
  void show_saved(std::u16string_view markup);
  /// What stands here is the record's text now.
  void accept_saved();
  /// Whether the text is another than the record's.
  bool is_changed() const { return touched_ || shown_ != saved_; }

  /// Whether the control shows codes; the text survives the switch, what is selected does not.
  void put_RevealCodes(bool value);
  /// Shows the text anew, after `change` has changed the control's tables.
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
