#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <vector>

namespace qel::forms {

/// A part of a text, in code units.
struct Part {
  std::size_t start = 0;
  std::size_t length = 0;

  friend bool operator==(const Part&, const Part&) = default;
};

/// What a list shows of a record. Times are milliseconds since 1970, UTC.
struct Heading {
  std::int64_t id = 0;
  std::u16string title;  ///< the visible text, on one line
  std::int64_t changed = 0;
  std::u16string snippet;  ///< of a search: the words around those that were found in the body
  std::int64_t created = 0;
  std::vector<std::u16string> tags;  ///< in the order of the alphabet
  bool untitled = false;             ///< whether `title` is the first words of the body instead
  std::int64_t trashed = 0;          ///< when it was moved to the trash; 0 when it is not there
  std::vector<Part> found;           ///< the words of the snippet that were searched
  std::vector<Part> found_in_title;  ///< those of the title
};

/// The title as lists show it, on one line.
struct ShownTitle {
  std::u16string text;
  bool untitled = false;  ///< whether `text` is the first words of the body instead
};

/// The visible text of the title; that of the first words of the body, about 60 characters, where
/// there is none. Both are markup.
ShownTitle shown_title(std::u16string_view title, std::u16string_view body);

}  // namespace qel::forms
