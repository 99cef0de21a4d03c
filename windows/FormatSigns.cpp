#include "windows/FormatSigns.h"

#include <algorithm>
#include <cstddef>
#include <cwchar>
#include <iterator>
#include <vector>

#include "windows/Fonts.h"

namespace qel::windows {
namespace {

// Signs are drawn in a square of 160 sign_units, in white on black and larger than they are shown,
// so that the mean of some pixels says how much of one is covered.
constexpr int sign_units = 160;
constexpr int finer = 4;
constexpr COLORREF white = 0xFFFFFF;

struct Letter {
  int height = 0;
  int weight = FW_NORMAL;
  bool is_italic = false;
  const wchar_t* face = L"Tahoma";
};

constexpr int base_line = 128;
constexpr Letter usual_letter = {140};
constexpr Letter smaller_letter = {125};
constexpr Letter serif_letter = {150, FW_NORMAL, false, L"Times New Roman"};

/// Writes from `x` on.
void write(HDC context, const wchar_t* text, const Letter& letter, int x, int y) {
  LOGFONTW description = {};
  description.lfHeight = -letter.height;
  description.lfWeight = letter.weight;
  description.lfItalic = letter.is_italic ? TRUE : FALSE;
  description.lfQuality = ANTIALIASED_QUALITY;
  std::wcscpy(description.lfFaceName, letter.face);
  const Font font(description);
  const SelectedFont selected(context, font.handle());
  TextOutW(context, x, y, text, static_cast<int>(std::wcslen(text)));
}

/// Writes in the middle.
void write(HDC context, const wchar_t* text, const Letter& letter, int y = base_line) {
  SetTextAlign(context, TA_BASELINE | TA_CENTER);
  write(context, text, letter, sign_units / 2, y);
  SetTextAlign(context, TA_BASELINE | TA_LEFT);
}

void fill(HDC context, const RECT& place) {
  FillRect(context, &place, static_cast<HBRUSH>(GetStockObject(WHITE_BRUSH)));
}

/// Draws with round ends and corners, which lines of this kind have.
class Pen {
 public:
  Pen(HDC context, int width) : context_(context) {
    const LOGBRUSH solid = {BS_SOLID, white, 0};
    pen_ = ExtCreatePen(PS_GEOMETRIC, static_cast<DWORD>(width), &solid, 0, nullptr);
    before_ = SelectObject(context, pen_);
  }
  Pen(const Pen&) = delete;
  Pen& operator=(const Pen&) = delete;
  ~Pen() {
    SelectObject(context_, before_);
    DeleteObject(pen_);
  }

 private:
  HDC context_;
  HPEN pen_ = nullptr;
  HGDIOBJ before_ = nullptr;
};

template <std::size_t Count>
void draw_lines(HDC context, const POINT (&points)[Count]) {
  Polyline(context, points, static_cast<int>(Count));
}

/// An x with a small 2, whose base line is there.
void draw_script(HDC context, int y) {
  write(context, L"x", usual_letter, 15, 120);
  write(context, L"2", {80, FW_SEMIBOLD}, 100, y);
}

/// An arrow that turns back, to the left where `x` is the identity.
template <class Mirror>
void draw_turn(HDC context, Mirror x) {
  const Pen pen(context, 16);
  draw_lines(context, {{x(30), 60}, {x(98), 60}});
  const POINT bow[] = {{x(98), 60}, {x(148), 60}, {x(148), 135}, {x(98), 135}};
  PolyBezier(context, bow, static_cast<DWORD>(std::size(bow)));
  draw_lines(context, {{x(98), 135}, {x(60), 135}});
  draw_lines(context, {{x(65), 25}, {x(30), 60}, {x(65), 95}});
}

void draw_brush(HDC context) {
  const Pen pen(context, 17);
  draw_lines(context, {{138, 22}, {92, 68}});
  draw_lines(context, {{72, 54}, {106, 88}});
  BeginPath(context);
  MoveToEx(context, 60, 68, nullptr);
  LineTo(context, 92, 100);
  const POINT edge[] = {{86, 130}, {54, 146}, {16, 140}, {34, 126}, {26, 86}, {60, 68}};
  PolyBezierTo(context, edge, static_cast<DWORD>(std::size(edge)));
  EndPath(context);
  FillPath(context);
}

void draw(HDC context, Sign sign) {
  switch (sign) {
    case Sign::bold:
      return write(context, L"B", {140, FW_BLACK});
    case Sign::italic:
      return write(context, L"I", {150, FW_NORMAL, true, L"Times New Roman"});
    case Sign::underline:
      write(context, L"U", smaller_letter, 115);
      return fill(context, {25, 140, 135, 150});
    case Sign::strike_out:
      write(context, L"S", usual_letter);
      return fill(context, {25, 75, 135, 85});
    case Sign::raised:
      return draw_script(context, 70);
    case Sign::lowered:
      return draw_script(context, 150);
    case Sign::small_capitals:
      write(context, L"A", smaller_letter, 5, base_line);
      return write(context, L"A", {90, FW_SEMIBOLD}, 90, base_line);
    case Sign::font:
      return write(context, L"F", serif_letter);
    case Sign::color:
      return write(context, L"A", smaller_letter, 105);
    case Sign::plain: {
      write(context, L"A", smaller_letter, 5, 120);
      const Pen pen(context, 14);
      draw_lines(context, {{100, 100}, {145, 145}});
      return draw_lines(context, {{145, 100}, {100, 145}});
    }
    case Sign::undo:
      return draw_turn(context, [](LONG x) { return x; });
    case Sign::redo:
      return draw_turn(context, [](LONG x) { return sign_units - x; });
    case Sign::brush:
      return draw_brush(context);
  }
}

/// A square bitmap in memory.
class Square {
 public:
  explicit Square(int side) {
    BITMAPINFO info = {};
    info.bmiHeader = {sizeof info.bmiHeader, side, -side, 1, 32, BI_RGB, 0, 0, 0, 0, 0};
    void* memory = nullptr;
    bitmap_ = CreateDIBSection(nullptr, &info, DIB_RGB_COLORS, &memory, nullptr, 0);
    pixels_ = static_cast<std::uint32_t*>(memory);
    before_ = SelectObject(context_, bitmap_);
  }
  Square(const Square&) = delete;
  Square& operator=(const Square&) = delete;
  ~Square() {
    SelectObject(context_, before_);
    DeleteObject(bitmap_);
    DeleteDC(context_);
  }

