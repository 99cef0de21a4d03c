#include "com/control/HostedControl.h"

#include <qelcom.h>

#include <algorithm>
#include <utility>

#include "com/automation/TypeLibrary.h"
#include "com/control/Extents.h"
#include "com/platform/RichEdit.h"
#include "com/platform/WindowsPlatform.h"
#include "qel/base/Error.h"

namespace qel::com {
namespace {

// What a control takes that no host has given a place.
constexpr SIZEL first_extent = {4233, 635};

COLORREF shown(Color color) {
  return is_system_color(color) ? GetSysColor(system_color_index(color))
                                : static_cast<COLORREF>(color);
}

class Brush {
 public:
  explicit Brush(Color color) : brush_(CreateSolidBrush(shown(color))) {}
  Brush(const Brush&) = delete;
  Brush& operator=(const Brush&) = delete;
  ~Brush() { DeleteObject(brush_); }
  HBRUSH get() const { return brush_; }

 private:
  HBRUSH brush_;
};

}  // namespace

HostedControl::HostedControl(IUnknown& whole, ConnectionContainer& connections)
    : whole_(whole),
      connections_(connections),
      events_(
          whole, connections.events(), [this] { window_.post(); }, [this] { on_text_change(); }),
      natural_extent_(first_extent),
      window_(*this) {
  resize(in_pixels(natural_extent_));
  textbox_ = std::make_unique<QELTextbox>(*this, windows::WindowsPlatform::shared());
  textbox_->listen(&events_);
}

HostedControl::~HostedControl() {
  textbox_->listen(nullptr);
  textbox_.reset();
  select_test_font(nullptr);
}

// The host.

void HostedControl::put_client_site(IOleClientSite* site) {
  client_site_ = Pointer<IOleClientSite>(site);
  if (site == nullptr) {
    deactivate();
    return;
  }
  on_ambient_change(DISPID_AMBIENT_USERMODE);
}

Value HostedControl::ambient(DISPID property) const {
  const Pointer<IDispatch> host = client_site_.as<IDispatch>();
  Value value;
  if (!host) return value;
  DISPPARAMS none = {};
  const HRESULT done = host->Invoke(property, IID_NULL, LOCALE_USER_DEFAULT, DISPATCH_PROPERTYGET,
                                    &none, value.put(), nullptr, nullptr);
  return FAILED(done) ? Value() : value;
}

void HostedControl::on_ambient_change(DISPID property) {
  if (property != DISPID_AMBIENT_USERMODE && property != DISPID_UNKNOWN) return;
  const Value mode = ambient(DISPID_AMBIENT_USERMODE);
  is_run_time_ = mode.type() != VT_BOOL || in_type<bool>(mode);
}

bool HostedControl::may_change(DISPID property) const {
  const auto sinks = connections_.notices().sinks();
  return std::all_of(sinks.begin(), sinks.end(), [property](const Pointer<IUnknown>& sink) {
    return static_cast<IPropertyNotifySink*>(sink.get())->OnRequestEdit(property) != S_FALSE;
  });
}

void HostedControl::notify(DISPID property) {
  for (const Pointer<IUnknown>& sink : connections_.notices().sinks()) {
    static_cast<IPropertyNotifySink*>(sink.get())->OnChanged(property);
  }
}

/// Whatever changes the text changes both properties that say it.
void HostedControl::on_text_change() {
  is_dirty_ = true;
  notify(DISPID_TEXT);
  notify(DISPID_VALUE);
  view_changed();
}

void HostedControl::property_changed(std::u16string_view name) {
  is_dirty_ = true;
  if (connections_.notices().is_empty()) return;
  std::u16string wanted(name);
  auto* text = const_cast<LPOLESTR>(wide(wanted));
  DISPID property = DISPID_UNKNOWN;
  // What a bag keeps without being a property has no number to tell.
  if (SUCCEEDED(ids_of_names(__uuidof(IQELTextbox), &text, 1, &property))) notify(property);
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
  if (!is_in_place()) resize(in_pixels(extent));
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

/// The host decides about the place of a control that lies in it.
void HostedControl::put_extent(platform::ControlExtent extent) {
  const SIZE size = {std::max(extent.width, 0), std::max(extent.height, 0)};
  natural_extent_ = in_himetric(size);
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
  return is_in_place() ? reinterpret_cast<platform::WindowHandle>(handle()) : 0;
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

void HostedControl::view_changed() {
  if (!view_sink_ || (view_aspects_ & DVASPECT_CONTENT) == 0) return;
  const Pointer<IAdviseSink> sink = view_sink_;
  if ((view_flags_ & ADVF_ONLYONCE) != 0) view_sink_ = {};
  sink->OnViewChange(DVASPECT_CONTENT, -1);
}

void HostedControl::on_paint(HDC context) {
  const ControlFrame frame = textbox_->frame();
  const RECT outside = {0, 0, frame.right + 1, frame.bottom + 1};
  FillRect(context, &outside, Brush(textbox_->get_BackColor()).get());
  FrameRect(context, &outside, Brush(frame.color).get());
}

void HostedControl::draw(HDC context, const RECT& bounds) {
  const platform::ControlExtent pixels = extent();
  const int saved = SaveDC(context);
  SetMapMode(context, MM_ANISOTROPIC);
  // The bounds are in the host's units: what is drawn in pixels is laid over them.
  POINT origin = {bounds.left, bounds.top};
  SIZE size = {bounds.right - bounds.left, bounds.bottom - bounds.top};
  LPtoDP(context, &origin, 1);
  SetWindowOrgEx(context, 0, 0, nullptr);
  SetWindowExtEx(context, std::max(pixels.width, 1), std::max(pixels.height, 1), nullptr);
  SetViewportOrgEx(context, origin.x, origin.y, nullptr);
  SetViewportExtEx(context, size.cx, size.cy, nullptr);
  on_paint(context);
  const HWND box = box_window();
  POINT place = {0, 0};
  MapWindowPoints(box, handle(), &place, 1);
  SetWindowOrgEx(context, -place.x, -place.y, nullptr);
  SendMessageW(box, WM_PRINTCLIENT, reinterpret_cast<WPARAM>(context), PRF_CLIENT | PRF_ERASEBKGND);
  RestoreDC(context, saved);
}

void HostedControl::on_system_change() { invalidate(); }

// Activation.

HWND HostedControl::box_window() const {
  return static_cast<const windows::RichEdit&>(*textbox_->CurrentRichTextBox()).window();
}

HRESULT HostedControl::enter_place() {
  const Pointer<IOleInPlaceSite> place = client_site_.as<IOleInPlaceSite>();
  if (!place || place->CanInPlaceActivate() != S_OK) return E_FAIL;
  HWND parent = nullptr;
  RECT position = {};
  RECT clip = {};
  OLEINPLACEFRAMEINFO info = {};
  info.cb = sizeof info;
  Pointer<IOleInPlaceUIWindow> document;
  HRESULT done = place->OnInPlaceActivate();
  if (SUCCEEDED(done)) done = place->GetWindow(&parent);
  if (SUCCEEDED(done)) {
    done = place->GetWindowContext(frame_.put(), document.put(), &position, &clip, &info);
  }
  if (FAILED(done)) return done;
  place_ = place;
  window_.put_parent(parent);
  put_boxes_on(handle());
  put_place(position, clip);
  return S_OK;
}

/// Boxes have windows of their own as long as they can be seen.
void HostedControl::put_boxes_on(HWND window) {
  for (const auto& box : textbox_->boxes()) {
    static_cast<windows::RichEdit&>(*box).put_owner(window);
  }
}

HRESULT HostedControl::activate() {
  if (!is_in_place()) {
    const HRESULT done = enter_place();
    if (FAILED(done)) return done;
    client_site_->ShowObject();
  }
  ShowWindow(handle(), SW_SHOW);
  return S_OK;
}

HRESULT HostedControl::activate_ui() {
  const HRESULT done = activate();
  if (FAILED(done)) return done;
  if (!std::exchange(is_ui_active_, true)) {
    place_->OnUIActivate();
    const Pointer<IOleInPlaceActiveObject> active =
        Pointer<IUnknown>(&whole_).as<IOleInPlaceActiveObject>();
    if (frame_) frame_->SetActiveObject(active.get(), nullptr);
    if (frame_) frame_->SetBorderSpace(nullptr);
  }
  const HWND focused = GetFocus();
  if (focused != handle() && IsChild(handle(), focused) == FALSE) SetFocus(box_window());
  return S_OK;
}

void HostedControl::deactivate_ui() {
  if (!std::exchange(is_ui_active_, false)) return;
  if (frame_) frame_->SetActiveObject(nullptr, nullptr);
  if (place_) place_->OnUIDeactivate(FALSE);
}

void HostedControl::deactivate() {
  if (!is_in_place()) return;
  deactivate_ui();
  put_boxes_on(nullptr);
  window_.put_parent(nullptr);
  frame_ = {};
  const Pointer<IOleInPlaceSite> place = std::exchange(place_, {});
  place->OnInPlaceDeactivate();
}

void HostedControl::put_focus() {
  if (!client_site_ || FAILED(activate_ui())) SetFocus(box_window());
}

void HostedControl::on_focus() { SetFocus(box_window()); }

void HostedControl::on_box_focus(bool gained) {
  if (gained && is_in_place() && !is_ui_active_) activate_ui();
  const Pointer<IOleControlSite> site = client_site_.as<IOleControlSite>();
  if (site) site->OnFocus(gained ? TRUE : FALSE);
}

void HostedControl::on_destroy() {
  put_boxes_on(nullptr);
  SelectObject(window_.context(), test_font_handle_);
  is_ui_active_ = false;
  frame_ = {};
  place_ = {};
}

void HostedControl::on_posted() { whole_.Release(); }

}  // namespace qel::com
