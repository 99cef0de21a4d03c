#pragma once

#include <cstddef>
#include <functional>
#include <optional>
#include <string>
#include <vector>

#include "qel/base/Color.h"
#include "qel/richtext/CharFormat.h"
#include "qel/richtext/Document.h"

namespace qel::box {

/// Formats to be found. Fields that are empty take anything.
struct WantedFormat {
  enum class Level : std::uint8_t { lowered, base_line, raised };

  std::optional<bool> bold;
  std::optional<bool> italic;
  std::optional<bool> underline;
  std::optional<bool> strike_through;
  std::optional<bool> small_caps;
  std::optional<Level> level;
  std::optional<Color> color;
  std::optional<std::u16string> font_name;  ///< whatever its case

  bool takes(const richtext::CharFormat& format) const;

  friend bool operator==(const WantedFormat&, const WantedFormat&) = default;
};

/// What to find: a text, a format, or a text that is wholly in a format. Nothing is found where
/// neither is wanted.
struct Wanted {
  std::u16string text;  ///< without breaks
  bool matches_case = false;
  bool whole_words = false;
  WantedFormat format;

  bool is_empty() const { return text.empty() && format == WantedFormat(); }
  friend bool operator==(const Wanted&, const Wanted&) = default;
};

/// Finds text and formats in a document. Case is folded as Unicode's simple folding does. A hit
/// never cuts a cluster of characters, so an "e" is not found in one with an accent. Without a
/// text, each run of the format is a hit, whatever other formats change within it; it ends with its
/// paragraph.
class Search {
 public:
  explicit Search(Wanted wanted);

  const Wanted& wanted() const { return wanted_; }

  /// Returns whether to go on.
  using Visitor = std::function<bool(richtext::Extent hit)>;
  /// Visits the hits that begin at `from` or behind it, and the run of a format that holds it, in
  /// order, none overlapping the one before. Takes time linear in the text up to where the visitor
  /// stops.
  void visit(const richtext::Document& document, std::size_t from, const Visitor& visitor) const;

  /// All hits, but at most so many.
  std::vector<richtext::Extent> all(const richtext::Document& document, std::size_t most) const;
  /// The first hit that begins at or after the position.
  std::optional<richtext::Extent> next(const richtext::Document& document, std::size_t from) const;
  /// The last hit that begins before the position.
  std::optional<richtext::Extent> previous(const richtext::Document& document,
                                           std::size_t before) const;
  /// Whether that part is a hit.
  bool is_hit(const richtext::Document& document, richtext::Extent extent) const;

 private:
  class Formats;

  void visit_texts(const richtext::Document& document, std::size_t from,
                   const Visitor& visitor) const;
  void visit_formats(const richtext::Document& document, std::size_t from,
                     const Visitor& visitor) const;
  bool is_whole(std::u16string_view text, richtext::Extent extent) const;

  Wanted wanted_;
  std::u16string text_;  // to be found in a text whose case is folded if need be
  bool has_format_;
};

}  // namespace qel::box
