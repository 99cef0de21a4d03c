#include "qel/rtf/MarkupWriter.h"

#include <utility>

#include "qel/base/Scan.h"
#include "qel/richtext/RtfFormats.h"
#include "qel/rtf/Characters.h"
#include "qel/rtf/CodeTable.h"

namespace qel::rtf {
namespace {

using style_codes::CodeState;

constexpr std::u16string_view line_break_text = u"\r\n";
constexpr std::size_t code_length = 3;

/// Whether a text that ends with this, a slash and perhaps more, may go on as a code.
bool begins_code(std::u16string_view end) {
  return end.size() == 1 || (end.size() == 2 && is_code_tail(end[1], u'0'));
}

}  // namespace

MarkupWriter::MarkupWriter(const RTFParser& parser)
    : parser_(parser), walk_(markup_spelling, parser.way(), markup_) {
  if (!parser.get_Lossless()) return;
  lossless_.emplace(markup_, style_codes::CodeSet::lossless);
}

void MarkupWriter::text(std::u16string_view text, const CodeState& state) {
  if (lossless_) {
    lossless_->text(text, state);
    return;
  }
  if (beginning_.size() <= line_break_text.size()) {
    beginning_.append(text.substr(0, line_break_text.size() + 1));
  }
  walk_.enter(state);
  if (text.empty()) return;
  ends_with_break_ = text.back() == u'\n';
  append_characters(markup_, text, parser_, u"/nl");
}

void MarkupWriter::finish(bool may_drop_blank) {
  if (lossless_) {
    lossless_->finish(false);
    return;
  }
  if (beginning_ == line_break_text && !parser_.get_RecognizeCRLF()) {
    markup_.clear();
    return;
  }
  if (parser_.get_ConvertNLToSpace() && may_drop_blank && markup_.ends_with(u' ')) {
    markup_.pop_back();
  }
  walk_.close();
}

BoxMarkupWriter::BoxMarkupWriter(const RTFParser& parser, const QELIndexFonts& fonts,
                                 const QELIndexColors& colors)
    : is_lossless_(parser.get_Lossless()),
      indexes_(fonts, colors, Origin::box, parser.way()),
      writer_(parser) {}

void BoxMarkupWriter::add(const richtext::CharFormat& format, std::u16string_view text) {
  if (text.empty()) return;
  if (is_lossless_) {
    writer_.text(text, indexes_.state(format));
    return;
  }
  std::u16string joined;
  if (!held_.empty()) {
    joined = std::exchange(held_, {});
    if (richtext::are_equal_in_rtf(held_format_, format)) {
      text = joined.append(text);
    } else {
      writer_.text(joined, indexes_.state(held_format_));
    }
  }
  add_protected(format, text);
}

void BoxMarkupWriter::add_protected(const richtext::CharFormat& format, std::u16string_view text) {
  const CodeState state = indexes_.state(format);
  std::size_t written = 0;
  for (std::size_t slash = 0;; ++slash) {
    slash = find_any<u'/'>(text, slash);
    if (slash == text.size()) break;
    if (is_code(text.substr(slash, code_length))) {
      writer_.text(text.substr(written, slash - written), state);
      writer_.protected_slash();
      written = slash + 1;
    } else if (begins_code(text.substr(slash))) {
      held_ = text.substr(slash);
      held_format_ = format;
      text = text.substr(0, slash);
      break;
    }
  }
  writer_.text(text.substr(written), state);
}

std::u16string BoxMarkupWriter::finish() {
  const bool ends_with_break = held_.empty() && writer_.ends_with_break();
  if (!held_.empty()) writer_.text(held_, indexes_.state(held_format_));
  writer_.finish(ends_with_break);
  return writer_.take();
}

}  // namespace qel::rtf
