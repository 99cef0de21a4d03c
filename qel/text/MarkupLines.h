#pragma once

#include <cstddef>
#include <cstdint>
#include <functional>
#include <optional>
#include <string_view>

namespace qel {

/// The lines of a markup paragraph, one after the other, as word wrap breaks it. Each line is a
/// part of the paragraph: a line does not repeat the codes of the lines before, and codes between
/// the last character of a line and the first of the next are in neither. Positions count visible
/// characters (see VisibleCharacters.h).
class MarkupLines {
 public:
  /// Width of a piece of markup with its codes applied.
  using Measure = std::function<float(std::u16string_view markup)>;

  /// `paragraph` has to stay while this lives. The first line may be `width` wide, every later one
  /// `width` less `indent`.
  MarkupLines(std::u16string_view paragraph, float width, float indent, Measure measure)
      : rest_(paragraph),
        available_(width),
        available_later_(width - indent),
        measure_(std::move(measure)) {}

  /// The next line; nothing after the last.
  std::optional<std::u16string_view> next();

 private:
  std::u16string_view rest_;
  float available_;
  float available_later_;
  Measure measure_;
  std::size_t usual_ = 0;
};

}  // namespace qel
