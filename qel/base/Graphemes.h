#pragma once

#include <cstddef>
#include <string_view>

/// Grapheme clusters: what a reader takes for one character, such as a letter with its accents, a
/// flag, or a family joined from several emoji. The extended grapheme clusters of Unicode 15.0
/// (UAX #29, rules GB1 to GB999), from a table that scripts/generate-unicode-tables writes.
///
/// Texts are UTF-16; positions are code units from 0, and any behind the end counts as the end.
/// CR LF is one cluster, and so is each lone surrogate. Whether a cluster ends at a position
/// depends on the text alone, so steps forward and backward stop at the same positions. A step
/// takes time linear in the length of the cluster and of the one before it, however long the text
/// is.
///
/// One departure from the standard keeps steps short: in a row of more than 300 flags with nothing
/// between them (more than there are), the letters behind the 300th are clusters of their own.
namespace qel {

/// The end of the cluster that begins at or holds `at`; the text's size at its end.
std::size_t cluster_after(std::u16string_view text, std::size_t at);

/// The beginning of the cluster that ends at or holds the unit before `at`; 0 at the beginning.
std::size_t cluster_before(std::u16string_view text, std::size_t at);

/// Whether the character always belongs to the cluster before it: a combining mark, a joiner, a
/// variation selector, a tone of skin.
bool extends_cluster(char32_t character);

/// `at` itself, or the beginning of the surrogate pair or CR LF that it would cut in two.
std::size_t whole_position(std::u16string_view text, std::size_t at);

}  // namespace qel
