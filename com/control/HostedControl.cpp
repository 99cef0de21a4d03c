#include "com/control/HostedControl.h"

#include <qelcom.h>

#include <algorithm>
#include <utility>

#include "com/automation/TypeLibrary.h"
#include "com/control/Extents.h"
#include "com/control/Hold.h"
#include "qel/base/Error.h"
#include "windows/BoxWindow.h"
#include "windows/WindowHandle.h"
#include "windows/WindowsPlatform.h"

namespace qel::com {
namespace {

// The size of a control until a host gives it a place.
constexpr SIZEL first_extent = {4233, 635};

class Brush {
 public:
  explicit Brush(COLORREF color) : brush_(CreateSolidBrush(color)) {}
  Brush(const Brush&) = delete;
  Brush& operator=(const Brush&) = delete;
  ~Brush() { DeleteObject(brush_); }
  HBRUSH get() const { return brush_; }

 private:
  HBRUSH brush_;
};

}  // namespace

HostedControl::HostedControl(IUnknown& whole, IUnknown& own, ConnectionContainer& connections)
    : whole_(whole),
      own_(own),
      connections_(connections),
      events_(whole, connections.events(), release_later_, [this] { on_text_change(); }),
      natural_extent_(first_extent),
      window_(*this) {
  resize(in_pixels(natural_extent_, dpi()));
  textbox_ = std::make_unique<QELTextbox>(*this, windows::WindowsPlatform::shared());
  textbox_->listen(&events_);
}

HostedControl::~HostedControl() {
  if (std::exchange(modal_, 1) > 0) put_modal(false);
  window_.silence();
  textbox_->listen(nullptr);
  textbox_.reset();
  select_test_font(nullptr);
}

// The host.

void HostedControl::put_client_site(IOleClientSite* site) {
  if (site != client_site_.get()) deactivate();
  client_site_ = Pointer<IOleClientSite>(site);
  if (site != nullptr) on_ambient_change(DISPID_UNKNOWN);
}

void HostedControl::on_ambient_change(DISPID property) {
  // The host may take back its site meanwhile.
  const Pointer<IOleClientSite> site = client_site_;
  ambients_.read(site, property);
  if (!is_in_place()) return;
  show_ambients();
  invalidate();
}

void HostedControl::show_ambients() {
  for (const auto& box : textbox_->boxes()) {
    auto* const shown = windows::BoxWindow::of(windows::native_window(box->window()));
    if (shown == nullptr) continue;
    shown->put_scheme(ambients_.scheme());
    shown->put_name(accessible_name_.empty() ? ambients_.name() : accessible_name_);
    shown->put_deaf(ambients_.is_ui_dead());
  }
}

/// Hosts tell their other windows to wait, too: once, whatever is opened from the first.
void HostedControl::put_modal(bool is_open) {
  const int before = std::exchange(modal_, modal_ + (is_open ? 1 : -1));
  if (before != (is_open ? 0 : 1)) return;
  if (is_open && !host_windows_.empty()) {
    modal_frame_ = host_windows_.front().as<IOleInPlaceFrame>();
  }
  const Pointer<IOleInPlaceFrame> frame = is_open ? modal_frame_ : std::exchange(modal_frame_, {});
  if (frame) frame->EnableModeless(is_open ? FALSE : TRUE);
}

bool HostedControl::may_change(DISPID property) const {
  bool may = true;
  connections_.notices().each([&](IUnknown& sink) {
    may = may && static_cast<IPropertyNotifySink&>(sink).OnRequestEdit(property) != S_FALSE;
  });
  return may;
}

void HostedControl::notify(DISPID property) {
  connections_.notices().each(
      [&](IUnknown& sink) { static_cast<IPropertyNotifySink&>(sink).OnChanged(property); });
}

/// A change of the text is a change of both properties that hold it.
void HostedControl::on_text_change() {
  is_dirty_ = true;
  notify(DISPID_TEXT);
  notify(DISPID_VALUE);
  view_changed();
}

void HostedControl::property_changed(std::u16string_view name) {
  is_dirty_ = true;
  if (name == u"Multiline") tell_keys_changed();
  view_changed();
  if (connections_.notices().is_empty()) return;
  std::u16string wanted(name);
  auto* text = const_cast<LPOLESTR>(wide(wanted));
  DISPID property = DISPID_UNKNOWN;
  // A name that the bag keeps but is not a property has no number to report.
  if (SUCCEEDED(ids_of_names(__uuidof(IQELTextbox), &text, 1, &property))) notify(property);
}

/// Tells the host to ask again, since hosts remember whether the control uses Enter.
void HostedControl::tell_keys_changed() const {
  const Pointer<IOleControlSite> site = client_site_.as<IOleControlSite>();
  if (site) site->OnControlInfoChanged();
}

// Size and look.

platform::ControlExtent HostedControl::extent() const {
  RECT inside = {};
  GetClientRect(handle(), &inside);
  return {inside.right, inside.bottom};
}

void HostedControl::resize(SIZE pixels) {
  SetWindowPos(handle(), nullptr, 0, 0, pixels.cx, pixels.cy,
               SWP_NOMOVE | SWP_NOZORDER | SWP_NOACTIVATE);
  if (textbox_) textbox_->Resize();
}

void HostedControl::put_natural_extent(SIZEL extent) {
  natural_extent_ = extent;
  if (!is_in_place()) resize(in_pixels(extent, dpi()));
  view_changed();
}

void HostedControl::put_place(const RECT& place, const RECT& clip) {
  SetWindowPos(handle(), nullptr, place.left, place.top, place.right - place.left,
               place.bottom - place.top, SWP_NOZORDER | SWP_NOACTIVATE);
  RECT seen = {};
  if (IntersectRect(&seen, &place, &clip) != FALSE && EqualRect(&seen, &place) == FALSE) {
    OffsetRect(&seen, -place.left, -place.top);
    SetWindowRgn(handle(), CreateRectRgnIndirect(&seen), TRUE);
  } else {
    SetWindowRgn(handle(), nullptr, TRUE);
  }
  textbox_->Resize();
  InvalidateRect(handle(), nullptr, TRUE);
}

/// The host decides the place of a control that is active in it.
void HostedControl::put_extent(platform::ControlExtent extent) {
  const SIZE size = {std::max(extent.width, 0), std::max(extent.height, 0)};
  natural_extent_ = in_himetric(size, dpi());
  if (!place_) {
    resize(size);
    return;
  }
  RECT place = {};
  GetWindowRect(handle(), &place);
  MapWindowPoints(HWND_DESKTOP, GetParent(handle()), reinterpret_cast<POINT*>(&place), 2);
  place.right = place.left + size.cx;
  place.bottom = place.top + size.cy;
  place_->OnPosRectChange(&place);
}

void HostedControl::put_enabled(bool enabled) { EnableWindow(handle(), enabled ? TRUE : FALSE); }

void HostedControl::invalidate() {
  InvalidateRect(handle(), nullptr, TRUE);
  view_changed();
}

platform::WindowHandle HostedControl::window() const {
  return is_in_place() ? windows::window_handle(handle()) : 0;
}

std::uintptr_t HostedControl::device_context() const {
  return reinterpret_cast<std::uintptr_t>(window_.context());
}

void HostedControl::select_test_font(HFONT font) {
  SelectObject(window_.context(), font == nullptr ? GetStockObject(SYSTEM_FONT) : font);
  if (test_font_handle_ != nullptr) DeleteObject(test_font_handle_);
  test_font_handle_ = font;
}

void HostedControl::put_test_font(std::u16string_view name) {
  LOGFONTW font = {};
  if (name.size() >= std::size(font.lfFaceName)) {
    throw Error(Error::component_base, "QELTextbox", "TestFont: no font has so long a name");
  }
  std::copy(name.begin(), name.end(), font.lfFaceName);
  font.lfCharSet = DEFAULT_CHARSET;
  select_test_font(CreateFontIndirectW(&font));
  test_font_ = name;
}

void HostedControl::put_accessible_name(std::u16string_view name) {
  accessible_name_ = name;
  if (is_in_place()) show_ambients();
  property_changed(u"AccessibleName");
}

void HostedControl::put_view_sink(DWORD aspects, DWORD flags, IAdviseSink* sink) {
  view_aspects_ = aspects;
  view_flags_ = flags;
  view_sink_ = Pointer<IAdviseSink>(sink);
  if ((flags & ADVF_PRIMEFIRST) != 0) view_changed();
}

void HostedControl::view_sink(DWORD* aspects, DWORD* flags, IAdviseSink** sink) const {
  if (aspects != nullptr) *aspects = view_aspects_;
  if (flags != nullptr) *flags = view_flags_;
  if (sink != nullptr) *sink = Pointer<IAdviseSink>(view_sink_).detach();
}

Pointer<IDataAdviseHolder> HostedControl::data_sinks() {
  if (!data_sinks_) CreateDataAdviseHolder(data_sinks_.put());
  return data_sinks_;
}

void HostedControl::view_changed() {
  if (const auto sinks = data_sinks_) {
    sinks->SendOnDataChange(Pointer<IUnknown>(&own_).as<IDataObject>().get(), 0, 0);
  }
  if (!view_sink_ || (view_aspects_ & DVASPECT_CONTENT) == 0) return;
  const Pointer<IAdviseSink> sink = view_sink_;
  if ((view_flags_ & ADVF_ONLYONCE) != 0) view_sink_ = {};
  sink->OnViewChange(DVASPECT_CONTENT, -1);
}

windows::ShownColors HostedControl::colors() const {
  windows::Scheme scheme = ambients_.scheme();
  scheme.has_high_contrast = windows::has_high_contrast();
  return windows::shown_colors(textbox_->get_BackColor(), scheme);
}

void HostedControl::on_paint(HDC context) {
  const ControlFrame frame = textbox_->frame();
  const RECT outside = {0, 0, frame.right + 1, frame.bottom + 1};
  const windows::ShownColors shown = colors();
  const bool is_border = textbox_->get_BorderStyle() == 1;
  FillRect(context, &outside, Brush(shown.background).get());
  FrameRect(context, &outside,
            Brush(is_border ? shown.text_color(frame.color) : shown.background).get());
}

void HostedControl::draw(HDC context, const RECT& bounds) {
  if (GetDeviceCaps(context, TECHNOLOGY) == DT_METAFILE) return draw_picture(context, bounds);
  // The bounds are in the host's units: the pixels of the drawing are scaled to them.
  RECT place = bounds;
  LPtoDP(context, reinterpret_cast<POINT*>(&place), 2);
  const platform::ControlExtent pixels = extent();
  const int saved = SaveDC(context);
  ModifyWorldTransform(context, nullptr, MWT_IDENTITY);
  SetMapMode(context, MM_ANISOTROPIC);
  SetWindowExtEx(context, std::max(pixels.width, 1), std::max(pixels.height, 1), nullptr);
  SetViewportOrgEx(context, place.left, place.top, nullptr);
  SetViewportExtEx(context, place.right - place.left, place.bottom - place.top, nullptr);
  draw_pixels(context);
  RestoreDC(context, saved);
}

void HostedControl::draw_pixels(HDC context) {
  SetWindowOrgEx(context, 0, 0, nullptr);
  on_paint(context);
  show_ambients();
  // Not the large editor's box, which may be the current one.
  const auto& shown = textbox_->boxes()[textbox_->get_Multiline() ? 1 : 0];
  const HWND box = windows::native_window(shown->window());
  POINT place = {0, 0};
  MapWindowPoints(box, handle(), &place, 1);
  SetWindowOrgEx(context, -place.x, -place.y, nullptr);
  SendMessageW(box, WM_PRINTCLIENT, reinterpret_cast<WPARAM>(context), PRF_CLIENT | PRF_ERASEBKGND);
}

/// Old metafiles have neither pixels nor a position on a device.
void HostedControl::draw_picture(HDC context, const RECT& bounds) {
  const platform::ControlExtent pixels = extent();
  const HDC screen = GetDC(nullptr);
  const HDC memory = CreateCompatibleDC(screen);
  const HBITMAP bitmap = CreateCompatibleBitmap(screen, pixels.width, pixels.height);
  const HGDIOBJ before = SelectObject(memory, bitmap);
  draw_pixels(memory);
  SetWindowOrgEx(memory, 0, 0, nullptr);
  StretchBlt(context, bounds.left, bounds.top, bounds.right - bounds.left,
             bounds.bottom - bounds.top, memory, 0, 0, pixels.width, pixels.height, SRCCOPY);
  SelectObject(memory, before);
  DeleteObject(bitmap);
  DeleteDC(memory);
  ReleaseDC(nullptr, screen);
}

/// The host gives the control another place. Hosts on systems that tell only the window on top pass
/// the message on.
void HostedControl::on_dpi_change(WPARAM told) {
  if (told != 0) {
    for (const auto& box : textbox_->boxes()) {
      SendMessageW(windows::native_window(box->window()), WM_DPICHANGED, told, 0);
    }
  }
  if (!is_in_place()) resize(in_pixels(natural_extent_, dpi()));
  invalidate();
}

/// The system tells only the window on top of all others that colours have changed.
void HostedControl::on_system_change() {
  for (const auto& box : textbox_->boxes()) {
    SendMessageW(windows::native_window(box->window()), WM_SYSCOLORCHANGE, 0, 0);
  }
  invalidate();
}

// Activation.

HWND HostedControl::box_window() const {
  return windows::native_window(textbox_->CurrentRichTextBox()->window());
}

HRESULT HostedControl::enter_place() {
  const Pointer<IOleInPlaceSite> place = client_site_.as<IOleInPlaceSite>();
  if (!place || place->CanInPlaceActivate() != S_OK) return E_FAIL;
  HRESULT done = place->OnInPlaceActivate();
  if (FAILED(done)) return done;
  done = lie_on(place);
  if (FAILED(done)) place->OnInPlaceDeactivate();
  return done;
}

/// The host may take back its site or its window during any of these calls.
HRESULT HostedControl::lie_on(const Pointer<IOleInPlaceSite>& place) {
  HWND parent = nullptr;
  RECT position = {};
  RECT clip = {};
  OLEINPLACEFRAMEINFO info = {};
  info.cb = sizeof info;
  Pointer<IOleInPlaceFrame> frame;
  Pointer<IOleInPlaceUIWindow> document;
  HRESULT done = place->GetWindow(&parent);
  if (SUCCEEDED(done)) {
    done = place->GetWindowContext(frame.put(), document.put(), &position, &clip, &info);
  }
  if (FAILED(done)) return done;
  if (IsWindow(parent) == FALSE || client_site_.as<IOleInPlaceSite>() != place) return E_FAIL;
  place_ = place;
  host_windows_.clear();
  if (frame) host_windows_.emplace_back(frame.get());
  if (document) host_windows_.push_back(document);
  window_.put_parent(parent);
  put_boxes_on(handle());
  show_ambients();
  put_place(position, clip);
  return S_OK;
}

/// Puts the boxes on a window, or on none (null) while they cannot be seen.
void HostedControl::put_boxes_on(HWND window) {
  for (const auto& box : textbox_->boxes()) box->put_owner(windows::window_handle(window));
}

HRESULT HostedControl::activate() {
  if (!is_in_place()) {
    const Pointer<IOleClientSite> site = client_site_;
    const HRESULT done = enter_place();
    if (FAILED(done)) return done;
    site->ShowObject();
    if (!is_in_place()) return E_FAIL;
  }
  ShowWindow(handle(), SW_SHOW);
  return S_OK;
}

HRESULT HostedControl::activate_ui() {
  HRESULT done = activate();
  if (FAILED(done)) return done;
  if (!std::exchange(is_ui_active_, true)) {
    const Pointer<IOleInPlaceSite> place = place_;
    done = place->OnUIActivate();
    if (FAILED(done)) is_ui_active_ = false;
    const Pointer<IOleInPlaceActiveObject> active =
        Pointer<IUnknown>(&own_).as<IOleInPlaceActiveObject>();
    if (is_ui_active_) show_active(active.get());
    // The host may have activated another control meanwhile.
    if (!is_ui_active_) return FAILED(done) ? done : E_FAIL;
  }
  const HWND focused = GetFocus();
  if (focused != handle() && IsChild(handle(), focused) == FALSE) SetFocus(box_window());
  return S_OK;
}

/// Null when another object may take the keys.
void HostedControl::show_active(IOleInPlaceActiveObject* active) {
  const auto windows = host_windows_;
  for (const Pointer<IOleInPlaceUIWindow>& window : windows) {
    window->SetActiveObject(active, nullptr);
    if (active != nullptr) window->SetBorderSpace(nullptr);
  }
}

void HostedControl::deactivate_ui() {
  if (!std::exchange(is_ui_active_, false)) return;
  const Pointer<IOleInPlaceSite> place = place_;
  show_active(nullptr);
  if (place) place->OnUIDeactivate(FALSE);
}

void HostedControl::deactivate() {
  if (!is_in_place()) return;
  deactivate_ui();
  const Pointer<IOleInPlaceSite> place = std::exchange(place_, {});
  if (!place) return;
  // Together with its boxes, so that the focus does not move from one to the other.
  window_.put_parent(nullptr);
  put_boxes_on(nullptr);
  host_windows_.clear();
  place->OnInPlaceDeactivate();
}

void HostedControl::put_focus() {
  if (!client_site_ || FAILED(activate_ui())) SetFocus(box_window());
}

void HostedControl::on_focus() {
  if (is_in_place()) SetFocus(box_window());
}

void HostedControl::on_box_focus(bool gained) {
  const Hold hold(whole_, release_later_);
  if (gained && is_in_place() && !is_ui_active_) activate_ui();
  const Pointer<IOleControlSite> site = client_site_.as<IOleControlSite>();
  if (site) site->OnFocus(gained ? TRUE : FALSE);
}

/// There is a new window now, which has to be set up again.
void HostedControl::on_destroy() {
  put_boxes_on(nullptr);
  SelectObject(window_.context(), test_font_handle_);
  is_ui_active_ = false;
  host_windows_.clear();
  place_ = {};
  put_enabled(textbox_->get_Enabled());
  resize(in_pixels(natural_extent_, dpi()));
}

void HostedControl::on_posted() { whole_.Release(); }

}  // namespace qel::com
