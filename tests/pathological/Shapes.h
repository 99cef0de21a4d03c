#pragma once

#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

/// Texts on which a careless reader takes more than linear time.
namespace qel::hostile {

struct Shape {
  std::string_view name;
  /// Its text grows in proportion to `size`.
  std::u16string (*text)(std::size_t size);
  /// From which its growth shows.
  std::size_t size = 200;
};

const std::vector<Shape>& markup_shapes();
/// For behind the beginning of a document.
const std::vector<Shape>& rtf_shapes();

}  // namespace qel::hostile
