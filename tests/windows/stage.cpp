// The platform of Windows, as a stage: keys come from the system's own input.

#include "conformance/Stage.h"

#include <windows.h>
#include <windowsx.h>

#include <deque>
#include <functional>
#include <stdexcept>
#include <utility>
#include <vector>

#include "BoxInWindow.h"
#include "qel/platform/Keys.h"
#include "windows/EditorMenu.h"
#include "windows/EditorWindow.h"
#include "windows/GlobalMemory.h"
#include "windows/Modifiers.h"
#include "windows/WindowsPlatform.h"

namespace qel::conformance {
namespace {

void handle_messages() {
  MSG message;
  while (PeekMessageW(&message, nullptr, 0, 0, PM_REMOVE) != 0) {
    TranslateMessage(&message);
    DispatchMessageW(&message);
  }
}

/// Waits for something that the system does in its own time; gives up after far too long.
template <class Condition>
bool comes_true(Condition condition) {
  constexpr DWORD interval = 10;
  const ULONGLONG deadline = GetTickCount64() + 10'000;
  while (!condition() && GetTickCount64() < deadline) {
    MsgWaitForMultipleObjects(0, nullptr, FALSE, interval, QS_ALLINPUT);
    handle_messages();
  }
  return condition();
}

class Hand : public EditorHand {
 public:
  explicit Hand(HWND window) : window_(window) {}
  void choose(std::u16string_view name) override { windows::choose(window_, name); }
  void press_ok() override { press(IDOK); }
  void press_cancel() override { press(IDCANCEL); }
  void close_by_frame() override { SendMessageW(window_, WM_CLOSE, 0, 0); }
  bool is_open() const override { return IsWindowVisible(window_) != FALSE; }

 private:
  void press(int button) { SendMessageW(GetDlgItem(window_, button), BM_CLICK, 0, 0); }

  HWND window_;
};

std::function<void(EditorHand&)> user_of_editor;
constexpr UINT_PTR editor_timer = 1;

/// The editor may not be open yet.
void CALLBACK act_in_editor(HWND window, UINT /*message*/, UINT_PTR timer, DWORD /*time*/) {
  HWND editor = FindWindowW(windows::EditorWindow::class_name, nullptr);
  if (IsWindowVisible(editor) == FALSE) return;
  KillTimer(window, timer);
  Hand hand(editor);
  std::exchange(user_of_editor, nullptr)(hand);
  if (hand.is_open()) hand.close_by_frame();
}

INPUT input_of(WORD key, DWORD flags, WORD unit = 0) {
  INPUT input = {};
  input.type = INPUT_KEYBOARD;
  input.ki.wVk = key;
  input.ki.wScan = unit;
  input.ki.dwFlags = flags;
  return input;
}

/// Presses keys, or releases them where `flags` say so, in the given order.
void send(std::vector<INPUT> keys, DWORD flags = 0) {
  for (INPUT& key : keys) key.ki.dwFlags |= flags;
  SendInput(static_cast<UINT>(keys.size()), keys.data(), sizeof(INPUT));
  handle_messages();
}

std::vector<INPUT> modifiers(std::int16_t shift) {
  std::vector<INPUT> held;
  if ((shift & keys::ctrl_key) != 0) held.push_back(input_of(VK_CONTROL, 0));
  if ((shift & keys::alt_key) != 0) held.push_back(input_of(VK_MENU, 0));
  if ((shift & keys::shift_key) != 0) held.push_back(input_of(VK_SHIFT, 0));
  return held;
}

void send_mouse(DWORD flags) {
  INPUT input = {};
  input.type = INPUT_MOUSE;
  input.mi.dwFlags = flags;
  SendInput(1, &input, sizeof input);
}

void move_pointer(POINT at) {
  SetCursorPos(at.x, at.y);
  send_mouse(MOUSEEVENTF_MOVE);
}

/// What the mouse does next, one move at a time, since the system waits for each in a loop of its
/// own.
std::deque<std::function<void()>> next_moves;

void CALLBACK move_on(HWND window, UINT /*message*/, UINT_PTR timer, DWORD /*time*/) {
  if (next_moves.empty()) {
    KillTimer(window, timer);
    return;
  }
  const std::function<void()> move = std::move(next_moves.front());
  next_moves.pop_front();
  move();
}

/// The window of all stages: showing one takes long on a system without a window manager. It takes
/// the mouse events that no box takes.
HWND form() {
  static const HWND window = CreateWindowExW(
      0, L"STATIC", L"Stage", WS_OVERLAPPEDWINDOW | WS_VISIBLE | WS_CLIPCHILDREN | SS_NOTIFY, 0, 0,
      600, 400, nullptr, nullptr, GetModuleHandleW(nullptr), nullptr);
  return window;
}

class WindowsStage : public Stage {
 public:
  WindowsStage() {
    SetDoubleClickTime(1);  // two drags in a row are no double click
    SetForegroundWindow(window_);
    handle_messages();
  }
  ~WindowsStage() override { KillTimer(window_, editor_timer); }
  std::shared_ptr<const platform::Platform> platform() const override {
    return windows::WindowsPlatform::shared();
  }
  platform::WindowHandle window() override {
    return reinterpret_cast<platform::WindowHandle>(window_);
  }

