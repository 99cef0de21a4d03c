// The platform of Windows, as a stage: keys come from the system's own input.

#include "conformance/Stage.h"

#include <windows.h>

#include <utility>
#include <vector>

#include "com/platform/RichEdit.h"
#include "qel/embedded/EmbeddedPlatform.h"
#include "qel/platform/Keys.h"

namespace qel::conformance {
namespace {

void handle_messages() {
  MSG message;
  while (PeekMessageW(&message, nullptr, 0, 0, PM_REMOVE) != 0) {
    TranslateMessage(&message);
    DispatchMessageW(&message);
  }
}

class Hand : public EditorHand {
 public:
  explicit Hand(embedded::EditorWindow& window) : window_(window) {}
  void choose(std::u16string_view name) override { window_.choose(name); }
  void press_ok() override { window_.press_ok(); }
  void press_cancel() override { window_.press_cancel(); }
  void close_by_frame() override { window_.close_by_frame(); }
  bool is_open() const override { return window_.is_open(); }

 private:
  embedded::EditorWindow& window_;
};

/// The boxes are those of Windows; the rest is in memory.
class BoxPlatform : public embedded::EmbeddedPlatform {
 public:
  explicit BoxPlatform(HWND window) : window_(window) {}

  std::shared_ptr<platform::RichEdit> create_rich_edit(
      platform::WindowHandle owner) const override {
    return std::make_shared<windows::RichEdit>(reinterpret_cast<HWND>(owner), clipboard());
  }
  std::unique_ptr<platform::EditorWindow> create_editor_window(
      const platform::EditorDescription& description) const override {
    const auto box = create_rich_edit(reinterpret_cast<platform::WindowHandle>(window_));
    return std::make_unique<embedded::EditorWindow>(description, user, box);
  }

  embedded::EditorWindow::User user;

 private:
  HWND window_;
};

/// The keys that are held together with another, and let go afterwards.
std::vector<INPUT> strokes(WORD key, std::int16_t shift, DWORD flags = 0, WORD unit = 0) {
  std::vector<WORD> held;
  if ((shift & keys::ctrl_key) != 0) held.push_back(VK_CONTROL);
  if ((shift & keys::alt_key) != 0) held.push_back(VK_MENU);
  if ((shift & keys::shift_key) != 0) held.push_back(VK_SHIFT);
  std::vector<INPUT> inputs;
  const auto add = [&inputs](WORD code, DWORD how, WORD scan = 0) {
    INPUT input = {};
    input.type = INPUT_KEYBOARD;
    input.ki.wVk = code;
    input.ki.wScan = scan;
    input.ki.dwFlags = how;
    inputs.push_back(input);
  };
  for (const WORD code : held) add(code, 0);
  add(key, flags, unit);
  add(key, flags | KEYEVENTF_KEYUP, unit);
  for (auto code = held.rbegin(); code != held.rend(); ++code) add(*code, KEYEVENTF_KEYUP);
  return inputs;
}

/// The window of all stages: to show one takes a system without window manager long.
HWND form() {
  static const HWND window =
      CreateWindowExW(0, L"STATIC", L"Stage", WS_OVERLAPPEDWINDOW | WS_VISIBLE | WS_CLIPCHILDREN, 0,
                      0, 600, 400, nullptr, nullptr, GetModuleHandleW(nullptr), nullptr);
  return window;
}

class WindowsStage : public Stage {
 public:
  WindowsStage() {
    SetForegroundWindow(window_);
    handle_messages();
  }
  std::shared_ptr<const platform::Platform> platform() const override { return platform_; }
  platform::WindowHandle window() override {
    return reinterpret_cast<platform::WindowHandle>(window_);
  }

  void press(platform::RichEdit& box, std::int16_t key_code, std::int16_t shift) override {
    focus(box);
    const bool is_extended = key_code >= keys::page_up_key && key_code <= keys::delete_key;
    send(strokes(static_cast<WORD>(key_code), shift, is_extended ? KEYEVENTF_EXTENDEDKEY : 0));
  }
  void type(platform::RichEdit& box, std::u16string_view text) override {
    focus(box);
    for (const char16_t c : text) {
      const SHORT key = c == u'\n' ? SHORT{VK_RETURN} : VkKeyScanW(static_cast<wchar_t>(c));
      if (key == -1) {
        send(strokes(0, 0, KEYEVENTF_UNICODE, static_cast<WORD>(c)));
      } else {
        // The system numbers Shift, Ctrl and Alt as the library does.
        send(
            strokes(LOBYTE(key), HIBYTE(key) & (keys::shift_key | keys::ctrl_key | keys::alt_key)));
      }
    }
  }
  void click(platform::RichEdit& box, std::int32_t position, std::int16_t shift) override {
    const LPARAM point = point_of(box, position);
    const std::vector<INPUT> shifted = strokes(VK_SHIFT, keys::no_modifier);
    const bool holds = (shift & keys::shift_key) != 0;
    if (holds) send({shifted.front()});
    const WPARAM held = holds ? MK_SHIFT : 0;
    mouse(box, WM_LBUTTONDOWN, MK_LBUTTON | held, point);
    mouse(box, WM_LBUTTONUP, held, point);
    if (holds) send({shifted.back()});
  }
  void double_click(platform::RichEdit& box, std::int32_t position) override {
    click(box, position, keys::no_modifier);
    const LPARAM point = point_of(box, position);
    mouse(box, WM_LBUTTONDBLCLK, MK_LBUTTON, point);
    mouse(box, WM_LBUTTONUP, 0, point);
  }
  void sweep(platform::RichEdit& box, std::int32_t from, std::int32_t to) override {
    mouse(box, WM_LBUTTONDOWN, MK_LBUTTON, point_of(box, from));
    mouse(box, WM_MOUSEMOVE, MK_LBUTTON, point_of(box, to));
    mouse(box, WM_LBUTTONUP, 0, point_of(box, to));
  }

  void copy_text(std::u16string_view text) override { platform_->clipboard().put_text(text); }
  void copy_rtf(std::u16string_view text, std::u16string_view rtf) override {
    platform_->clipboard().put(text, rtf);
  }

  void at_editor(std::function<void(EditorHand&)> user) override {
    platform_->user = [user = std::move(user)](embedded::EditorWindow& window) {
      Hand hand(window);
      user(hand);
    };
  }

 private:
  static windows::RichEdit& own(platform::RichEdit& box) {
    return static_cast<windows::RichEdit&>(box);
  }
  static void focus(platform::RichEdit& box) { SetFocus(own(box).window()); }
  static void send(std::vector<INPUT> inputs) {
    SendInput(static_cast<UINT>(inputs.size()), inputs.data(), sizeof(INPUT));
    handle_messages();
  }
  static void mouse(platform::RichEdit& box, UINT message, WPARAM parameter, LPARAM point) {
    SendMessageW(own(box).window(), message, parameter, point);
    handle_messages();
  }
  static LPARAM point_of(platform::RichEdit& box, std::int32_t position) {
    const POINT point = own(box).point_of(position);
    return MAKELPARAM(point.x, point.y + 4);
  }

  HWND window_ = form();
  std::shared_ptr<BoxPlatform> platform_ = std::make_shared<BoxPlatform>(window_);
};

}  // namespace

std::unique_ptr<Stage> make_stage() { return std::make_unique<WindowsStage>(); }

}  // namespace qel::conformance
