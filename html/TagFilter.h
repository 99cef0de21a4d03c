#pragma once

#include <cstdint>
#include <string>
#include <string_view>

namespace qel::html {

/// What of HTML makes text and formats, for a parser that takes time in proportion to how deep the
/// elements lie within each other.
struct FilteredHtml {
  std::string html;
  std::string style_sheet;
  std::uint64_t pictures = 0;  ///< what of the dropped content they were
  std::uint64_t objects = 0;   ///< sounds, films, pages of others and the like
};

/// Drops comments, unknown elements' tags, attributes without meaning here, control characters and
/// content that is not shown, and writes the rest in one spelling. Elements that lie too deep lose
/// their tags. HTML that marks a fragment loses the text around it.
FilteredHtml filter_html(std::string_view html);

}  // namespace qel::html
