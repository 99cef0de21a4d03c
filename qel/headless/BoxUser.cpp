#include "qel/headless/BoxUser.h"

#include <utility>

#include "qel/base/Utf16.h"

namespace qel::headless {

using namespace keys;

namespace {

constexpr std::int16_t left_button = 1;

/// The key that types a character, and the modifiers that it needs.
std::pair<std::int16_t, std::int16_t> key_of_character(char16_t character) {
  const auto code = static_cast<std::int16_t>(character);
  if (character >= u'a' && character <= u'z') {
    return {static_cast<std::int16_t>(code - u'a' + u'A'), no_modifier};
  }
  if (character >= u'A' && character <= u'Z') return {code, shift_key};
  const bool has_key = (character >= u'0' && character <= u'9') || character == u' ';
  return {has_key ? code : character_packet_key, no_modifier};
}

}  // namespace

std::int16_t BoxUser::press(std::int16_t key_code, std::int16_t shift) {
  return stroke(key_code, shift, {});
}

void BoxUser::type(std::u16string_view text) {
  for (std::size_t at = 0; at < text.size();) {
    const std::size_t length = units_of(character_at(text, at));
    if (text[at] == u'\n') {
      press(enter_key);
    } else {
      const auto [key_code, shift] = key_of_character(text[at]);
      stroke(key_code, shift, text.substr(at, length));
    }
    at += length;
  }
}

std::int16_t BoxUser::stroke(std::int16_t key_code, std::int16_t shift,
                             std::u16string_view character) {
  box::Box& box = view_.box();
  if (!box.appearance().enabled) return key_code;
  const auto held = box.weak_from_this().lock();
  std::int16_t left = key_code;
  std::int16_t mask = shift;
  box.listener().on_key_down(left, mask);
  if (left != 0 && !character.empty()) {
    view_.keyboard().type(character);
  } else if (left != 0 && !view_.move_by_lines(left, mask)) {
    view_.keyboard().act_on_key(left, mask);
  }
  box.listener().on_key_up(key_code, shift);
  return left;
}

void BoxUser::mouse_down(float x, float y, std::int16_t shift, std::int16_t button) {
  const box::Box& box = view_.box();
  if (!box.appearance().enabled) return;
  button_ = button;
  // The character under the pointer, not the gap next to it.
  const std::size_t at = view_.position_at(x - BoxView::character_width / 2, y);
  const bool on_selection = at >= box.selected().start() && at < box.selected().end();
  const bool places = view_.mouse().press({button, shift, x, y}, on_selection);
  if (places && button == left_button) put_caret(x, y, (shift & shift_key) != 0);
}

void BoxUser::mouse_move(float x, float y, std::int16_t shift) {
  if (!view_.box().appearance().enabled) return;
  // The drag captures the pointer: this box does not see the button come up.
  const std::int16_t held = button_;
  if (view_.mouse().may_drag()) button_ = 0;
  const bool selects = view_.mouse().move({held, shift, x, y}, true);
  if (selects && held == left_button) put_caret(x, y, true);
}

void BoxUser::mouse_up(float x, float y, std::int16_t shift) {
  const std::int16_t button = std::exchange(button_, std::int16_t{0});
  if (button == 0) return;
  if (view_.mouse().release()) put_caret(x, y, false);
  view_.mouse().released({button, shift, x, y});
}

void BoxUser::click(float x, float y, std::int16_t shift) {
  mouse_down(x, y, shift);
  mouse_up(x, y, shift);
}

void BoxUser::double_click(float x, float y) {
  if (!view_.box().appearance().enabled) return;
  click(x, y);
  view_.mouse().double_click();
  view_.keyboard().select_word(view_.position_at(x, y));
  button_ = left_button;
  mouse_up(x, y);
}

}  // namespace qel::headless
