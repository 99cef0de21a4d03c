// The large editor's window.

#include <gtest/gtest.h>
#include <windows.h>
// Need the types of the other.
#include <commctrl.h>
#include <richedit.h>

#include <array>
#include <deque>
#include <functional>
#include <optional>
#include <string>
#include <utility>
#include <vector>

#include "BoxInWindow.h"
#include "qel/control/QELTextbox.h"
#include "support/Form.h"
#include "windows/Dpi.h"
#include "windows/EditorWindow.h"
#include "windows/Text.h"
#include "windows/WindowHandle.h"
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
    const auto dpi = static_cast<WORD>(2 * dpi_of_screen());
    const RECT place = {0, 0, 400, 300};
    SendMessageW(window->window(), WM_DPICHANGED, MAKEWPARAM(dpi, dpi),
                 reinterpret_cast<LPARAM>(&place));
    window->put_extent(4500, 3000);
    EXPECT_EQ(form.extent, (EditorRectangle{0, 0, 4500, 3000})) << "at any resolution";
    form.told.clear();
    ShowWindow(window->window(), SW_MINIMIZE);
    EXPECT_GT(form.extent.width, 0) << "an icon is no extent";
  });
}

TEST_F(WindowsEditor, TellsItsBoxThatColorsHaveChanged) {
  const INT element = COLOR_WINDOW;
  const COLORREF usual = GetSysColor(element);
  const COLORREF black = 0;
  SetSysColors(1, &element, &black);
  SendMessageW(window->window(), WM_SYSCOLORCHANGE, 0, 0);
  const LRESULT shown = SendMessageW(test::window_of(*window->box()), EM_SETBKGNDCOLOR, 0, 0);
  SetSysColors(1, &element, &usual);
  EXPECT_EQ(static_cast<COLORREF>(shown), black);
}

/// The large editor of a text box.
class WindowsLargeEditor : public testing::Test {
 protected:
  WindowsLargeEditor() {
    control.put_Lossless(true);
    control.Resize();
    control.put_TextQEL(u"a/b1bold/b0 and /i1italic/i0");
  }
  ~WindowsLargeEditor() override { DestroyWindow(owner); }

  /// Opens the editor for a user, who does these things one after the other and then closes it.
  void edit(std::deque<std::function<void()>> steps) {
    std::function<void()> next = [&] {
      if (!steps.empty()) std::exchange(steps.front(), nullptr)();
      const bool is_over = steps.size() <= 1;
      if (!steps.empty()) steps.pop_front();
      if (is_over) {
        SendMessageW(editor(), WM_CLOSE, 0, 0);
      } else {
        at_message = next;
        SetTimer(nullptr, 0, 50, act);
      }
    };
    at_message = next;
    SetTimer(nullptr, 0, 50, act);
    control.InvokeLargeEditor();
    EXPECT_TRUE(steps.empty());
  }

  static HWND editor() { return FindWindowW(EditorWindow::class_name, nullptr); }
  static HWND part(const wchar_t* kind, const wchar_t* caption = nullptr) {
    return FindWindowExW(editor(), nullptr, kind, caption);
  }
  static HWND bar() { return part(TOOLBARCLASSNAMEW); }
  RichEdit& box() { return *control.CurrentRichTextBox(); }
  static std::function<void()> press(WORD key) {
    return [key] {
      PostMessageW(GetFocus(), WM_KEYDOWN, key, 1);
      PostMessageW(GetFocus(), WM_KEYUP, key, 0xC0000001);
    };
  }
  static TBBUTTON button(int place) {
    TBBUTTON button = {};
    SendMessageW(bar(), TB_GETBUTTON, static_cast<WPARAM>(place),
                 reinterpret_cast<LPARAM>(&button));
    return button;
  }
  static std::string caption(const TBBUTTON& button) {
    std::array<char, 100> text = {};
    SendMessageA(bar(), TB_GETBUTTONTEXTA, static_cast<WPARAM>(button.idCommand),
                 reinterpret_cast<LPARAM>(text.data()));
    return text.data();
  }
  static int button_count() { return static_cast<int>(SendMessageW(bar(), TB_BUTTONCOUNT, 0, 0)); }
  /// The buttons' captions, with "*" where one is on, and in brackets where it cannot be chosen.
  static std::string buttons() {
    std::string all;
    for (int i = 0; i < button_count(); ++i) {
      const TBBUTTON shown = button(i);
      if ((shown.fsStyle & BTNS_SEP) != 0) continue;
      std::string name = caption(shown);
      if ((shown.fsState & TBSTATE_CHECKED) != 0) name += "*";
      if ((shown.fsState & TBSTATE_ENABLED) == 0) name = "(" + name + ")";
      all += (all.empty() ? "" : ", ") + name;
    }
    return all;
  }
  static LPARAM place_of(std::string_view name) {
    RECT place = {};
    for (int i = 0; i < button_count(); ++i) {
      if (caption(button(i)) != name) continue;
      SendMessageW(bar(), TB_GETITEMRECT, static_cast<WPARAM>(i), reinterpret_cast<LPARAM>(&place));
    }
    return MAKELPARAM(place.left + 5, place.top + 5);
  }
  static void click(std::string_view name) {
    SendMessageW(bar(), WM_LBUTTONDOWN, MK_LBUTTON, place_of(name));
    SendMessageW(bar(), WM_LBUTTONUP, 0, place_of(name));
  }

