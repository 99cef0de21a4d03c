#include <string>

#include "qel/convert/HtmlWriter.h"
#include "qel/html/HtmlReader.h"

namespace {

/// Writes what it reads.
class Copy : public qel::richtext::DocumentSink {
 public:
  explicit Copy(qel::RunSink& to) : to_(to) {}
  FormatId intern(const qel::richtext::CharFormat& format) override { return format.bold ? 1 : 0; }
  void text(std::u16string_view text, FormatId format) override { to_.text(text, state(format)); }
  void paragraph_break(FormatId format, qel::richtext::Alignment /*alignment*/) override {
    to_.line_break(state(format));
  }
  void finish(qel::richtext::Alignment /*alignment*/) override { to_.finish(); }

 private:
  static qel::style_codes::CodeState state(FormatId format) {
    return {static_cast<std::uint8_t>(format), 0, 0};
  }
  qel::RunSink& to_;
};

}  // namespace

int main() {
  std::u16string html;
  qel::convert::HtmlWriter writer(html, qel::QELIndexFonts(), qel::QELIndexColors());
  Copy copy(writer);
  qel::html::read_html("<p>plain and <strong>bold</strong>", {}, copy);
  return html == u"plain and <b>bold</b>" ? 0 : 1;
}
