#pragma once

#include <cstddef>
#include <memory>
#include <utility>

#include "qel/box/Box.h"
#include "qel/box/Keyboard.h"
#include "qel/box/Mouse.h"
#include "qel/headless/Shared.h"
#include "qel/platform/Keys.h"

namespace qel::headless {

/// A window that nobody sees: a grid in which all characters are equally wide, and each paragraph
/// is one line that never wraps. Its handle is its own address.
class BoxView : public box::View {
 public:
  /// A new box in such a window.
  static std::shared_ptr<box::Box> create(std::shared_ptr<Shared> shared);
  /// The window of a box that a headless platform has created.
  static BoxView& of(const platform::RichEdit& box);

  void show(const box::Change& /*change*/) override {}
  void show_selection() override {}
  void show_appearance(const platform::BoxAppearance& /*before*/) override {}
  platform::WindowHandle window() override {
    return reinterpret_cast<platform::WindowHandle>(this);
  }
  void put_owner(platform::WindowHandle /*owner*/) override {}
  platform::Clipboard& clipboard() override { return shared_->clipboard; }
  void carry(box::Drag& drag) override;
  void close() override { delete this; }

  static constexpr float character_width = 8;
  static constexpr float line_height = 16;
  /// The position nearest to a point.
  std::size_t position_at(float x, float y) const;
  /// Moves the caret by lines, to the ends of its line or by pages; whether the key is one that
  /// does so.
  bool move_by_lines(std::int16_t key_code, std::int16_t shift);

  box::Box& box() { return box_; }
  box::Keyboard& keyboard() { return keyboard_; }
  box::Mouse& mouse() { return mouse_; }

 private:
  BoxView(box::Box& box, std::shared_ptr<Shared> shared) : box_(box), shared_(std::move(shared)) {}

  std::ptrdiff_t lines_of(std::int16_t key_code) const;
  std::size_t line_away(std::ptrdiff_t lines);

  box::Box& box_;
  box::Keyboard keyboard_{box_};
  box::Mouse mouse_{box_};
  std::shared_ptr<Shared> shared_;
  box::Selection last_;          // the selection after the last move by lines,
  std::size_t goal_column_ = 0;  // which keeps to this column
};

}  // namespace qel::headless