  HWND owner = CreateWindowExW(0, L"STATIC", L"", WS_OVERLAPPEDWINDOW | WS_VISIBLE, 0, 0, 300, 200,
                               nullptr, nullptr, nullptr, nullptr);
  test::Form form{window_handle(owner)};
  QELTextbox control{form, WindowsPlatform::shared()};
};

TEST_F(WindowsLargeEditor, FormatsByItsBar) {
  static constexpr const char* rest =
      "Strikeout, Superscript, Subscript, Small Capitals, Plain, Copy Format";
  const auto shows = [](const std::string& begin) { EXPECT_EQ(buttons(), begin + rest); };
  edit({[&] {
          box().select({2, 2});
        },
        [&] {
          shows("(Undo), (Redo), Font, Colour, Bold*, Italic, Underline, ");
          click("Italic");
          EXPECT_EQ(GetFocus(), test::window_of(box()));
        },
        [&] {
          shows("Undo, (Redo), Font, Colour, Bold*, Italic*, Underline, ");
          EXPECT_EQ(control.get_TextQEL(), u"a/b1b/i1ol/i0d/b0 and /i1italic/i0");
        },
        press(VK_F6),
        [&] {
          EXPECT_EQ(GetFocus(), bar());
          EXPECT_EQ(SendMessageW(bar(), TB_GETHOTITEM, 0, 0), 0);
        },
        press(VK_END), press(VK_LEFT), press(VK_RETURN), press(VK_ESCAPE),
        [&] {
          EXPECT_EQ(GetFocus(), test::window_of(box()));
          EXPECT_EQ(control.get_TextQEL(), u"a/b1b/b0ol/b1d/b0 and /i1italic/i0");
          box().select({12, 1});
          click("Copy Format");
          box().select({0, 1});
        },
        press(VK_SHIFT),
        [&] {
          shows("Undo, (Redo), Font, Colour, Bold, Italic*, Underline, ");
          EXPECT_EQ(control.get_TextQEL(), u"/i1a/i0/b1b/b0ol/b1d/b0 and /i1italic/i0");
          PostMessageW(bar(), WM_LBUTTONDOWN, MK_LBUTTON, place_of("Colour"));
        },
        [] {
          EXPECT_TRUE(IsWindowVisible(FindWindowW(L"#32768", nullptr))) << "a menu";
          EndMenu();
        }});
  control.put_Lossless(false);
  edit({[&] { EXPECT_EQ(bar(), nullptr); }});
}

TEST_F(WindowsLargeEditor, ShowsTheMarkupInAPane) {
  LONG height = 0;
  std::u16string shown;
  edit({[&] {
          height = box().appearance().height;
          EXPECT_FALSE(IsWindowVisible(part(L"EDIT")));
          SendMessageW(part(L"BUTTON", L"Markup"), BM_CLICK, 0, 0);
          EXPECT_TRUE(IsWindowVisible(part(L"EDIT")));
          EXPECT_EQ(text_of(part(L"EDIT")), u"a/b1bold/b0 and /i1italic/i0");
          EXPECT_EQ(box().appearance().height, height) << "the window grows";
          box().put_SelText(u"x");
          EXPECT_EQ(text_of(part(L"EDIT")).front(), u'a') << "not at once";
        },
        [] { Sleep(400); }, [] {}, [&] { shown = text_of(part(L"EDIT")); },
        [] { SetFocus(part(L"EDIT")); }, press(VK_TAB),
        [&] { EXPECT_EQ(GetFocus(), test::window_of(box())); }});
  EXPECT_EQ(shown, u"xa/b1bold/b0 and /i1italic/i0");
}

TEST_F(WindowsLargeEditor, GrowsWithTheResolution) {
  edit({[&] {
    const auto top = [&] { return box().appearance().top; };
    const LONG before = top();
    RECT ok = {};
    GetWindowRect(GetDlgItem(editor(), IDOK), &ok);
    const RECT place = {0, 0, 700, 600};
    const auto dpi = static_cast<WORD>(2 * dpi_of_screen());
    SendMessageW(editor(), WM_DPICHANGED, MAKEWPARAM(dpi, dpi), reinterpret_cast<LPARAM>(&place));
    EXPECT_EQ(top(), 2 * before);
    RECT large = {};
    GetWindowRect(GetDlgItem(editor(), IDOK), &large);
    EXPECT_EQ(large.bottom - large.top, 2 * (ok.bottom - ok.top));
    GetWindowRect(editor(), &large);
    EXPECT_EQ(large.bottom, place.bottom);
    RECT last = {};
    SendMessageW(bar(), TB_GETITEMRECT, static_cast<WPARAM>(button_count() - 1),
                 reinterpret_cast<LPARAM>(&last));
    EXPECT_GT(large.right, last.right) << "there is room for all buttons";
  }});
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
