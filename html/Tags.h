#pragma once

#include <cstddef>
#include <cstdint>
#include <string_view>

namespace qel::html {

/// How a tag is passed on to the parser.
enum class TagKind : std::uint8_t {
  formatting,  ///< goes on behind a block that ends within it
  phrasing,
  block,
  heading,
  item,  ///< ends by itself where the next one begins
  table,
  row,
  cell,
  empty,
  body,
  preformatted,  ///< content is text, without tags
  raw,           ///< content is dropped, and not even looked at for tags
  hidden,        ///< content is dropped
};

struct Tag {
  std::string_view name;
  TagKind kind;
  /// The element that is passed on in its place.
  std::string_view written;
};

/// The tag of this name in any case; null for one whose tags are dropped.
const Tag* find_tag(std::string_view name);

/// Its number, below `tag_count`.
std::size_t index_of(const Tag& tag);
const Tag& tag_at(std::size_t index);
constexpr std::size_t tag_count = 97;

}  // namespace qel::html
