// The platform of Windows: what it says of the system, the clipboard, and drawing.

#include <gtest/gtest.h>
#include <windows.h>

#include <array>
#include <cstring>
#include <string>
#include <thread>

#include "qel/base/Error.h"
#include "support/Text.h"
#include "windows/DeviceCanvas.h"
#include "windows/GlobalMemory.h"
#include "windows/Text.h"
#include "windows/VisualStyles.h"
#include "windows/WindowsPlatform.h"

namespace qel::windows {
namespace {

using namespace platform;

const WindowsPlatform& windows_platform() { return *WindowsPlatform::shared(); }

TEST(WindowsPlatform, MissesVisualStylesOnlyWithoutTheirLibrary) {
  EXPECT_NO_THROW(windows_platform().visual_styles().color_scheme());
  for (const wchar_t* library : {L"no such library.dll", L"gdi32.dll"}) {
    EXPECT_THROW(VisualStyles(library).color_scheme(), Error);
  }
}

TEST(WindowsPlatform, KnowsTheScreen) {
  RECT desktop = {};
  GetWindowRect(GetDesktopWindow(), &desktop);
  EXPECT_EQ(windows_platform().screen().width, desktop.right);
  EXPECT_EQ(windows_platform().screen().height, desktop.bottom);
}

TEST(WindowsPlatform, TellsSymbolFontsFromOthers) {
  const auto surface = windows_platform().create_measuring_surface();
  std::array<wchar_t, LF_FACESIZE> selected = {};
  for (const wchar_t* face : {L"Symbol", L"No font of that name", L"Arial"}) {
    surface->put_TestFont(utf16(face));
    GetTextFaceW(reinterpret_cast<HDC>(surface->get_hDC()), LF_FACESIZE, selected.data());
    // Where a font is missing, another one takes its place: Symbol, OpenSymbol or Arial, say.
    const bool is_symbol = std::wstring_view(selected.data()).ends_with(L"Symbol");
    EXPECT_EQ(surface->test_font_character_set(),
              is_symbol ? CharacterSet::symbol : CharacterSet::ansi)
        << test::shown(utf16(selected.data()));
  }
  EXPECT_STREQ(selected.data(), L"Arial");
  EXPECT_THROW(surface->put_TestFont(test::repeated(u"x", 32)), Error);
}

// The clipboard.

/// Puts exactly these bytes on the clipboard, with no NUL after them.
void put_bytes(UINT format, std::string_view bytes) {
  const HGLOBAL block = GlobalAlloc(GMEM_MOVEABLE, bytes.size());
  std::memcpy(GlobalLock(block), bytes.data(), bytes.size());
  GlobalUnlock(block);
  const HWND owner = CreateWindowExW(0, L"STATIC", nullptr, 0, 0, 0, 0, 0, HWND_MESSAGE, nullptr,
                                     nullptr, nullptr);
  ASSERT_TRUE(OpenClipboard(owner));
  EmptyClipboard();
  SetClipboardData(format, block);
  CloseClipboard();
  DestroyWindow(owner);
}

std::string bytes_on_clipboard(UINT format) {
  EXPECT_TRUE(OpenClipboard(nullptr));
  const HGLOBAL block = GetClipboardData(format);
  std::string bytes;
  if (block != nullptr) {
    bytes.assign(static_cast<const char*>(GlobalLock(block)), GlobalSize(block));
    GlobalUnlock(block);
  }
  CloseClipboard();
  return bytes;
}

TEST(WindowsClipboard, KeepsTextAndRTF) {
  Clipboard& clipboard = windows_platform().clipboard();
  constexpr std::u16string_view text = u"a\r\n\u20AC\u4E2D\U0001F600";
  clipboard.put(text, u"{\\rtf1 a\\par \u20AC\u4E2D}");
  EXPECT_NE(clipboard.html()->find(u"\u20AC\u4E2D"), std::u16string::npos);
  EXPECT_EQ(clipboard.text(), text);
  EXPECT_EQ(clipboard.rtf(), u"{\\rtf1 a\\par \\'80\\u20013?}");
  EXPECT_STREQ(bytes_on_clipboard(RegisterClipboardFormatW(L"Rich Text Format")).c_str(),
               "{\\rtf1 a\\par \\'80\\u20013?}");
  EXPECT_STREQ(bytes_on_clipboard(CF_TEXT).substr(0, 3).c_str(), "a\r\n");
  clipboard.put(u"", u"");
  EXPECT_EQ(clipboard.text(), u"");
  const std::u16string large = test::repeated(u"0123456789abcdef", 0x10000);
  clipboard.put(large, u"{\\rtf1 }");
  EXPECT_EQ(clipboard.text(), large);
}

TEST(WindowsClipboard, ReadsWhatOthersPutThere) {
  Clipboard& clipboard = windows_platform().clipboard();
  struct Row {
    UINT format;
    std::string_view bytes;
    std::optional<std::u16string> text;
    std::optional<std::u16string> rtf;
  };
  const UINT rtf = rtf_clipboard_format();
  using namespace std::string_view_literals;
  for (const Row& row :
       {Row{CF_UNICODETEXT, "a\0b\0\0\0c\0"sv, u"ab", {}},
        Row{CF_TEXT, "x\ny\0z\0\0\0"sv, u"x\ny", {}},
        Row{rtf, "{\\rtf1\\ansicpg1252 \xE4\xE4}"sv, {}, u"{\\rtf1\\ansicpg1252 \\'e4\\'e4}"},
        Row{rtf, "{\\rtf1 a}\0\xFF"sv, {}, u"{\\rtf1 a}"}, Row{CF_HDROP, "12345678"sv, {}, {}}}) {
    put_bytes(row.format, row.bytes);
    EXPECT_EQ(clipboard.text(), row.text) << row.bytes;
    EXPECT_EQ(clipboard.rtf(), row.rtf) << row.bytes;
  }
}

TEST(WindowsClipboard, FindsWhatWasCopiedInHTML) {
  Clipboard& clipboard = windows_platform().clipboard();
  const bool reads = clipboard.read_html(u"x", {}).has_value();
  struct Row {
    std::string numbers;  // StartHTML, EndHTML, StartFragment, EndFragment
    std::string_view page;
    std::u16string_view read;
  };
  constexpr std::string_view plain = "<p>\xC3\xA4<i>b</i>c</p>";
  constexpr std::string_view marked = "<p>x<!--StartFragment-->b\xE4<!--EndFragment-->y</p>";
  for (const Row& row :
       {Row{"0081 0099 0086 0094", plain, u"b"}, Row{"0081 0099 0085 0094", plain, u"\u00E4bc"},
        Row{"0081 0099 0087 0094", plain, u"\u00E4bc"},
        Row{"0081 0099 0094 0030", plain, u"\u00E4bc"},
        Row{"-001 -001 0086 9999", plain, u"\u00E4bc"},
        Row{"0001 0002 0003 0004", marked, u"b\u00E4"}}) {
    const std::string& at = row.numbers;
    const std::string header =
        "Version:0.9\r\nStartHTML:" + at.substr(0, 4) + "\r\nEndHTML:" + at.substr(5, 4) +
        "\r\nStartFragment:" + at.substr(10, 4) + "\r\nEndFragment:" + at.substr(15) + "\r\n";
    ASSERT_EQ(header.size(), 81U);
    put_bytes(html_clipboard_format(), header + std::string(row.page));
    DragData data = clipboard.data();
    const auto content = read_transfer(data, &clipboard, {}, richtext::Alignment::left, false);
    EXPECT_EQ(content.has_value(), reads);
    if (reads) {
      EXPECT_EQ(content->text(), row.read) << at;
    }
  }
}

TEST(WindowsClipboard, SaysWhenAnotherDoesNotLetGo) {
  Clipboard& clipboard = windows_platform().clipboard();
  clipboard.put(u"before", u"");
  const HANDLE is_held = CreateEventW(nullptr, TRUE, FALSE, nullptr);
  const HANDLE is_tried = CreateEventW(nullptr, TRUE, FALSE, nullptr);
  std::thread other([&] {
    const HWND window = CreateWindowExW(0, L"STATIC", nullptr, 0, 0, 0, 0, 0, HWND_MESSAGE, nullptr,
                                        nullptr, nullptr);
    OpenClipboard(window);
    SetEvent(is_held);
    WaitForSingleObject(is_tried, 10000);
    CloseClipboard();
    DestroyWindow(window);
  });
  WaitForSingleObject(is_held, 10000);
  EXPECT_THROW(clipboard.put(u"after", u""), Error);
  EXPECT_EQ(clipboard.text(), std::nullopt);
  SetEvent(is_tried);
  other.join();
  EXPECT_EQ(clipboard.text(), u"before");
  CloseHandle(is_held);
  CloseHandle(is_tried);
}

// Drawing.

/// A white bitmap in memory to draw on.
class Bitmap {
 public:
  static constexpr int width = 400;
  static constexpr int height = 100;

