#include "qel/convert/Lint.h"

#include <algorithm>
#include <array>
#include <optional>
#include <string>
#include <vector>

#include "qel/base/CaseMapping.h"
#include "qel/base/Scan.h"
#include "qel/convert/MarkupPieces.h"

namespace qel::convert {
namespace {

using Kind = Finding::Kind;

/// Counts the lines on the way through a text.
class Place {
 public:
  explicit Place(std::u16string_view text) : text_(text) {}

  /// `position` is not before that of the last call.
  Finding finding(Kind kind, std::size_t position, std::size_t length) {
    for (; next_break_ < position; next_break_ = find_any<u'\r', u'\n'>(text_, next_break_ + 1)) {
      if (text_.substr(next_break_, 2) == u"\r\n") continue;
      ++line_;
      line_begin_ = next_break_ + 1;
    }
    return {kind, position, length, line_, position - line_begin_ + 1};
  }

 private:
  std::u16string_view text_;
  std::size_t next_break_ = find_any<u'\r', u'\n'>(text_, 0);
  std::size_t line_ = 1;
  std::size_t line_begin_ = 0;
};

class Linter {
 public:
  Linter(std::u16string_view markup, const LintOptions& options,
         const std::function<void(const Finding&)>& report)
      : markup_(markup), options_(options), report_(report), place_(markup) {}

  void run() {
    for (std::size_t at = 0; at < markup_.size();) {
      const Piece piece = piece_at(markup_, at, options_.way);
      if (piece.is_text()) {
        enter(at);
        read_text(piece, at);
      } else {
        add(piece, at);
      }
      at += piece.characters.size();
    }
    enter(markup_.size());
    for (const auto& opened : opened_) {
      if (opened) report(opened->code, Kind::not_closed);
    }
  }

 private:
  /// A code or a line break behind the last text.
  struct Code {
    Finding place;
    Piece piece;
    bool is_needed = false;
    bool overlaps = false;
  };
  /// A format that is on.
  struct Opened {
    Finding code;
    std::size_t text = 0;  // the number of the text that it began with
  };
  /// What the codes behind the last text do to a format.
  struct Change {
    std::optional<std::size_t> last;  // the code that gives it its value
    std::optional<std::size_t> off;   // the last that switches it off
  };

  void report(Finding finding, Kind kind) const {
    finding.kind = kind;
    report_(finding);
  }

  void read_text(const Piece& piece, std::size_t at) {
    const auto report_as = [&](Kind kind) {
      report_(place_.finding(kind, at, piece.characters.size()));
    };
    if (piece.kind == Piece::Kind::escaped_code) report_as(Kind::escaped_code);
    if (piece.kind == Piece::Kind::unknown_code) report_as(Kind::unknown_code);
    if (piece.kind == Piece::Kind::code_of_rtf) {
      report_as(Kind::code_of_rtf);
      formats_.apply(piece);
      before_ = formats_;
    }
    constexpr std::size_t enough = 2;
    const std::size_t size = piece.characters.size();
    tail_.append(piece.characters.substr(size - std::min(size, enough)));
    tail_.erase(0, tail_.size() - std::min(tail_.size(), enough));
  }

  void add(const Piece& piece, std::size_t at) {
    const std::size_t index = codes_.size();
    const bool is_break = piece.kind == Piece::Kind::line_break;
    codes_.push_back(
        {place_.finding(Kind::no_effect, at, piece.characters.size()), piece, is_break});
    const std::size_t slot = is_break ? Formats::count : Formats::slot_of(piece.characters[1]);
    if (slot == Formats::count) return;
    const Formats::Value old = formats_[slot];
    formats_.apply(piece);
    if (formats_[slot] == old) return;
    changes_[slot].last = index;
    if (formats_[slot].of_text == 0) changes_[slot].off = index;
  }

  /// Judges the codes before the text at `at`; at the end of the markup there is none.
  void enter(std::size_t at) {
    if (codes_.empty()) return;
    for (std::size_t slot = 0; slot < Formats::count; ++slot) {
      if (formats_[slot] == before_[slot]) continue;
      const bool comes_on = formats_[slot].of_text != 0;
      if (comes_on && at == markup_.size()) continue;
      need_codes_of(slot);
    }
    need_codes_between_breaks();
    need_separator(markup_.substr(at, 2));
    report_codes();
    codes_.clear();
    changes_ = {};
    before_ = formats_;
    ++texts_;
  }

