// Any bytes as HTML into runs, and those through the writer and the reader again.

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <string>
#include <vector>

#include "Input.h"
#include "qel/base/Utf16.h"
#include "qel/base/Utf8.h"
#include "qel/convert/HtmlWriter.h"
#include "qel/html/HtmlReader.h"
#include "qel/rtf/TableIndexes.h"

namespace {

using qel::convert::HtmlOptions;
using qel::fuzz::require;
using qel::richtext::Alignment;
using qel::richtext::CharFormat;
using qel::style_codes::CodeState;

/// Each font has a name, since one without is not written.
const qel::QELIndexFonts fonts = [] {
  qel::QELIndexFonts named;
  for (std::int16_t i = 4; i <= 9; ++i)
    named.put_Font(i, std::u16string(u"Font ") + u"456789"[i - 4]);
  return named;
}();
const qel::QELIndexColors colors;

/// Parts of one state; a line feed is a break.
struct Part {
  std::u16string text;
  CodeState state;
  bool operator==(const Part&) const = default;
};

class Collector : public qel::richtext::DocumentSink {
 public:
  FormatId intern(const CharFormat& format) override {
    states_.push_back(indexes_.state(format));
    return static_cast<FormatId>(states_.size() - 1);
  }
  void text(std::u16string_view text, FormatId format) override {
    require(!text.empty(), "text has characters");
    for (std::size_t at = 0; at < text.size();) {
      require(text[at] == u'\t' || text[at] >= u' ', "text has no breaks and controls");
      const bool is_lone = qel::is_pair_at(text, at) ? false : (text[at] & 0xF800U) == 0xD800U;
      require(!is_lone, "surrogates are pairs");
      at += qel::is_pair_at(text, at) ? 2 : 1;
    }
    append(text, format);
  }
  void paragraph_break(FormatId format, Alignment /*alignment*/) override { append(u"\n", format); }
  void finish(Alignment /*alignment*/) override { ++finished_; }

  const std::vector<Part>& parts() const {
    require(finished_ == 1, "a document ends once");
    return parts_;
  }

 private:
  void append(std::u16string_view text, FormatId format) {
    require(format < states_.size(), "a format is known before its text");
    const CodeState& state = states_[format];
    if (parts_.empty() || parts_.back().state != state) parts_.push_back({{}, state});
    parts_.back().text.append(text);
  }

  const qel::rtf::TableIndexes indexes_{fonts, colors, qel::rtf::Origin::rtf, qel::Way::lossless};
  std::vector<CodeState> states_;
  std::vector<Part> parts_;
  int finished_ = 0;
};

std::vector<Part> read(std::string_view bytes) {
  CharFormat base;
  base.font_name = fonts.get_DefaultFont();
  base.color = colors.get_DefaultColor();
  Collector sink;
  qel::html::read_html(bytes, base, sink);
  return sink.parts();
}

std::string write(const std::vector<Part>& parts, const HtmlOptions& options) {
  std::u16string html;
  qel::convert::HtmlWriter writer(html, fonts, colors, options);
  for (const Part& part : parts) {
    const std::u16string_view text = part.text;
    for (std::size_t at = 0; at < text.size();) {
      const std::size_t end = std::min(text.find(u'\n', at), text.size());
      if (end > at) writer.text(text.substr(at, end - at), part.state);
      if (end < text.size()) writer.line_break(part.state);
      at = end + 1;
    }
  }
  writer.finish();
  return qel::to_utf8(html);
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  if (size > 0x7000) return 0;
  const qel::fuzz::Input input(data, size);
  qel::html::is_html(input.bytes());
  const std::vector<Part> parts = read(input.bytes());
  for (const unsigned choice : {0U, 1U, 2U, 3U, 7U}) {
    HtmlOptions options;
    options.paragraphs = (choice & 1U) != 0;
    options.whole_document = (choice & 2U) != 0;
    options.classes = (choice & 4U) != 0;
    require(read(write(parts, options)) == parts, "what is written reads back as it was");
  }
  return 0;
}
