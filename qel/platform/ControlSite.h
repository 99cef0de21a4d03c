#pragma once

#include <cstdint>
#include <string_view>

#include "qel/platform/Platform.h"

namespace qel::platform {

/// Width and height in the control's scale units.
struct ControlExtent {
  std::int32_t width = 0;
  std::int32_t height = 0;

  friend bool operator==(const ControlExtent&, const ControlExtent&) = default;
};

/// A control's place on a host's form: what the control asks of its host.
class ControlSite {
 public:
  ControlSite() = default;
  ControlSite(const ControlSite&) = delete;
  ControlSite& operator=(const ControlSite&) = delete;
  virtual ~ControlSite() = default;

  /// The persisted property of that name has a new value.
  virtual void property_changed(std::u16string_view name) = 0;
  /// Whether the form runs; false while it is being designed.
  virtual bool is_run_time() const = 0;

  /// The control's inner extent.
  virtual ControlExtent extent() const = 0;
  /// Asks for another extent; the host tells the control once it has it (`QELTextbox::Resize`).
  virtual void put_extent(ControlExtent extent) = 0;
  virtual void put_enabled(bool enabled) = 0;
  /// The whole control needs repainting.
  virtual void invalidate() = 0;
  virtual void focus() = 0;
  /// A window of the control's own has opened, in front of which the user can do nothing, or has
  /// closed again.
  virtual void put_modal(bool /*is_open*/) {}

  /// The control's window, on which its boxes lie, and its device context; 0 for none.
  virtual WindowHandle window() const = 0;
  virtual std::uintptr_t device_context() const = 0;
};

}  // namespace qel::platform
