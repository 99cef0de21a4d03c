#include "qel/platform/RichEdit.h"

#include <algorithm>
#include <cstddef>

#include "qel/richtext/DocumentReader.h"
#include "qel/richtext/RtfWriter.h"

namespace qel::platform {

using richtext::Document;

std::u16string RichEdit::text(Scope scope) const {
  const Range selected = selection();
  const bool all = scope == Scope::document;
  if (!all && selected.length == 0) return {};
  const auto start = static_cast<std::size_t>(all ? 0 : selected.start);
  const auto length = all ? std::u16string::npos : static_cast<std::size_t>(selected.length);
  std::u16string text;
  visit_runs(static_cast<std::int32_t>(start), [&](const FormatRun& run) {
    const auto at = static_cast<std::size_t>(run.start);
    const std::size_t from = start > at ? start - at : 0;
    text.append(run.text.substr(std::min(from, run.text.size()), length - text.size()));
    return text.size() < length;
  });
  return text;
}

void RichEdit::put_text(Scope scope, std::u16string_view text) {
  const TextDefaults defaults = text_defaults(scope);
  Document content = richtext::plain_document(text, defaults.format);
  content.align({0, content.size()}, defaults.alignment);
  put_content(scope, std::move(content));
}

std::u16string RichEdit::rtf(Scope scope) const {
  const Document part = content(scope);
  return richtext::write_rtf(part, {0, part.size()}, text_defaults(scope).format);
}

void RichEdit::put_rtf(Scope scope, std::u16string_view rtf) {
  put_content(scope, richtext::read_document(rtf, text_defaults(scope).format));
}

}  // namespace qel::platform
