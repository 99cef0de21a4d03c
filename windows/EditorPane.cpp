#include "windows/EditorPane.h"

// Needs the types of the other.
#include <commctrl.h>

#include <algorithm>
#include <cwchar>

#include "windows/Dpi.h"
#include "windows/Module.h"
#include "windows/Text.h"

namespace qel::windows {
namespace {

HWND create_part(HWND editor, const wchar_t* kind, const std::u16string& caption, DWORD style,
                 int id) {
  return CreateWindowExW(0, kind, wide(caption), WS_CHILD | WS_TABSTOP | style, 0, 0, 0, 0, editor,
                         reinterpret_cast<HMENU>(static_cast<INT_PTR>(id)), module_handle(),
                         nullptr);
}

/// A text that is only read leaves the keys of dialogs to the window, Tab and Enter among them.
LRESULT CALLBACK pane_procedure(HWND window, UINT message, WPARAM parameter, LPARAM data,
                                UINT_PTR id, DWORD_PTR /*unused*/) {
  switch (message) {
    case WM_GETDLGCODE:
      return DLGC_WANTARROWS | DLGC_HASSETSEL;
    case WM_KEYDOWN:
      if (parameter != 'A' || GetKeyState(VK_CONTROL) >= 0) break;
      SendMessageW(window, EM_SETSEL, 0, -1);
      return 0;
    case WM_NCDESTROY:
      RemoveWindowSubclass(window, pane_procedure, id);
      break;
    default:
      break;
  }
  return DefSubclassProc(window, message, parameter, data);
}

int line_height(HWND window, HFONT font) {
  const HDC context = GetDC(window);
  TEXTMETRICW metrics = {};
  {
    const SelectedFont selected(context, font);
    GetTextMetricsW(context, &metrics);
  }
  ReleaseDC(window, context);
  return metrics.tmHeight;
}

void put(HWND window, const Font& font) {
  SendMessageW(window, WM_SETFONT, reinterpret_cast<WPARAM>(font.handle()), TRUE);
}

}  // namespace

EditorPane::EditorPane(HWND editor, const std::u16string& caption, int id)
    : check_box_(create_part(editor, L"BUTTON", caption, WS_VISIBLE | BS_AUTOCHECKBOX, id)),
      text_(create_part(editor, L"EDIT", {},
                        WS_BORDER | WS_VSCROLL | ES_MULTILINE | ES_READONLY | ES_AUTOVSCROLL,
                        id + 1)) {
  SendMessageW(text_, EM_SETLIMITTEXT, 0, 0);
  SetWindowSubclass(text_, pane_procedure, 1, 0);
}

void EditorPane::put_font(const LOGFONTW& font, int dpi) {
  LOGFONTW fixed = font;
  fixed.lfPitchAndFamily = FIXED_PITCH | FF_MODERN;
  std::wcscpy(fixed.lfFaceName, L"Consolas");
  font_ = Font(font);
  fixed_font_ = Font(fixed);
  put(check_box_, font_);
  put(text_, fixed_font_);
  constexpr int lines = 5;
  constexpr int margin = 8;
  constexpr int around = 4;
  margin_ = scaled(margin, dpi);
  box_height_ = line_height(check_box_, font_.handle()) + scaled(around, dpi);
  text_height_ = lines * line_height(text_, fixed_font_.handle()) + scaled(around, dpi);
}

void EditorPane::place(int top, int width) const {
  const int inner = std::max(width - 2 * margin_, 0);
  MoveWindow(check_box_, margin_, top, inner, box_height_, TRUE);
  MoveWindow(text_, margin_, top + box_height_ + margin_ / 2, inner, text_height_, TRUE);
}

bool EditorPane::is_open() const {
  return SendMessageW(check_box_, BM_GETCHECK, 0, 0) == BST_CHECKED;
}

void EditorPane::follow_check_box() const { ShowWindow(text_, is_open() ? SW_SHOWNA : SW_HIDE); }

void EditorPane::show(const std::u16string& text) {
  // A text that is set anew is shown from its beginning.
  if (text == shown_) return;
  const LRESULT line = SendMessageW(text_, EM_GETFIRSTVISIBLELINE, 0, 0);
  shown_ = text;
  SendMessageW(text_, WM_SETREDRAW, FALSE, 0);
  SetWindowTextW(text_, wide(shown_));
  SendMessageW(text_, EM_LINESCROLL, 0, line);
  SendMessageW(text_, WM_SETREDRAW, TRUE, 0);
  InvalidateRect(text_, nullptr, TRUE);
}

}  // namespace qel::windows
