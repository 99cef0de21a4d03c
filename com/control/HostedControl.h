#pragma once

#include <ocidl.h>
#include <olectl.h>

#include <functional>
#include <memory>
#include <string_view>
#include <vector>

#include "com/control/Ambients.h"
#include "com/control/ConnectionContainer.h"
#include "com/control/ControlWindow.h"
#include "com/control/EventSource.h"
#include "qel/control/QELTextbox.h"
#include "windows/Dpi.h"

namespace qel::com {

/// A text box in a host: its place there, its window, and its notices to the host. The parts of the
/// component that hosts call (`Embedding`, `Active`, ...) work on this.
class HostedControl final : public platform::ControlSite, private WindowClient {
 public:
  /// `whole` is the object that hosts hold, and `own` the one of which this is a member: the same,
  /// or a part of the first.
  HostedControl(IUnknown& whole, IUnknown& own, ConnectionContainer& connections);
  HostedControl(const HostedControl&) = delete;
  HostedControl& operator=(const HostedControl&) = delete;
  ~HostedControl() override;

  QELTextbox& textbox() { return *textbox_; }
  HWND handle() const { return window_.handle(); }

  // The host.
  IOleClientSite* client_site() const { return client_site_.get(); }
  void put_client_site(IOleClientSite* site);
  const Ambients& ambients() const { return ambients_; }
  void on_ambient_change(DISPID property);
  void freeze_events(bool frozen) { events_.freeze(frozen); }
  void put_trust(bool trusts) { events_.put_trust(trusts); }

  // What is kept.
  bool is_dirty() const { return is_dirty_; }
  void put_dirty(bool dirty) { is_dirty_ = dirty; }
  /// Whether all hosts agree that a bound property may change.
  bool may_change(DISPID property) const;

  // Size and look.
  SIZEL natural_extent() const { return natural_extent_; }
  int dpi() const { return windows::dpi_of(handle()); }
  /// In hundredths of a millimetre.
  void put_natural_extent(SIZEL extent);
  /// In pixels of the parent window.
  void put_place(const RECT& place, const RECT& clip);
  void put_view_sink(DWORD aspects, DWORD flags, IAdviseSink* sink);
  void view_sink(DWORD* aspects, DWORD* flags, IAdviseSink** sink) const;
  /// Those who are told of new data, made when it is first asked for; null when memory runs out.
  Pointer<IDataAdviseHolder> data_sinks();
  /// Draws the control within `bounds`, which are in units of the context.
  void draw(HDC context, const RECT& bounds);

  /// The font that is selected in the control's device context, to measure with.
  const std::u16string& test_font() const { return test_font_; }
  /// Raises for a name that no font can have.
  void put_test_font(std::u16string_view name);

  /// What programs for those who cannot see it call the box: the host's name for the control
  /// unless one is set.
  const std::u16string& accessible_name() const { return accessible_name_; }
  void put_accessible_name(std::u16string_view name);

  // Activation.
  bool is_in_place() const { return static_cast<bool>(place_); }
  HRESULT activate();
  HRESULT activate_ui();
  void deactivate();
  void deactivate_ui();
  void put_focus();
  /// The window with the caret.
  HWND box_window() const;

  // platform::ControlSite
  void property_changed(std::u16string_view name) override;
  bool is_run_time() const override { return ambients_.is_run_time(); }
  platform::ControlExtent extent() const override;
  void put_extent(platform::ControlExtent extent) override;
  void put_enabled(bool enabled) override;
  void invalidate() override;
  void put_modal(bool is_open) override;
  void focus() override { put_focus(); }
  platform::WindowHandle window() const override;
  std::uintptr_t device_context() const override;

 private:
  void on_paint(HDC context) override;
  void on_focus() override;
  void on_box_focus(bool gained) override;
  void on_system_change() override;
  void on_dpi_change(WPARAM told) override;
  void on_destroy() override;
  void on_posted() override;

  void on_text_change();
  void tell_keys_changed() const;
  void draw_pixels(HDC context);
  void draw_picture(HDC context, const RECT& bounds);
  void notify(DISPID property);
  void view_changed();
  void select_test_font(HFONT font);
  void resize(SIZE pixels);
  HRESULT enter_place();
  HRESULT lie_on(const Pointer<IOleInPlaceSite>& place);
  void show_active(IOleInPlaceActiveObject* active);
  void put_boxes_on(HWND window);
  void show_ambients();
  windows::ShownColors colors() const;

  IUnknown& whole_;
  IUnknown& own_;
  ConnectionContainer& connections_;
  const std::function<void()> release_later_ = [this] { window_.post(); };
  EventSource events_;
  Pointer<IOleClientSite> client_site_;
  Ambients ambients_;
  Pointer<IOleInPlaceSite> place_;  // while the control is active in place
  // Windows of the host that offer their keys to the active control.
  std::vector<Pointer<IOleInPlaceUIWindow>> host_windows_;
  Pointer<IOleInPlaceFrame> modal_frame_;  // while its modeless windows are disabled
  int modal_ = 0;                          // how many windows wait for an answer
  Pointer<IDataAdviseHolder> data_sinks_;
  Pointer<IAdviseSink> view_sink_;
  DWORD view_aspects_ = 0;
  DWORD view_flags_ = 0;
  SIZEL natural_extent_;
  bool is_dirty_ = false;
  bool is_ui_active_ = false;
  ControlWindow window_;
  std::u16string accessible_name_;
  std::u16string test_font_;
  HFONT test_font_handle_ = nullptr;
  std::unique_ptr<QELTextbox> textbox_;
};

}  // namespace qel::com
