#pragma once

#include <functional>
#include <memory>

#include "RecordForm.h"
#include "qel/headless/ControlSite.h"
#include "qel/headless/HeadlessPlatform.h"

namespace qel::forms {

/// A record form without a window, with controls of its own.
class HeadlessForm {
 public:
  explicit HeadlessForm(
      RecordStore& store, std::function<void()> on_change = [] {});

  RecordForm& form() { return form_; }
  QELTextbox& title_control() { return title_; }
  QELTextbox& body_control() { return body_; }

 private:
  std::shared_ptr<const platform::Platform> platform_;
  headless::ControlSite title_site_;
  headless::ControlSite body_site_;
  QELTextbox title_;
  QELTextbox body_;
  RecordForm form_;
};

}  // namespace qel::forms
