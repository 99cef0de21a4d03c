#include "LosslessTexts.h"

#include <optional>
#include <string>

#include "MarkupWriter.h"
#include "qel/base/Utf8.h"
#include "qel/model/TextAttribute.h"

namespace qel::capi::lossless {
namespace {

using style_codes::CodeState;

class Plain : public TextSink {
 public:
  explicit Plain(Buffer& output) : output_(output) {}

  void text(std::u16string_view text, const CodeState& /*state*/) override {
    scratch_.clear();
    append_utf8(scratch_, text);
    output_.append(scratch_);
  }
  void line_break(const CodeState& /*state*/) override { output_.append("\n"); }

 private:
  Buffer& output_;
  std::string scratch_;
};

/// Writes the span.
class Part : public SpanSink {
 public:
  Part(Buffer& output, Span span) : SpanSink(span), writer_(output) {}

  bool is_done() const override { return is_cut_; }
  void finish() override { writer_.finish(is_cut_); }

 private:
  void part(Place place, std::u16string_view text, const CodeState& state) override {
    if (place == Place::within) writer_.text(text, state);
    is_cut_ = place == Place::behind;
  }
  void break_at(Place place, const CodeState& state) override {
    if (place == Place::within) writer_.line_break(state);
    is_cut_ = place == Place::behind;
  }

  MarkupWriter writer_;
  bool is_cut_ = false;
};

/// Writes what it reads to a writer that goes on.
class Insertion : public TextSink {
 public:
  explicit Insertion(MarkupWriter& writer) : writer_(writer) {}

  void text(std::u16string_view text, const CodeState& state) override {
    writer_.text(text, state);
  }
  void line_break(const CodeState& state) override { writer_.line_break(state); }

 private:
  MarkupWriter& writer_;
};

/// Writes a replacement in place of the span.
class Stuffed : public SpanSink {
 public:
  Stuffed(Buffer& output, Span span, std::string_view replacement, const convert::Options& options)
      : SpanSink(span), writer_(output), replacement_(replacement), options_(options) {}

  void finish() override {
    insert();
    writer_.finish(false);
  }

 private:
  void part(Place place, std::u16string_view text, const CodeState& state) override {
    if (place != Place::before) insert();
    if (place != Place::within) writer_.text(text, state);
  }
  void break_at(Place place, const CodeState& state) override {
    if (place != Place::before) insert();
    if (place != Place::within) writer_.line_break(state);
  }

  void insert() {
    if (!replacement_) return;
    Insertion insertion(writer_);
    read_markup(*replacement_, options_, insertion);
    replacement_.reset();
  }

  MarkupWriter writer_;
  std::optional<std::string_view> replacement_;
  const convert::Options& options_;
};

/// Sets the attribute in the span, or clears it where the first of its characters has it.
class Toggled : public SpanSink {
 public:
  Toggled(Buffer& output, Span span, std::int32_t attribute)
      : SpanSink(span), writer_(output), attribute_(attribute) {}

  void finish() override { writer_.finish(false); }

 private:
  void part(Place place, std::u16string_view text, const CodeState& state) override {
    writer_.text(text, place == Place::within ? changed(state) : state);
  }
  void break_at(Place /*place*/, const CodeState& state) override { writer_.line_break(state); }

  CodeState changed(const CodeState& state) {
    if (is_on_ && state == last_) return last_changed_;
    iStyle style = style_codes::style_of(state);
    if (!is_on_) is_on_ = !has_attribute(style, attribute_);
    set_attribute(style, attribute_, *is_on_);
    last_ = state;
    last_changed_ = style_codes::state_of(style);
    return last_changed_;
  }

  MarkupWriter writer_;
  std::int32_t attribute_;
  std::optional<bool> is_on_;  // known from the first character on
  CodeState last_;
  CodeState last_changed_;
};

}  // namespace

void plain(Buffer& output, std::string_view markup, const convert::Options& options) {
  Plain sink(output);
  read_markup(markup, options, sink);
}

void mid(Buffer& output, std::string_view markup, Span span, const convert::Options& options) {
  Part sink(output, span);
  read_markup(markup, options, sink);
}

void stuff(Buffer& output, std::string_view markup, Span span, std::string_view replacement,
           const convert::Options& options) {
  Stuffed sink(output, span, replacement, options);
  read_markup(markup, options, sink);
}

void toggle(Buffer& output, std::string_view markup, std::int32_t attribute, Span span,
            const convert::Options& options) {
  Toggled sink(output, span, attribute);
  read_markup(markup, options, sink);
}

}  // namespace qel::capi::lossless