  HDC context() const { return context_; }
  /// Null when memory runs out.
  std::uint32_t* pixels() const { return pixels_; }

 private:
  HDC context_ = CreateCompatibleDC(nullptr);
  HBITMAP bitmap_ = nullptr;
  HGDIOBJ before_ = nullptr;
  std::uint32_t* pixels_ = nullptr;
};

/// How much of each pixel of a sign is covered, up to 255.
std::vector<std::uint32_t> coverage(Sign sign, int side) {
  const int large = side * finer;
  const Square square(large);
  if (square.pixels() == nullptr) return {};
  const HDC context = square.context();
  SetMapMode(context, MM_ANISOTROPIC);
  SetWindowExtEx(context, sign_units, sign_units, nullptr);
  SetViewportExtEx(context, large, large, nullptr);
  SetBkMode(context, TRANSPARENT);
  SetTextColor(context, white);
  SetTextAlign(context, TA_BASELINE | TA_LEFT);
  const HGDIOBJ before = SelectObject(context, GetStockObject(WHITE_BRUSH));
  draw(context, sign);
  SelectObject(context, before);
  GdiFlush();
  const auto width = static_cast<std::size_t>(side);
  std::vector<std::uint32_t> covered(width * width);
  const std::uint32_t* next = square.pixels();
  for (std::size_t y = 0; y < width * finer; ++y) {
    for (std::size_t x = 0; x < width * finer; ++x) {
      covered[y / finer * width + x / finer] += (*next++ >> 8U) & 0xFFU;
    }
  }
  for (std::uint32_t& sum : covered) sum /= finer * finer;
  return covered;
}

POINT corner(const RECT& place, int side) {
  return {(place.left + place.right - side) / 2, (place.top + place.bottom - side) / 2};
}

}  // namespace

void draw_sign(HDC context, const RECT& place, int side, Sign sign, COLORREF ink) {
  const std::vector<std::uint32_t> covered = coverage(sign, side);
  const Square square(side);
  if (covered.empty() || square.pixels() == nullptr) return;
  std::transform(covered.begin(), covered.end(), square.pixels(), [ink](std::uint32_t alpha) {
    const auto part = [alpha](std::uint32_t value) { return value * alpha / 255; };
    return alpha << 24U | part(GetRValue(ink)) << 16U | part(GetGValue(ink)) << 8U |
           part(GetBValue(ink));
  });
  const POINT at = corner(place, side);
  constexpr BLENDFUNCTION by_alpha = {AC_SRC_OVER, 0, 255, AC_SRC_ALPHA};
  GdiAlphaBlend(context, at.x, at.y, side, side, square.context(), 0, 0, side, side, by_alpha);
}

void draw_color_bar(HDC context, const RECT& place, int side, COLORREF color) {
  const POINT at = corner(place, side);
  const auto unit = [side](int place_in_square) {
    return MulDiv(place_in_square, side, sign_units);
  };
  const RECT bar = {at.x + unit(20), at.y + unit(125), at.x + unit(140), at.y + unit(155)};
  const HBRUSH brush = CreateSolidBrush(color);
  FillRect(context, &bar, brush);
  DeleteObject(brush);
}

}  // namespace qel::windows
