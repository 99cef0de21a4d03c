#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "qel/headless/ControlSite.h"

namespace qel::test {

/// A form that remembers what its control told it.
class Form : public headless::ControlSite {
 public:
  /// `window` is where boxes lie; 0 for none.
  explicit Form(platform::WindowHandle window = 0) : window_(window) {}

  void property_changed(std::u16string_view name) override { changed.emplace_back(name); }
  bool is_run_time() const override { return runs; }
  void put_enabled(bool value) override { enabled = value; }
  void invalidate() override { ++paints; }
  void focus() override { ++focuses; }
  platform::WindowHandle window() const override { return window_; }
  std::uintptr_t device_context() const override { return 17; }

  std::vector<std::u16string> changed;
  bool runs = true;
  bool enabled = true;
  int paints = 0;
  int focuses = 0;

 private:
  platform::WindowHandle window_;
};

}  // namespace qel::test