  Bitmap() {
    BITMAPINFO info = {};
    info.bmiHeader = {sizeof info.bmiHeader, width, -height, 1, 32, BI_RGB, 0, 0, 0, 0, 0};
    void* memory = nullptr;
    bitmap_ = CreateDIBSection(nullptr, &info, DIB_RGB_COLORS, &memory, nullptr, 0);
    pixels_ = static_cast<const std::uint32_t*>(memory);
    before_ = SelectObject(context_, bitmap_);
    PatBlt(context_, 0, 0, width, height, WHITENESS);
  }
  Bitmap(const Bitmap&) = delete;
  Bitmap& operator=(const Bitmap&) = delete;
  ~Bitmap() {
    SelectObject(context_, before_);
    DeleteObject(bitmap_);
    DeleteDC(context_);
  }

  HDC context() const { return context_; }
  bool is_white(int x, int y) const { return (at(x, y) & 0xFFFFFFU) == 0xFFFFFFU; }
  std::uint32_t at(int x, int y) const { return pixels_[y * width + x]; }

  /// The extent of everything that is not white.
  RECT drawn() const {
    GdiFlush();
    RECT extent = {width, height, 0, 0};
    for (int y = 0; y < height; ++y) {
      for (int x = 0; x < width; ++x) {
        if (is_white(x, y)) continue;
        const RECT pixel = {x, y, x + 1, y + 1};
        extent = {std::min(extent.left, pixel.left), std::min(extent.top, pixel.top),
                  std::max(extent.right, pixel.right), std::max(extent.bottom, pixel.bottom)};
      }
    }
    return extent;
  }