  void press(platform::RichEdit& box, std::int16_t key_code, std::int16_t shift) override {
    const bool is_extended = key_code >= keys::page_up_key && key_code <= keys::delete_key;
    stroke(box, input_of(static_cast<WORD>(key_code), is_extended ? KEYEVENTF_EXTENDEDKEY : 0),
           shift);
  }
  void type(platform::RichEdit& box, std::u16string_view text) override {
    for (const char16_t c : text) {
      const SHORT key = c == u'\n' ? SHORT{VK_RETURN} : VkKeyScanW(static_cast<wchar_t>(c));
      if (key == -1) {
        stroke(box, input_of(0, KEYEVENTF_UNICODE, static_cast<WORD>(c)), keys::no_modifier);
      } else {
        // The system numbers Shift, Ctrl and Alt as the library does.
        stroke(box, input_of(LOBYTE(key), 0), HIBYTE(key));
      }
    }
  }
  void click(platform::RichEdit& box, std::int32_t position, std::int16_t shift) override {
    const LPARAM point = point_of(box, position);
    const WPARAM held = (shift & keys::shift_key) != 0 ? MK_SHIFT : 0;
    hold(shift);
    mouse(box, WM_LBUTTONDOWN, MK_LBUTTON | held, point);
    mouse(box, WM_LBUTTONUP, held, point);
    let_go();
  }
  void double_click(platform::RichEdit& box, std::int32_t position) override {
    click(box, position, keys::no_modifier);
    const LPARAM point = point_of(box, position);
    mouse(box, WM_LBUTTONDBLCLK, MK_LBUTTON, point);
    mouse(box, WM_LBUTTONUP, 0, point);
  }
  void sweep(platform::RichEdit& box, std::int32_t from, std::int32_t to,
             std::int16_t shift) override {
    const WPARAM held = (shift & keys::shift_key) != 0 ? MK_SHIFT : 0;
    send(modifiers(shift));
    mouse(box, WM_LBUTTONDOWN, MK_LBUTTON | held, point_of(box, from));
    mouse(box, WM_MOUSEMOVE, MK_LBUTTON | held, point_of(box, to));
    mouse(box, WM_LBUTTONUP, held, point_of(box, to));
    send(modifiers(shift), KEYEVENTF_KEYUP);
  }
  void drag(platform::RichEdit& source, const DragPath& path,
            const std::function<void()>& start) override {
    constexpr POINT nowhere = {500, 300};
    const POINT from = start ? nowhere : on_screen(source, source.selection().start);
    const POINT to = on_screen(path.target, path.position);
    const POINT last = path.drops ? to : nowhere;
    std::vector<INPUT> held = modifiers(path.shift);
    const auto hold_and_move = [&] {
      SendInput(static_cast<UINT>(held.size()), held.data(), sizeof(INPUT));
      move_pointer(to);
    };
    next_moves = {hold_and_move, [&] { move_pointer(to); }, [&] { move_pointer(last); },
                  [&] { send_mouse(MOUSEEVENTF_LEFTUP); }};
    const std::size_t whole_way = next_moves.size();
    move_pointer(from);
    send_mouse(MOUSEEVENTF_LEFTDOWN);
    handle_messages();
    constexpr UINT pause = 20;
    SetTimer(window_, 2, pause, move_on);
    if (start) {
      start();
    } else {
      move_pointer({from.x, from.y + GetSystemMetrics(SM_CYDRAG)});
    }
    // Where nothing was dragged, the button comes up where no box is told.
    const bool was_dragged = next_moves.size() < whole_way;
    if (!was_dragged && start) {
      next_moves = {[&] { move_pointer(nowhere); }, [&] { send_mouse(MOUSEEVENTF_LEFTUP); }};
    }
    while (!next_moves.empty()) {
      handle_messages();
      MsgWaitForMultipleObjects(0, nullptr, FALSE, pause, QS_ALLINPUT);
    }
    send(std::move(held), KEYEVENTF_KEYUP);
  }

