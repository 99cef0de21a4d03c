#pragma once

#include <ocidl.h>
#include <olectl.h>

#include <string>

#include "com/automation/Values.h"
#include "windows/Colors.h"
#include "windows/Pointer.h"

namespace qel::com {

/// The site's ambient property with this number; empty if it has none.
Value ambient(const Pointer<IOleClientSite>& site, DISPID property);

/// What a host says of the place of its controls.
class Ambients {
 public:
  /// Asks the site anew, which may be null, for that property; `DISPID_UNKNOWN` is all.
  void read(const Pointer<IOleClientSite>& site, DISPID property);

  /// Whether the form runs; true where the host does not say.
  bool is_run_time() const { return is_run_time_; }
  /// Whether the user may do nothing now.
  bool is_ui_dead() const { return is_ui_dead_; }
  /// The host's colours where they are light text on a dark background. Others are left to the
  /// forms that have them: boxes on them are in the system's colours.
  const windows::Scheme& scheme() const { return scheme_; }
  /// What the host calls the control.
  const std::u16string& name() const { return name_; }

 private:
  void read_colors(const Pointer<IOleClientSite>& site);

  bool is_run_time_ = true;
  bool is_ui_dead_ = false;
  windows::Scheme scheme_;
  std::u16string name_;
};

}  // namespace qel::com
