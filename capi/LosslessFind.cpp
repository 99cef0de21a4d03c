#include <string>

#include "LosslessTexts.h"
#include "qel/base/CaseMapping.h"
#include "qel/base/Search.h"
#include "qel/base/Utf16.h"

namespace qel::capi::lossless {
namespace {

using style_codes::CodeState;

/// What is looked at, with the case folded where it does not count: final forms of letters are
/// equal to the others.
void append_seen(std::u16string& seen, std::u16string_view text, bool ignores_case) {
  if (ignores_case) {
    seen.append(to_lower(to_upper(text)));
  } else {
    seen.append(text);
  }
}

class Seen : public TextSink {
 public:
  explicit Seen(bool ignores_case) : ignores_case_(ignores_case) {}

  const std::u16string& text() const { return text_; }

  void text(std::u16string_view text, const CodeState& /*state*/) override {
    append_seen(text_, text, ignores_case_);
  }
  void line_break(const CodeState& /*state*/) override { text_.push_back(u'\n'); }

 private:
  std::u16string text_;
  bool ignores_case_;
};

/// Searches what is read from a position on. It keeps no more than what a match could begin in.
class Finder : public SpanSink {
 public:
  Finder(std::u16string_view search, std::size_t start, bool ignores_case)
      : SpanSink({start, SIZE_MAX}), search_(search), start_(start), ignores_case_(ignores_case) {}

  std::size_t found() const { return found_; }
  bool is_done() const override { return found_ != SIZE_MAX; }
  void finish() override { look(); }

 private:
  static constexpr std::size_t enough = std::size_t{1} << 14U;

  void part(Place place, std::u16string_view text, const CodeState& /*state*/) override {
    if (place == Place::before || is_done()) return;
    append_seen(window_, text, ignores_case_);
    if (window_.size() >= enough + 2 * search_.size()) look();
  }
  void break_at(Place place, const CodeState& state) override { part(place, u"\n", state); }

  void look() {
    if (is_done() || window_.empty()) return;
    const std::size_t at = find_text(window_, search_);
    if (at != std::u16string_view::npos) {
      found_ = start_ + count_characters(std::u16string_view(window_).substr(0, at));
      return;
    }
    std::size_t passed = window_.size() - std::min(window_.size(), search_.size() - 1);
    if (passed > 0 && is_pair_at(window_, passed - 1)) --passed;
    start_ += count_characters(std::u16string_view(window_).substr(0, passed));
    window_.erase(0, passed);
  }

  std::u16string_view search_;
  std::size_t start_;  // of the window
  bool ignores_case_;
  std::u16string window_;
  std::size_t found_ = SIZE_MAX;
};

}  // namespace

std::size_t find(std::string_view markup, std::string_view search, std::size_t start,
                 bool ignores_case, const convert::Options& options) {
  Seen seen(ignores_case);
  read_markup(search, options, seen);
  if (seen.text().empty()) {
    // Nothing is found everywhere, but not in an empty text.
    const std::size_t size = length(markup, options);
    return size > 0 && start <= size ? start : SIZE_MAX;
  }
  Finder finder(seen.text(), start, ignores_case);
  read_markup(markup, options, finder);
  return finder.found();
}

}  // namespace qel::capi::lossless
