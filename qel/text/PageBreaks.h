#pragma once

#include <cstddef>
#include <span>
#include <vector>

namespace qel {

/// A line of text that goes on some page.
struct PageLine {
  float height = 0;
  float space_before = 0;        ///< left out at the top of a page
  bool begins_paragraph = true;  ///< of the first line, too
  bool begins_page = false;
  bool keeps_with_next = false;  ///< stands on the page of the line that follows
};

/// The index of the first line of each page; no page is empty, but without lines there are none.
///
/// Where pages of that height allow it, neither the first nor the last line of a paragraph is alone
/// on a page, and lines that keep with the next do; otherwise a page takes the lines that fit, or
/// one.
std::vector<std::size_t> page_starts(std::span<const PageLine> lines, float height);

}  // namespace qel
