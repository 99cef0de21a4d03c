#include "qel/rtf/MarkupWriter.h"

#include <cstddef>
#include <utility>

#include "qel/base/Scan.h"
#include "qel/richtext/RtfFormats.h"
#include "qel/rtf/Characters.h"
#include "qel/rtf/CodeTable.h"

namespace qel::rtf {
namespace {

constexpr std::u16string_view line_break = u"\r\n";
constexpr std::size_t code_length = 3;

/// Whether a text that ends with this, a slash and perhaps more, may go on as a code.
bool begins_code(std::u16string_view end) {
  return end.size() == 1 || (end.size() == 2 && is_code_tail(end[1], u'0'));
}

}  // namespace

MarkupWriter::MarkupWriter(const RTFParser& parser, const QELIndexFonts& fonts,
                           const QELIndexColors& colors, Origin origin)
    : parser_(parser),
      origin_(origin),
      walk_(markup_spelling, fonts, colors, origin, parser.way(), markup_) {
  if (!parser.get_Lossless()) return;
  lossless_.emplace(markup_, style_codes::CodeSet::lossless);
}

void MarkupWriter::add(const richtext::CharFormat& format, std::u16string_view text) {
  if (text.empty()) return;
  if (lossless_) {
    lossless_->text(text, walk_.indexes().state(format));
    return;
  }
  if (beginning_.size() <= line_break.size()) {
    beginning_.append(text.substr(0, line_break.size() + 1));
  }
  ends_with_break_ = text.back() == u'\n';
  std::u16string joined;
  if (!held_.empty()) {
    joined = std::exchange(held_, {});
    if (richtext::are_equal_in_rtf(held_format_, format)) {
      text = joined.append(text);
    } else {
      append(joined);
    }
  }
  walk_.enter(format);
  if (origin_ == Origin::box) {
    append_protected(format, text);
  } else {
    append(text);
  }
}

void MarkupWriter::append_protected(const richtext::CharFormat& format, std::u16string_view text) {
  std::size_t written = 0;
  for (std::size_t slash = 0;; ++slash) {
    slash = find_any<u'/'>(text, slash);
    if (slash == text.size()) break;
    if (is_code(text.substr(slash, code_length))) {
      append(text.substr(written, slash - written));
      markup_.append(u"\\\\");
      written = slash + 1;
    } else if (begins_code(text.substr(slash))) {
      held_ = text.substr(slash);
      held_format_ = format;
      text = text.substr(0, slash);
      break;
    }
  }
  append(text.substr(written));
}

void MarkupWriter::append(std::u16string_view text) {
  append_characters(markup_, text, parser_, u"/nl");
}

std::u16string MarkupWriter::finish() {
  if (lossless_) {
    lossless_->finish(false);
    return std::move(markup_);
  }
  if (beginning_ == line_break && !parser_.get_RecognizeCRLF()) return {};
  append(held_);
  const bool may_drop_blank = origin_ == Origin::rtf || ends_with_break_;
  if (parser_.get_ConvertNLToSpace() && may_drop_blank && markup_.ends_with(u' ')) {
    markup_.pop_back();
  }
  walk_.close();
  return std::move(markup_);
}

}  // namespace qel::rtf
