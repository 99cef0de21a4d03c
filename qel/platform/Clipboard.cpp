#include "qel/platform/Clipboard.h"

#include <utility>

#include "qel/richtext/DocumentReader.h"

namespace qel::platform {

using richtext::Document;

DragData Clipboard::data() const {
  DragData data;
  const auto rtf = this->rtf();
  const bool has_rtf = rtf && !rtf->empty();
  if (rtf) data.put(rtf_format, *rtf);
  // It may be large, and nobody looks at it where there is RTF.
  if (const auto html = has_rtf ? std::nullopt : this->html()) data.put(html_format, *html);
  if (const auto text = this->text()) data.put(text_format, *text);
  return data;
}

DragData Clipboard::text_alone() const {
  DragData data;
  if (const auto text = this->text()) data.put(text_format, *text);
  return data;
}

std::optional<Document> read_transfer(DragData& data, const Clipboard* clipboard,
                                      const richtext::CharFormat& base,
                                      richtext::Alignment alignment, bool in_one_line) {
  std::optional<Document> content;
  const auto rtf = data.get(rtf_format);
  if (rtf && !rtf->empty()) {
    content = richtext::read_document(*rtf, base);
  } else {
    content = read_html(data, clipboard, base);
  }
  if (!content) {
    const auto text = data.get(text_format);
    if (!text) return {};
    content = richtext::plain_document(*text, base);
    content->align({0, content->size()}, alignment);
  }
  return in_one_line ? richtext::in_one_line(*content) : std::move(content);
}

std::optional<Document> read_html(DragData& data, const Clipboard* clipboard,
                                  const richtext::CharFormat& base) {
  const auto html = clipboard == nullptr ? std::nullopt : data.get(html_format);
  auto content = html ? clipboard->read_html(*html, base) : std::nullopt;
  // A picture has no text, but its address may stand beside it.
  return content && content->size() > 0 ? std::move(content) : std::nullopt;
}

}  // namespace qel::platform
