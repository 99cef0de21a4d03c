#pragma once

#include <QKeyEvent>
#include <cstdint>

#include "qel/platform/Keys.h"

/// Maps keys and buttons to the numbers of `platform/Keys.h`.
namespace qel::qt {

/// A key with the modifiers that are held.
struct Stroke {
  std::int16_t key_code = 0;  ///< 0 for a key that has no number
  std::int16_t shift = 0;
};

Stroke stroke_of(const QKeyEvent& event);
/// Qt's key for a code, where Qt does not use the same number; 0 for none.
int qt_key_of(std::int16_t key_code);

std::int16_t shift_mask(Qt::KeyboardModifiers modifiers);
Qt::KeyboardModifiers modifiers_of(std::int16_t shift);
std::int16_t button_mask(Qt::MouseButtons buttons);

/// The characters that a key types; empty for keys that do something else.
QString typed_text(const QKeyEvent& event);

}  // namespace qel::qt