 private:
  HDC context_ = CreateCompatibleDC(nullptr);
  HBITMAP bitmap_ = nullptr;
  HGDIOBJ before_ = nullptr;
  const std::uint32_t* pixels_ = nullptr;
};

TEST(DeviceCanvas, FillsRectanglesInPoints) {
  struct Row {
    CanvasRectangle rectangle;
    RECT pixels = {};
  };
  for (const Row& row : {Row{{3, 6, 30, 12}, {4, 8, 44, 24}}, Row{{3, 6, 30, 0.1F}, {4, 8, 44, 9}},
                         Row{{3, 6, -1, 5}, {Bitmap::width, Bitmap::height, 0, 0}}}) {
    const Bitmap bitmap;
    ASSERT_EQ(GetDeviceCaps(bitmap.context(), LOGPIXELSX), 96);
    DeviceCanvas(bitmap.context()).fill_rectangle(row.rectangle, rgb(1, 2, 3));
    const RECT drawn = bitmap.drawn();
    EXPECT_TRUE(EqualRect(&drawn, &row.pixels)) << row.rectangle.height;
    const bool is_drawn = drawn.right > 0;
    EXPECT_EQ(bitmap.at(4, 8) & 0xFFFFFFU, is_drawn ? 0x010203U : 0xFFFFFFU);
  }
}

TEST(DeviceCanvas, DrawsTextWhereItMeasuresIt) {
  const TextFont fonts[] = {
      {u"Tahoma", 20}, {u"Arial", 30, true}, {u"Times New Roman", 24, false, true}};
  for (const TextFont& font : fonts) {
    const Bitmap bitmap;
    DeviceCanvas canvas(bitmap.context());
    SetTextColor(bitmap.context(), RGB(9, 9, 9));
    const HGDIOBJ font_before = GetCurrentObject(bitmap.context(), OBJ_FONT);
    const float width = canvas.text_width(u"Hxgn\tH", font);
    EXPECT_EQ(width, canvas.text_width(u"Hxgn H", font));
    EXPECT_GE(width, canvas.text_width(u"Hxgn\t", font));
    EXPECT_EQ(width, windows_platform().create_measuring_canvas()->text_width(u"Hxgn H", font));
    EXPECT_EQ(canvas.text_width(u"", font), 0);
    const FontExtent extent = canvas.font_extent(font);
    canvas.draw_text({u"Hxgn\tH", 15, 45, width, font, rgb(200, 0, 0)});
    const RECT drawn = bitmap.drawn();
    const auto in_pixels = [](float points) { return points * 96 / 72; };
    EXPECT_NEAR(static_cast<float>(drawn.left), in_pixels(15), 4);
    EXPECT_NEAR(static_cast<float>(drawn.right), in_pixels(15 + width), 6);
    EXPECT_GE(static_cast<float>(drawn.top), in_pixels(45 - extent.ascent));
    EXPECT_LT(static_cast<float>(drawn.top), in_pixels(45 - extent.ascent / 2));
    EXPECT_GT(static_cast<float>(drawn.bottom), in_pixels(45) + 1) << "g hangs below the line";
    EXPECT_LE(static_cast<float>(drawn.bottom), in_pixels(45 + extent.descent) + 1);
    EXPECT_EQ(GetTextColor(bitmap.context()), RGB(9, 9, 9));
    EXPECT_EQ(GetCurrentObject(bitmap.context(), OBJ_FONT), font_before);
  }
}

TEST(DeviceCanvas, HasItsUnitInAnyMappingMode) {
  const Bitmap bitmap;
  const TextFont font = {u"Tahoma", 40};
  const float width = DeviceCanvas(bitmap.context()).text_width(u"Measured", font);
  for (const int mode : {MM_TWIPS, MM_HIMETRIC, MM_LOENGLISH}) {
    const Bitmap other;
    SetMapMode(other.context(), mode);
    SetWindowOrgEx(other.context(), 0, 0, nullptr);
    DeviceCanvas canvas(other.context());
    EXPECT_NEAR(canvas.text_width(u"Measured", font), width, width / 20) << mode;
    canvas.fill_rectangle({3, 6, 30, 12}, 0);
    const RECT drawn = other.drawn();
    EXPECT_NEAR(drawn.left, 4, 1) << mode;
    EXPECT_NEAR(drawn.top, 8, 1) << mode << ": downwards, too";
    EXPECT_NEAR(drawn.bottom, 24, 1) << mode;
  }
}

TEST(DeviceCanvas, DrawsWhatSymbolsMean) {
  const Bitmap bitmap;
  DeviceCanvas canvas(bitmap.context());
  EXPECT_EQ(canvas.text_width(u"abc", {u"Symbol", 20}),
            canvas.text_width(u"\u03B1\u03B2\u03C7", {u"Times New Roman", 20}));
}

}  // namespace
}  // namespace qel::windows
