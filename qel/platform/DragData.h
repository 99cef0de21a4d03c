#pragma once

#include <cstdint>
#include <functional>
#include <map>
#include <optional>
#include <string>
#include <string_view>
#include <utility>

namespace qel::platform {

/// What a drop does with the data; a mask where several are allowed.
enum DropEffect : std::int32_t { no_drop = 0, copy_drop = 1, move_drop = 2 };

/// What a drop of text does by default: it moves the text where that is allowed and no copy is
/// wanted, and otherwise copies it if that is allowed.
constexpr std::int32_t usual_drop(std::int32_t allowed_effects, bool wants_copy) {
  const bool copies = wants_copy || (allowed_effects & move_drop) == 0;
  return allowed_effects & (copies ? copy_drop : move_drop);
}

/// Whether the pointer with the data enters a box, leaves it or moves over it.
enum DragState : std::int16_t { drag_enters = 0, drag_leaves = 1, drag_moves = 2 };

/// The window system's numbers for the formats of data. It has no fixed one for HTML.
enum DataFormat : std::int16_t { text_format = 1, rtf_format = -16639, html_format = -16638 };

/// What is dragged from one place to another, in one format or several.
class DragData {
 public:
  /// Supplies the data that was promised; it need not.
  using Supply = std::function<void(DragData& data, std::int16_t format)>;

  /// Whether the data has that format, or was promised in it.
  bool has(std::int16_t format) const { return values_.contains(format); }
  /// Whether it has a format that a box can take.
  bool is_text() const { return has(text_format) || has(rtf_format) || has(html_format); }
  /// Whether a box would take the same from both; nothing promised is asked for.
  bool has_text_of(const DragData& other) const;
  /// The data in that format; empty when it has none. Promised data is asked for first.
  std::optional<std::u16string> get(std::int16_t format);
  void put(std::int16_t format, std::u16string_view value) { values_[format] = value; }
  /// Announces the format without the data, which is supplied when somebody wants it.
  void promise(std::int16_t format) { values_[format] = std::nullopt; }
  void clear() { values_.clear(); }
  /// Supplies what was promised; set by the source.
  void put_supply(Supply supply) { supply_ = std::move(supply); }

 private:
  std::map<std::int16_t, std::optional<std::u16string>> values_;
  Supply supply_;
};

}  // namespace qel::platform
