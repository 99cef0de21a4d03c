#pragma once

#include <gumbo.h>

#include <string>
#include <vector>

#include "LineWriter.h"
#include "Style.h"
#include "qel/richtext/DocumentSink.h"

namespace qel::html {

/// Walks through a parsed page and tells a sink what it shows.
class TreeReader {
 public:
  /// The arguments must outlive the reader.
  TreeReader(const StyleSheet& sheet, const richtext::CharFormat& base,
             richtext::DocumentSink& sink);

  void read(const GumboNode& root);

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

  void enter(const GumboElement& element);
  void begin_item(Frame& list, const GumboElement& item, Style& style);
  void leave();
  void text(const char* text);
  LineWriter::TextStyle text_style(Style& style);

  StyleRules rules_;
  richtext::DocumentSink& sink_;
  LineWriter lines_;
  std::vector<Frame> open_;
};

}  // namespace qel::html
