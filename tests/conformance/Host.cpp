#include "conformance/Host.h"

#include <array>
#include <map>
#include <stdexcept>
#include <utility>

#include "qel/base/Utf8.h"
#include "qel/platform/Keys.h"

namespace qel::conformance {
namespace {

using Word = std::u16string_view;

const std::map<Word, std::int16_t>& named_keys() {
  static const std::map<Word, std::int16_t> keys = {{u"Backspace", keys::backspace_key},
                                                    {u"Delete", keys::delete_key},
                                                    {u"Down", keys::down_key},
                                                    {u"End", keys::end_key},
                                                    {u"Enter", keys::enter_key},
                                                    {u"Escape", keys::escape_key},
                                                    {u"Home", keys::home_key},
                                                    {u"Insert", keys::insert_key},
                                                    {u"Left", keys::left_key},
                                                    {u"Right", keys::right_key},
                                                    {u"Tab", keys::tab_key},
                                                    {u"Up", keys::up_key},
                                                    {u"Space", keys::space_key},
                                                    {u"Grave", keys::grave_accent_key},
                                                    {u"Apostrophe", keys::apostrophe_key}};
  return keys;
}

std::string name_of(std::int16_t key_code, std::int16_t shift) {
  std::string name = (shift & keys::ctrl_key) != 0 ? "Ctrl+" : "";
  if ((shift & keys::alt_key) != 0) name += "Alt+";
  if ((shift & keys::shift_key) != 0) name += "Shift+";
  for (const auto& [key, code] : named_keys()) {
    if (code == key_code) return name + to_utf8(key);
  }
  if (key_code >= keys::first_function_key && key_code < keys::first_function_key + 12) {
    return name + "F" + std::to_string(key_code - keys::first_function_key + 1);
  }
  return name + static_cast<char>(key_code);
}

std::string name_of(std::int16_t character) {
  if (character < u' ') return std::to_string(character);
  return to_utf8(std::u16string(1, static_cast<char16_t>(character)));
}

/// Whether the key is Shift, Ctrl or Alt alone, which only a real keyboard presses.
bool is_modifier(std::int16_t key_code) { return key_code >= 16 && key_code <= 18; }

std::string with_number(const std::string& event, std::int32_t number) {
  return event + ":" + std::to_string(number);
}

}  // namespace

std::int16_t key_named(std::u16string_view name) {
  if (const auto key = named_keys().find(name); key != named_keys().end()) return key->second;
  if (name.size() == 1) return static_cast<std::int16_t>(name[0]);
  if (name.starts_with(u"F")) return keys::function_key(std::stoi(to_utf8(name.substr(1))));
  throw std::invalid_argument("no key is called " + to_utf8(name));
}

std::string Host::take_log() { return std::exchange(log_, {}); }

void Host::KeyDown(std::int16_t& KeyCode, std::int16_t& Shift) {
  if (!is_modifier(KeyCode)) log("Down:" + name_of(KeyCode, Shift));
  if (KeyCode == swallowed_key) KeyCode = 0;
}

void Host::KeyPress(std::int16_t& KeyAscii) {
  log("Press:" + name_of(KeyAscii));
  if (KeyAscii == turned_from) KeyAscii = turned_to;
}

void Host::KeyUp(std::int16_t& KeyCode, std::int16_t& Shift) {
  if (!is_modifier(KeyCode)) log("Up:" + name_of(KeyCode, Shift));
}

void Host::MouseDown(std::int16_t Button, std::int16_t /*Shift*/, float /*X*/, float /*Y*/) {
  log(with_number("MouseDown", Button));
}

void Host::MouseUp(std::int16_t Button, std::int16_t /*Shift*/, float /*X*/, float /*Y*/) {
  log(with_number("MouseUp", Button));
}

// Drags.

std::string Host::other_than_last(const Place& place) const {
  return place == last_ ? "" : "(elsewhere)";
}

void Host::OLEStartDrag(platform::DragData& Data, std::int32_t& AllowedEffects) {
  log(with_number("StartDrag", AllowedEffects));
  feedback_ = 0;
  AllowedEffects &= allowed_effects;
  if (!promised_rtf.empty()) Data.promise(platform::rtf_format);
}

void Host::OLESetData(platform::DragData& Data, std::int16_t DataFormat) {
  log(DataFormat == platform::rtf_format ? "SetRTF" : with_number("Set", DataFormat));
  Data.put(DataFormat, promised_rtf);
}

void Host::OLEGiveFeedback(std::int32_t& Effect, bool& /*DefaultCursors*/) { feedback_ = Effect; }

void Host::OLEDragOver(platform::DragData& /*Data*/, std::int32_t& Effect, std::int16_t Button,
                       std::int16_t /*Shift*/, float X, float Y, std::int16_t State) {
  constexpr std::array events = {"Enter", "Leave", "Over"};
  std::string event = with_number(events.at(static_cast<std::size_t>(State)), Effect);
  const Place place = {Button, X, Y};
  if (State == platform::drag_leaves) event += other_than_last(place);
  last_ = place;
  if (!log_.ends_with(event)) log(event);
  if (wanted_over >= 0) Effect = wanted_over;
}

void Host::OLEDragDrop(platform::DragData& Data, std::int32_t& Effect, std::int16_t Button,
                       std::int16_t /*Shift*/, float X, float Y) {
  const std::u16string text = Data.get(platform::text_format).value_or(u"");
  log(with_number("Drop", Effect) + ":" + to_utf8(text) + other_than_last({Button, X, Y}));
  if (wanted_drop >= 0) Effect = wanted_drop;
}

void Host::OLECompleteDrag(std::int32_t& Effect) {
  log(with_number("Feedback", feedback_));
  log(with_number("Complete", Effect));
}

}  // namespace qel::conformance
