#include "qel/headless/BoxView.h"

#include <algorithm>
#include <string_view>

#include "qel/base/Graphemes.h"
#include "qel/base/Utf16.h"
#include "qel/headless/Drag.h"

namespace qel::headless {

using namespace keys;

namespace {

using Text = std::u16string_view;

std::size_t line_start(Text text, std::size_t at) {
  const std::size_t line_feed = at == 0 ? Text::npos : text.rfind(u'\n', at - 1);
  return line_feed == Text::npos ? 0 : line_feed + 1;
}

std::size_t line_end(Text text, std::size_t at) {
  return std::min(text.find(u'\r', at), text.size());
}

}  // namespace

std::shared_ptr<box::Box> BoxView::create(std::shared_ptr<Shared> shared) {
  auto box = std::make_shared<box::Box>();
  box->attach(new BoxView(*box, std::move(shared)));
  return box;
}

BoxView& BoxView::of(const platform::RichEdit& box) {
  // NOLINTNEXTLINE(performance-no-int-to-ptr): a handle is an address.
  return *reinterpret_cast<BoxView*>(box.window());
}

void BoxView::carry(box::Drag& drag) {
  if (!shared_->dragger) return;
  Drag carried(drag);
  shared_->dragger(carried);
  carried.leave();
}

std::size_t BoxView::position_at(float x, float y) const {
  const std::u16string& text = box_.text();
  std::size_t start = 0;
  const float last_line = static_cast<float>(text.size());
  const auto line = static_cast<std::size_t>(std::clamp(y / line_height, 0.0F, last_line));
  for (std::size_t i = 0; i < line; ++i) {
    const std::size_t line_feed = text.find(u'\n', start);
    if (line_feed == std::u16string::npos) break;
    start = line_feed + 1;
  }
  const std::size_t length = line_end(text, start) - start;
  const float column = std::clamp(x / character_width + 0.5F, 0.0F, static_cast<float>(length));
  return whole_position(text, start + static_cast<std::size_t>(column));
}

/// The position in a line above or below.
std::size_t BoxView::line_away(std::ptrdiff_t lines) {
  const Text text = box_.text();
  const std::size_t here = box_.selected().caret;
  std::size_t start = line_start(text, here);
  if (box_.selected() != last_) goal_column_ = here - start;
  for (; lines > 0 && line_end(text, start) < text.size(); --lines) {
    start = line_end(text, start) + 2;
  }
  for (; lines < 0 && start > 0; ++lines) start = line_start(text, start - 2);
  return std::min(start + goal_column_, line_end(text, start));
}

/// The number of lines that a key moves by; 0 for any other key.
std::ptrdiff_t BoxView::lines_of(std::int16_t key_code) const {
  const float lines_shown = static_cast<float>(box_.appearance().height) / line_height;
  const auto page = static_cast<std::ptrdiff_t>(std::max(1.0F, lines_shown));
  switch (key_code) {
    case up_key:
      return -1;
    case down_key:
      return 1;
    case page_up_key:
      return -page;
    case page_down_key:
      return page;
    default:
      return 0;
  }
}

bool BoxView::move_by_lines(std::int16_t key_code, std::int16_t shift) {
  const bool selects = (shift & shift_key) != 0;
  if (!box::Keyboard::moves_by_lines(key_code, shift)) return false;
  if (const std::ptrdiff_t lines = lines_of(key_code); lines != 0) {
    box_.put_caret(line_away(lines), selects);
    last_ = box_.selected();
    return true;
  }
  const std::size_t here = box_.selected().caret;
  box_.put_caret(key_code == home_key ? line_start(box_.text(), here) : line_end(box_.text(), here),
                 selects);
  return true;
}

}  // namespace qel::headless
