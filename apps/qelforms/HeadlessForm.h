#pragma once

#include <functional>
#include <memory>

#include "RecordForm.h"
#include "qel/embedded/EmbeddedPlatform.h"
#include "qel/platform/ControlSite.h"

namespace qel::forms {

/// A place for a control in a form that nobody sees.
class HeadlessSite : public platform::ControlSite {
 public:
  void property_changed(std::u16string_view /*name*/) override {}
  bool is_run_time() const override { return true; }
  platform::ControlExtent extent() const override { return extent_; }
  void put_extent(platform::ControlExtent extent) override { extent_ = extent; }
  void put_enabled(bool /*enabled*/) override {}
  void invalidate() override {}
  void focus() override {}
  platform::WindowHandle window() const override { return 0; }
  std::uintptr_t device_context() const override { return 0; }

 private:
  platform::ControlExtent extent_;
};

/// A record form without any window, with controls of its own.
class HeadlessForm {
 public:
  explicit HeadlessForm(
      RecordStore& store, std::function<void()> on_change = [] {});

  RecordForm& form() { return form_; }
  QELTextbox& title_control() { return title_; }
  QELTextbox& body_control() { return body_; }

 private:
  std::shared_ptr<const platform::Platform> platform_;
  HeadlessSite title_site_;
  HeadlessSite body_site_;
  QELTextbox title_;
  QELTextbox body_;
  RecordForm form_;
};

}  // namespace qel::forms
