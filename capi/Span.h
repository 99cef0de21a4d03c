#pragma once

#include <algorithm>
#include <cstddef>
#include <cstdint>

#include "MarkupReading.h"

namespace qel::capi {

/// Characters of a text, from `begin` up to `end`.
struct Span {
  std::size_t begin = 0;
  std::size_t end = SIZE_MAX;

  static Span of(std::size_t start, std::size_t count) {
    return {start, count > SIZE_MAX - start ? SIZE_MAX : start + count};
  }
};

/// Follows a text and tells where in it a span lies.
class SpanCursor {
 public:
  explicit SpanCursor(Span span) : span_(span) {}

  /// Which units of the text that comes next lie in the span.
  struct Units {
    std::size_t begin;
    std::size_t end;
  };
  Units pass(std::u16string_view text) {
    const std::size_t characters = count_characters(text);
    const Units units = {units_up_to(span_.begin, text, characters),
                         units_up_to(span_.end, text, characters)};
    position_ += characters;
    return units;
  }

 private:
  std::size_t units_up_to(std::size_t edge, std::u16string_view text,
                          std::size_t characters) const {
    if (edge <= position_) return 0;
    const std::size_t count = edge - position_;
    return count >= characters ? text.size() : unit_position(text, count);
  }

  Span span_;
  std::size_t position_ = 0;
};

/// Receives a text in the parts that lie before a span, in it and behind it.
class SpanSink : public TextSink {
 public:
  explicit SpanSink(Span span) : cursor_(span) {}

  void text(std::u16string_view text, const style_codes::CodeState& state) final {
    const auto [begin, end] = cursor_.pass(text);
    if (begin > 0) part(Place::before, text.substr(0, begin), state);
    if (end > begin) part(Place::within, text.substr(begin, end - begin), state);
    if (text.size() > end) part(Place::behind, text.substr(end), state);
  }

  void line_break(const style_codes::CodeState& state) final {
    const auto [begin, end] = cursor_.pass(u"\n");
    break_at(begin > 0 ? Place::before : end > 0 ? Place::within : Place::behind, state);
  }

 protected:
  enum class Place : std::uint8_t { before, within, behind };

  virtual void part(Place place, std::u16string_view text, const style_codes::CodeState& state) = 0;
  virtual void break_at(Place place, const style_codes::CodeState& state) = 0;

 private:
  SpanCursor cursor_;
};

}  // namespace qel::capi
