#include "qel/richtext/DocumentReader.h"

#include <cstddef>
#include <utility>

#include "qel/base/Scan.h"
#include "qel/richtext/RtfReader.h"

namespace qel::richtext {
bool is_rtf(std::u16string_view text) {
  constexpr std::u16string_view begin = u"{\\rtf";
  const std::size_t first = text.find_first_not_of(u" \t\r\n\uFEFF");
  return first != std::u16string_view::npos && text.substr(first, begin.size()) == begin;
}

void read_into(std::u16string_view text, const CharFormat& base, DocumentSink& sink) {
  if (is_rtf(text)) {
    read_rtf(text, base, sink);
    return;
  }
  const DocumentSink::FormatId format = sink.intern(base);
  for (std::size_t at = 0; at < text.size();) {
    const std::size_t end = find_any<u'\r', u'\n'>(text, at);
    if (end > at) sink.text(text.substr(at, end - at), format);
    if (end == text.size()) break;
    sink.paragraph_break(format, Alignment::left);
    at = end + (text.substr(end, 2) == u"\r\n" ? 2 : 1);
  }
  sink.finish(Alignment::left);
}

Document read_document(std::u16string_view text, const CharFormat& base) {
  Document document;
  document.reserve(text.size());
  DocumentBuilder builder(document);
  read_into(text, base, builder);
  document.release_unused();
  return document;
}

Document in_one_line(const Document& document) {
  Document line;
  for (std::size_t i = 0; i < document.runs().run_count(); ++i) {
    const RunList::Run run = document.runs().run(i);
    const std::u16string text = document.text().substr(run.start, run.end - run.start);
    line.append(replace_all(text, u"\r\n", u" "), line.intern(document.format(run.value)));
  }
  return line;
}

}  // namespace qel::richtext
