#pragma once

#include <cstddef>
#include <cstdint>
#include <functional>
#include <optional>
#include <string_view>

namespace qel {

/// The lines into which word wrap breaks a markup paragraph, one after the other. Each line is a
/// part of the paragraph: it does not repeat the codes of earlier lines, and codes between the last
/// character of a line and the first of the next are in neither. Positions count visible characters
/// (see VisibleCharacters.h).
class MarkupLines {
 public:
  /// Width of a piece of markup with its codes applied.
  using Measure = std::function<float(std::u16string_view markup)>;

  /// `paragraph` has to outlive this object. The first line may be `width` wide, every later one
  /// `width` less `indent`.
  MarkupLines(std::u16string_view paragraph, float width, float indent, Measure measure)
      : rest_(paragraph),
        available_(width),
        available_later_(width - indent),
        measure_(std::move(measure)) {}

  /// The next line; none after the last.
  std::optional<std::u16string_view> next();

 private:
  std::u16string_view rest_;
  float available_;
  float available_later_;
  Measure measure_;
  std::size_t usual_ = 0;
};

}  // namespace qel
