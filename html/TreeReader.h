#pragma once

#include <gumbo.h>

#include <cstddef>
#include <optional>
#include <string>
#include <vector>

#include "LineWriter.h"
#include "Style.h"
#include "qel/richtext/DocumentSink.h"
#include "qel/richtext/DroppedParts.h"

namespace qel::html {

/// Walks through a parsed page and tells a sink what it shows.
class TreeReader {
 public:
  /// The arguments must outlive the reader.
  TreeReader(const StyleSheet& sheet, const richtext::CharFormat& base,
             richtext::DocumentSink& sink);

  void read(const GumboNode& root);
  /// What of the page has been dropped.
  const richtext::DroppedParts& dropped() const { return dropped_; }

 private:
  /// An element whose content is being read.
  struct Frame {
    const GumboElement* element = nullptr;
    unsigned next = 0;  // of its children
    Style style;
    int number = 1;         // of the next item of a list,
    bool has_cell = false;  // of a row,
    bool outer_row_has_content = false;
  };

  /// A link, and the text that it has shown.
  struct Link {
    std::size_t depth = 0;  // of its frame
    std::u16string address;
    std::u16string shown;
  };

  void enter(const GumboElement& element);
  void count(const GumboElement& element);
  void begin_link(const GumboElement& element);
  void end_link();
  void begin_item(Frame& list, const GumboElement& item, Style& style);
  void leave();
  void text(const char* text);
  LineWriter::TextStyle text_style(Style& style);

  StyleRules rules_;
  richtext::DocumentSink& sink_;
  LineWriter lines_;
  std::vector<Frame> open_;
  std::optional<Link> link_;
  richtext::DroppedParts dropped_;
};

}  // namespace qel::html
