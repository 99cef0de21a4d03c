// The large editor's window.

#include <gtest/gtest.h>
#include <windows.h>

#include <functional>
#include <optional>
#include <string>
#include <utility>
#include <vector>

#include "BoxInWindow.h"
#include "windows/EditorWindow.h"
#include "windows/Text.h"
#include "windows/WindowsPlatform.h"

namespace qel::windows {
namespace {

using namespace platform;

std::function<void()> at_message;

void CALLBACK act(HWND /*window*/, UINT /*message*/, UINT_PTR timer, DWORD /*time*/) {
  KillTimer(nullptr, timer);
  std::exchange(at_message, nullptr)();
}

void handle_messages() {
  MSG message = {};
  while (PeekMessageW(&message, nullptr, 0, 0, PM_REMOVE) != 0) {
    TranslateMessage(&message);
    DispatchMessageW(&message);
  }
}

std::u16string text_of(HWND window) {
  std::wstring text(100, L'\0');
  text.resize(static_cast<std::size_t>(GetWindowTextW(window, text.data(), 100)));
  return std::u16string(utf16(text.data(), text.size()));
}

/// A form that records what its window reports, and does only what every form must.
class Form : public EditorListener {
 public:
  void on_activate() override { note("activate"); }
  void on_resize(std::int32_t width, std::int32_t height) override {
    extent = {0, 0, width, height};
    window->lay_out({150, 300, width - 300, height - 900}, {150, height - 450, 1500, 375},
                    {1800, height - 450, 1500, 375});
  }
  void on_ok() override {
    note("ok");
    window->close();
  }
  void on_cancel() override {
    note("cancel");
    window->close();
  }
  void on_close() override { note("close"); }
  void on_command(std::u16string_view name) override {
    note(std::string(name.begin(), name.end()).c_str());
  }

  EditorWindow* window = nullptr;
  std::string told;
  EditorRectangle extent;

 private:
  void note(const char* what) { told.append(told.empty() ? "" : " ").append(what); }
};

EditorDescription description() {
  return {
      u"Caption",
      u"Fine",
      u"Cancel",
      {{u"&Edit", {{u"undo", u"Undo", false}}},
       {u"Fo&rmat", {{u"bold", u"&Bold\tCtrl+B", true}, {}, {u"plain", u"&Plain\tAlt+F10", true}}}},
      u"",
      nullptr,
      false};
}

class WindowsEditor : public testing::Test {
 protected:
  WindowsEditor()
      : owner(CreateWindowExW(0, L"STATIC", L"owner", WS_OVERLAPPEDWINDOW | WS_VISIBLE, 0, 0, 300,
                              200, nullptr, nullptr, nullptr, nullptr)),
        field(CreateWindowExW(0, L"EDIT", L"", WS_CHILD | WS_VISIBLE, 0, 0, 50, 20, owner, nullptr,
                              nullptr, nullptr)) {
    SetActiveWindow(owner);
    handle_messages();
    SetFocus(field);
    window.emplace(description());
    form.window = &*window;
  }
  ~WindowsEditor() override {
    window.reset();
    if (IsWindow(owner) != FALSE) DestroyWindow(owner);
    handle_messages();
  }

  /// Shows the editor and lets a user act in it, then closes it by its frame if it is still open.
  /// Returns what the form was told.
  std::string edit(const std::function<void()>& user) {
    form.told.clear();
    bool has_acted = false;
    at_message = [&] {
      user();
      has_acted = true;
      if (is_open() && !is_quitting) SendMessageW(window->window(), WM_CLOSE, 0, 0);
    };
    SetTimer(nullptr, 0, 1, act);
    window->show_modal(form);
    EXPECT_TRUE(has_acted);
    EXPECT_FALSE(is_open());
    return form.told;
  }

  bool is_open() const {
    return window->window() != nullptr && IsWindowVisible(window->window()) != FALSE;
  }
  HWND button(int id) const { return GetDlgItem(window->window(), id); }
  HWND box() const { return test::window_of(*window->box()); }
  static void press(WORD key) {
    PostMessageW(GetFocus(), WM_KEYDOWN, key, 1);
    PostMessageW(GetFocus(), WM_KEYUP, key, 0xC0000001);
  }