  void copy_text(std::u16string_view text) override {
    OpenClipboard(window_);
    EmptyClipboard();
    SetClipboardData(CF_UNICODETEXT, windows::block_of(text, CF_UNICODETEXT));
    CloseClipboard();
  }
  void copy_rtf(std::u16string_view text, std::u16string_view rtf) override {
    platform()->clipboard().put(text, rtf);
  }

  void at_editor(std::function<void(EditorHand&)> user) override {
    user_of_editor = [this, user = std::move(user)](EditorHand& hand) {
      let_go();
      user(hand);
    };
    SetTimer(window_, editor_timer, 1, act_in_editor);
  }

 private:
  /// A window that a key opens is closed again before the key comes up.
  void stroke(platform::RichEdit& box, INPUT key, std::int16_t shift) {
    const HWND window = test::window_of(box);
    SetFocus(window);
    const auto is_in_front = [form = GetAncestor(window, GA_ROOT)] {
      return GetForegroundWindow() == form;
    };
    if (!comes_true(is_in_front)) throw std::runtime_error("another window gets the keys");
    hold(shift);
    send({key});
    send({key}, KEYEVENTF_KEYUP);
    let_go();
  }
  void hold(std::int16_t shift) {
    held_ = modifiers(shift);
    send(held_);
    if (comes_true([shift] { return windows::held_modifiers() == shift; })) return;
    let_go();
    throw std::runtime_error("the system took Ctrl, Alt and Shift for others than were sent");
  }
  void let_go() { send(std::exchange(held_, {}), KEYEVENTF_KEYUP); }

  static void mouse(platform::RichEdit& box, UINT message, WPARAM parameter, LPARAM point) {
    SendMessageW(test::window_of(box), message, parameter, point);
    handle_messages();
  }
  static LPARAM point_of(platform::RichEdit& box, std::int32_t position) {
    const POINT point = test::point_of(box, position);
    return MAKELPARAM(point.x, point.y + 4);
  }

  /// The point on the screen of the character there.
  static POINT on_screen(platform::RichEdit& box, std::int32_t position) {
    const LPARAM point = point_of(box, position);
    POINT at = {GET_X_LPARAM(point) + 1, GET_Y_LPARAM(point)};
    ClientToScreen(reinterpret_cast<HWND>(box.window()), &at);
    return at;
  }

  std::vector<INPUT> held_;
  HWND window_ = form();
};

}  // namespace

std::unique_ptr<Stage> make_stage() { return std::make_unique<WindowsStage>(); }

}  // namespace qel::conformance
