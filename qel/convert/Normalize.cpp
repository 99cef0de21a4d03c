#include "qel/convert/Normalize.h"

#include <array>
#include <cstddef>
#include <cstdint>
#include <utility>

#include "qel/convert/MarkupPieces.h"

namespace qel::convert {
namespace {

class Normalizer {
 public:
  explicit Normalizer(std::u16string_view markup) : markup_(markup) { out_.reserve(markup.size()); }

  std::u16string result(const std::function<bool()>& stop) && {
    constexpr std::size_t between_questions = std::size_t{1} << 14U;
    std::size_t asked = 0;
    for (std::size_t at = 0; at < markup_.size();) {
      if (stop && at - asked >= between_questions) {
        if (stop()) break;
        asked = at;
      }
      const Piece piece = piece_at(markup_, at, Way::lossless);
      read(piece, at);
      at += piece.characters.size();
    }
    finish();
    return std::move(out_);
  }

 private:
  void read(const Piece& piece, std::size_t at) {
    if (piece.kind == Piece::Kind::code) {
      formats_.apply(piece);
      has_codes_ = true;
    } else if (piece.kind == Piece::Kind::line_break) {
      // A carriage return would become one with a line feed from which a code parted it.
      breaks_.append(piece.characters.front() == u'/' ? piece.characters : u"\n");
    } else {
      enter(at);
      out_.append(piece.characters);
      if (piece.kind != Piece::Kind::code_of_rtf) return;
      formats_.apply(piece);
      written_.apply(piece);
    }
  }

  /// Writes what comes between the last text and the one at `at`.
  void enter(std::size_t at) {
    if (!breaks_.empty() || has_changed()) {
      write_changes();
    } else if (has_codes_) {
      keep_apart(markup_.substr(at, 2));
    }
    has_codes_ = false;
  }

  void finish() {
    for (std::size_t slot = 0; slot < Formats::count; ++slot) {
      if (formats_[slot].of_text != 0) formats_[slot] = written_[slot];
    }
    if (!breaks_.empty() || has_changed()) write_changes();
  }

  bool has_changed(std::size_t slot) const { return formats_[slot] != written_[slot]; }
  bool has_changed() const {
    for (std::size_t slot = 0; slot < Formats::count; ++slot) {
      if (has_changed(slot)) return true;
    }
    return false;
  }

  void write_changes() {
    if (out_.ends_with(u'~')) write_behind_tilde();
    for (std::size_t slot = Formats::count; slot-- > 0;) switch_off(slot);
    write_breaks();
    for (std::size_t slot = 0; slot < Formats::count; ++slot) {
      if (has_changed(slot)) write_code(slot, formats_[slot].of_text);
    }
  }

  /// A code that a tilde does not make text. One that has to be written anyway is best.
  void write_behind_tilde() {
    if (breaks_.empty()) {
      write_code(Formats::small_caps, formats_[Formats::small_caps].of_text);
    } else {
      write_breaks();
    }
  }

  void switch_off(std::size_t slot) {
    const bool goes_lower = formats_[slot].of_text < written_[slot].of_text;
    if (has_changed(slot) && (goes_lower || formats_[slot].of_text == 0)) write_code(slot, 0);
  }

  void write_breaks() {
    out_.append(breaks_);
    breaks_.clear();
  }

  void write_code(std::size_t slot, std::uint8_t value) {
    const std::array code = {u'/', Formats::letters[slot], static_cast<char16_t>(u'0' + value)};
    out_.append(code.data(), code.size());
    written_[slot] = {value, value};
  }

  /// Keeps the text and the one that follows it from making a code. A code that is written ends in
  /// nothing that a code or its tilde could begin with.
  void keep_apart(std::u16string_view following) {
    const std::size_t from_slash = meet_as_code(out_, following);
    if (from_slash == 0) return;
    const std::size_t slash = out_.size() - from_slash;
    const char16_t second = from_slash == 1 ? following[0] : out_.back();
    if (is_escapable(second, following[2 - from_slash])) {
      out_.insert(slash, 1, u'~');
      return;
    }
    out_.insert(slash + 1, written_[Formats::bold].of_text != 0 ? u"/b1" : u"/b0");
  }

  std::u16string_view markup_;
  std::u16string out_;
  std::u16string breaks_;   // since the last text
  bool has_codes_ = false;  // there were codes since the last text
  Formats formats_;
  Formats written_;
};

}  // namespace

std::u16string normalized(std::u16string_view markup, const std::function<bool()>& stop) {
  return Normalizer(markup).result(stop);
}

}  // namespace qel::convert
