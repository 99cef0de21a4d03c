#include <algorithm>
#include <string>

#include "LosslessTexts.h"
#include "MarkupWriter.h"
#include "qel/base/Scan.h"
#include "qel/model/QELCode.h"
#include "qel/model/ReservedColors.h"
#include "qel/text/CaseRules.h"

namespace qel::capi::lossless {
namespace {

using style_codes::CodeState;

/// The words that titles leave in lower case.
const WordSet& title_words() {
  static const TextCase rules;
  return rules.ignored_words();
}

/// A code that is text keeps its case.
void mask_codes(std::u16string& text, std::size_t from) {
  for (std::size_t at = find_any<u'/'>(text, from); at < text.size();
       at = find_any<u'/'>(text, at + 1)) {
    const std::size_t length =
        length_of_code_as_text(std::u16string_view(text).substr(at), Way::lossless);
    std::fill_n(text.begin() + static_cast<std::ptrdiff_t>(at), length, title_rules::escaped);
  }
}

/// Puts the characters that were masked back.
void restore(std::u16string& masked, std::u16string_view text) {
  std::transform(text.begin(), text.end(), masked.begin(), masked.begin(),
                 [](char16_t before, char16_t after) {
                   const bool is_masked =
                       after == title_rules::escaped || after == title_rules::looked_through;
                   return is_masked ? before : after;
                 });
}

/// Writes the text with the case changed in the span, letter by letter.
class Changed : public TextSink {
 public:
  Changed(Buffer& output, Span span, CaseChange change)
      : writer_(output), cursor_(span), change_(change) {}

  void text(std::u16string_view text, const CodeState& state) override {
    const auto [begin, end] = cursor_.pass(text);
    if (begin == end) return writer_.text(text, state);
    changed_ = text;
    mask_codes(changed_, 0);
    case_rules::apply(changed_, {begin, end}, change_, title_words());
    restore(changed_, text);
    writer_.text(changed_, state);
  }
  void line_break(const CodeState& state) override {
    cursor_.pass(u"\n");
    writer_.line_break(state);
  }
  void finish() override { writer_.finish(false); }

 private:
  MarkupWriter writer_;
  SpanCursor cursor_;
  CaseChange change_;
  std::u16string changed_;
};

/// The whole text as the rules of titles see it, one unit for each unit: what they must not change
/// is masked. And where in it the span lies.
class Flat : public TextSink {
 public:
  explicit Flat(Span span) : cursor_(span) {}

  std::u16string& letters() { return text_; }
  title_rules::Span span() const { return {begin_, begin_ + size_}; }

  void text(std::u16string_view text, const CodeState& state) override {
    count(text);
    const std::size_t begin = text_.size();
    if (state.color == hidden_color) {
      text_.append(text.size(), title_rules::looked_through);
    } else {
      text_.append(text);
      mask_codes(text_, begin);
    }
  }
  void line_break(const CodeState& /*state*/) override {
    count(u"\n");
    text_.push_back(u'\n');
  }

 private:
  void count(std::u16string_view text) {
    const auto [begin, end] = cursor_.pass(text);
    begin_ += begin;
    size_ += end - begin;
  }

  std::u16string text_;
  SpanCursor cursor_;
  std::size_t begin_ = 0;
  std::size_t size_ = 0;
};

/// Writes the text with the letters of such a text.
class Relettered : public TextSink {
 public:
  Relettered(Buffer& output, std::u16string_view letters) : writer_(output), letters_(letters) {}

  void text(std::u16string_view text, const CodeState& state) override {
    changed_ = letters_.substr(0, text.size());
    restore(changed_, text);
    letters_.remove_prefix(text.size());
    writer_.text(changed_, state);
  }
  void line_break(const CodeState& state) override {
    letters_.remove_prefix(1);
    writer_.line_break(state);
  }
  void finish() override { writer_.finish(false); }

 private:
  MarkupWriter writer_;
  std::u16string_view letters_;
  std::u16string changed_;
};

}  // namespace

void change_case(Buffer& output, std::string_view markup, CaseChange change, Span span,
                 const convert::Options& options) {
  if (case_rules::changes_hidden_text(change)) {
    Changed sink(output, span, change);
    return read_markup(markup, options, sink);
  }
  Flat flat(span);
  read_markup(markup, options, flat);
  case_rules::apply(flat.letters(), flat.span(), change, title_words());
  Relettered sink(output, flat.letters());
  read_markup(markup, options, sink);
}

}  // namespace qel::capi::lossless
