#pragma once

#include <QIcon>
#include <cstdint>

namespace qel::qt {

/// The pictures on the buttons of the find bar, drawn at any size in the palette's colour of text.
enum class FindIcon : std::uint8_t { previous, next, close, match_case, whole_words, format };

QIcon icon_of(FindIcon icon);

}  // namespace qel::qt
