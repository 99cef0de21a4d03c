#pragma once

#include <ostream>
#include <string>
#include <string_view>
#include <vector>

#include "Text.h"
#include "qel/base/Utf8.h"
#include "qel/convert/HtmlWriter.h"
#include "qel/richtext/CharFormat.h"

/// Texts for the tests of HTML.
namespace qel {

namespace style_codes {
inline void PrintTo(const CodeState& state, std::ostream* out) {
  *out << "{" << unsigned{state.attributes} << ", " << state.font << ", " << state.color << "}";
}
}  // namespace style_codes

namespace test {

using style_codes::CodeState;

/// A text in one state; a break is a line feed.
struct Part {
  std::u16string text;
  CodeState state;
  bool operator==(const Part&) const = default;
};
inline void PrintTo(const Part& part, std::ostream* out) {
  *out << shown(part.text) << " in ";
  style_codes::PrintTo(part.state, out);
}
using Parts = std::vector<Part>;

inline void append(Parts& parts, std::u16string_view text, const CodeState& state) {
  if (text.empty()) return;
  if (parts.empty() || parts.back().state != state) parts.push_back({{}, state});
  parts.back().text.append(text);
}

struct Tables {
  QELIndexFonts fonts;
  QELIndexColors colors;
  /// That of a document's body.
  richtext::CharFormat base() const {
    richtext::CharFormat format;
    format.font_name = fonts.get_DefaultFont();
    format.color = colors.get_DefaultColor();
    format.size = fonts.get_FontSize();
    return format;
  }
};

/// The HTML of the parts, from a writer that is drained after each of them.
inline std::string write_html(const Parts& parts, const Tables& tables,
                              const convert::HtmlOptions& options = {}) {
  std::string bytes;
  std::u16string out;
  convert::HtmlWriter writer(out, tables.fonts, tables.colors, options);
  const auto drain = [&] {
    bytes.append(to_utf8(out));
    out.clear();
  };
  for (const Part& part : parts) {
    if (part.text == u"\n") {
      writer.line_break(part.state);
    } else {
      writer.text(part.text, part.state);
    }
    drain();
  }
  writer.finish();
  drain();
  return bytes;
}

}  // namespace test
}  // namespace qel
