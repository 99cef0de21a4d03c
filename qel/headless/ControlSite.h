#pragma once

#include <cstdint>
#include <string_view>

#include "qel/platform/ControlSite.h"

namespace qel::headless {

/// A site for a control on no form: it has the extent it was last given, is at run time, and
/// ignores every notice. Hosts override what they care about.
class ControlSite : public platform::ControlSite {
 public:
  explicit ControlSite(platform::ControlExtent extent = {100, 40}) : extent_(extent) {}

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

}  // namespace qel::headless