  HWND owner;
  HWND field;
  Form form;
  std::optional<EditorWindow> window;
  bool is_quitting = false;
};

TEST_F(WindowsEditor, KeepsTheUserFromItsOwnerWhileItIsOpen) {
  const HWND other = CreateWindowExW(0, L"STATIC", L"other", WS_POPUP | WS_VISIBLE, 0, 0, 10, 10,
                                     nullptr, nullptr, nullptr, nullptr);
  EnableWindow(other, FALSE);
  SetFocus(field);
  EXPECT_EQ(edit([&] {
              EXPECT_EQ(text_of(window->window()), u"Caption");
              EXPECT_EQ(GetWindow(window->window(), GW_OWNER), owner);
              EXPECT_FALSE(IsWindowEnabled(owner));
              EXPECT_EQ(GetActiveWindow(), window->window());
              EXPECT_EQ(text_of(button(IDOK)), u"Fine");
              SendMessageW(button(IDOK), BM_CLICK, 0, 0);
            }),
            "activate ok");
  EXPECT_TRUE(IsWindowEnabled(owner));
  EXPECT_FALSE(IsWindowEnabled(other)) << "as it was";
  EXPECT_EQ(GetActiveWindow(), owner);
  EXPECT_EQ(GetFocus(), field);
  EXPECT_EQ(edit([&] { SendMessageW(button(IDCANCEL), BM_CLICK, 0, 0); }), "activate cancel");
  EXPECT_EQ(edit([] {}), "activate close");
  DestroyWindow(other);
}

TEST_F(WindowsEditor, IsWorkedByKeys) {
  std::function<void()> step;
  const auto later = [](std::function<void()> next) {
    at_message = std::move(next);
    SetTimer(nullptr, 0, 20, act);
  };
  struct Row {
    std::vector<WORD> keys;
    const char* told;
  };
  for (const Row& row :
       {Row{{VK_ESCAPE}, "activate cancel"}, Row{{VK_TAB, VK_RETURN}, "activate ok"},
        Row{{VK_TAB, VK_TAB, VK_SPACE}, "activate cancel"},
        Row{{VK_TAB, VK_ESCAPE}, "activate cancel"}}) {
    form.told.clear();
    std::size_t next = 0;
    step = [&] {
      if (next == row.keys.size() || !is_open()) {
        if (is_open()) SendMessageW(window->window(), WM_CLOSE, 0, 0);
        return;
      }
      press(row.keys[next++]);
      later(step);
    };
    later([&] {
      window->focus_box();
      EXPECT_EQ(GetFocus(), box());
      step();
    });
    window->show_modal(form);
    EXPECT_EQ(form.told, row.told) << row.keys.size();
    while (at_message) handle_messages();
  }
}

TEST_F(WindowsEditor, LaysOutItsPartsInTwips) {
  const Screen screen = WindowsPlatform::shared()->screen();
  window->put_extent(6000, 4500);
  edit([&] {
    EXPECT_EQ(form.extent, (EditorRectangle{0, 0, 6000, 4500}));
    for (const SIZE size : {SIZE{500, 400}, SIZE{200, 150}, SIZE{900, 700}}) {
      SetWindowPos(window->window(), nullptr, 0, 0, size.cx, size.cy, SWP_NOMOVE | SWP_NOZORDER);
      RECT inner = {};
      GetClientRect(window->window(), &inner);
      EXPECT_EQ(form.extent.width, inner.right * screen.twips_per_pixel_x);
      EXPECT_EQ(form.extent.height, inner.bottom * screen.twips_per_pixel_y);
      EXPECT_EQ(window->box()->appearance().width, inner.right - 300 / screen.twips_per_pixel_x);
      RECT place = {};
      GetWindowRect(button(IDOK), &place);
      MapWindowPoints(nullptr, window->window(), reinterpret_cast<POINT*>(&place), 2);
      EXPECT_EQ(place.left, 150 / screen.twips_per_pixel_x);
      EXPECT_EQ(place.right - place.left, 1500 / screen.twips_per_pixel_x);
      EXPECT_EQ(inner.bottom - place.top, 450 / screen.twips_per_pixel_y);
    }
    form.told.clear();
    ShowWindow(window->window(), SW_MINIMIZE);
    EXPECT_GT(form.extent.width, 0) << "an icon is no extent";
  });
}

TEST_F(WindowsEditor, GivesTheFocusBackToThePartThatHadIt) {
  edit([&] {
    SetFocus(button(IDCANCEL));
    const HWND other = CreateWindowExW(0, L"STATIC", L"other", WS_POPUP | WS_VISIBLE, 0, 0, 10, 10,
                                       nullptr, nullptr, nullptr, nullptr);
    SetActiveWindow(other);
    EXPECT_NE(GetFocus(), button(IDCANCEL));
    SetActiveWindow(window->window());
    EXPECT_EQ(GetFocus(), button(IDCANCEL));
    DestroyWindow(other);
  });
}

TEST_F(WindowsEditor, GoesWithItsOwner) {
  const auto box = window->box();
  box->put_Text(u"kept");
  EXPECT_EQ(edit([&] { DestroyWindow(owner); }), "activate close");
  EXPECT_EQ(window->window(), nullptr);
  EXPECT_EQ(box->get_Text(), u"kept");
  box->put_Text(u"still there");
  window->focus_box();
  window->close();
  window->show_modal(form);
  window->lay_out({}, {}, {});
  window.reset();
  EXPECT_EQ(box->get_Text(), u"still there");
}

TEST_F(WindowsEditor, EndsWithTheProgram) {
  EXPECT_EQ(edit([&] {
              PostQuitMessage(7);
              is_quitting = true;
            }),
            "activate close");
  MSG message = {};
  ASSERT_TRUE(PeekMessageW(&message, nullptr, WM_QUIT, WM_QUIT, PM_REMOVE));
  EXPECT_EQ(message.wParam, 7U) << "the program's own loop hears of it";
  EXPECT_TRUE(IsWindowEnabled(owner));
}

}  // namespace
}  // namespace qel::windows