  void need_codes_of(std::size_t slot) {
    const Change& change = changes_[slot];
    Code& last = codes_[*change.last];
    last.is_needed = true;
    // Otherwise it acts on conversions to RTF only.
    if (formats_[slot].of_text == before_[slot].of_text) return;
    const bool was_on = before_[slot].of_text != 0;
    Code* const off = was_on && change.off ? &codes_[*change.off] : nullptr;
    if (off != nullptr) off->is_needed = true;
    if (was_on) (off != nullptr ? off : &last)->overlaps = ends_before_later(slot);
    opened_[slot].reset();
    if (formats_[slot].of_text != 0) opened_[slot] = {last.place, texts_};
  }

  bool ends_before_later(std::size_t slot) const {
    for (std::size_t other = 0; other < Formats::count; ++other) {
      const bool goes_on = opened_[other] && formats_[other] == before_[other];
      if (goes_on && opened_[slot] && opened_[other]->text > opened_[slot]->text) return true;
    }
    return false;
  }

  /// Keeps a code for its place, and those that undo what it does.
  void keep(Code& code) {
    code.is_needed = true;
    const std::size_t slot = Formats::slot_of(code.piece.characters[1]);
    Formats formats = before_;
    formats.apply(code.piece);
    if (slot == Formats::count || formats[slot] == before_[slot]) return;
    if (changes_[slot].off) codes_[*changes_[slot].off].is_needed = true;
    if (changes_[slot].last) codes_[*changes_[slot].last].is_needed = true;
  }

  /// Finds the codes without which CR and LF, two line breaks, would be one.
  void need_codes_between_breaks() {
    std::size_t last = codes_.size();
    for (std::size_t i = 0; i < codes_.size(); ++i) {
      if (!codes_[i].is_needed) continue;
      const bool would_be_one = last + 1 < i && codes_[last].piece.characters == u"\r" &&
                                codes_[i].piece.characters == u"\n";
      if (would_be_one) keep(codes_[last + 1]);
      last = i;
    }
  }

  /// Finds the code that keeps the texts around it apart, or a tilde from the code behind it.
  void need_separator(std::u16string_view following) {
    const auto needed =
        std::find_if(codes_.begin(), codes_.end(), [](const Code& code) { return code.is_needed; });
    if (needed == codes_.end()) {
      if (meet_as_code(tail_, following) == 0) return;
      keep(codes_.front());
    } else if (tail_.ends_with(u'~') &&
               begins_with_escaped_code(std::u16string(u"~").append(needed->piece.characters))) {
      keep(codes_.front());
    }
    tail_.clear();
  }

  void report_codes() const {
    for (const Code& code : codes_) {
      if (!code.is_needed) report(code.place, Kind::no_effect);
      if (code.overlaps) report(code.place, Kind::overlap);
      if (code.is_needed && code.piece.kind == Piece::Kind::code) check_tables(code);
    }
  }

  void check_tables(const Code& code) const {
    const char16_t letter = code.piece.characters[1];
    const auto index = static_cast<std::int16_t>(code.piece.characters[2] - u'0');
    if (index == 0) return;
    if (letter == u'f' && options_.fonts != nullptr) {
      const std::u16string name = options_.fonts->get_Font(index);
      const bool is_unused = name.empty() || equal_ignoring_case(name, QELIndexFonts::unused);
      if (is_unused) report(code.place, Kind::missing_font);
    }
    if (letter == u'y' && options_.colors != nullptr &&
        options_.colors->get_Color(index) == options_.colors->get_DefaultColor()) {
      report(code.place, Kind::missing_color);
    }
  }

  std::u16string_view markup_;
  const LintOptions& options_;
  const std::function<void(const Finding&)>& report_;
  Place place_;
  std::vector<Code> codes_;  // since the last text
  std::array<Change, Formats::count> changes_;
  Formats formats_;
  Formats before_;       // of the last text
  std::u16string tail_;  // the last characters of the text behind the last code that is needed
  std::size_t texts_ = 0;
  std::array<std::optional<Opened>, Formats::count> opened_;
};

}  // namespace

void lint(std::u16string_view markup, const LintOptions& options,
          const std::function<void(const Finding&)>& report) {
  Linter(markup, options, report).run();
}

}  // namespace qel::convert
