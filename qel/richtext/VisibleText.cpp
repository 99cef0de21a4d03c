#include "qel/richtext/VisibleText.h"

#include <algorithm>
#include <functional>

#include "qel/base/Records.h"
#include "qel/richtext/CharFormat.h"
#include "qel/richtext/CodePage.h"
#include "qel/richtext/RtfReader.h"
#include "qel/richtext/RtfTokens.h"

namespace qel::richtext {

/// Records the characters, and where in the RTF they come from.
class VisibleText::Collector : public DocumentSink {
 public:
  explicit Collector(VisibleText& visible)
      : visible_(visible),
        reader_(CharFormat(), *this,
                visible.rtf_.starts_with(u"{\\rtf") ? RtfReader::Extent::document
                                                    : RtfReader::Extent::fragment),
        token_(reader_.token()) {}

  void read() {
    reader_.read(visible_.rtf_, true);
    reader_.finish();
  }

  FormatId intern(const CharFormat& /*format*/) override { return 0; }

  void text(std::u16string_view text, FormatId /*format*/) override {
    const std::u16string_view rtf = visible_.rtf_;
    const std::less<> before;
    if (!before(text.data(), rtf.data()) && before(text.data(), rtf.data() + rtf.size())) {
      add(text, static_cast<std::size_t>(text.data() - rtf.data()), Spelling::plain);
      return;
    }
    Spelling spelling = spelling_of(rtf.substr(token_), text);
    auto& pieces = visible_.pieces_;
    if (!pieces.empty() && pieces.back().position == token_) {
      // One word gave several characters, or released bytes that were waiting.
      pieces.back().spelling = spelling = Spelling::fixed;
    }
    add(text, token_, spelling);
  }

  void paragraph_break(FormatId /*format*/, Alignment /*alignment*/) override {
    add(u"\n", token_, Spelling::fixed);
  }

  void finish(Alignment /*alignment*/) override {}

 private:
  void add(std::u16string_view text, std::size_t position, Spelling spelling) {
    visible_.text_.append(text);
    visible_.pieces_.push_back({position, text.size(), spelling});
  }

  VisibleText& visible_;
  RtfReader reader_;
  const std::size_t& token_;
};

VisibleText::VisibleText(std::u16string_view rtf) : rtf_(rtf) { Collector(*this).read(); }

/// The spelling of a `text` that is not there literally. A token that only ended the wait for the
/// rest of a character, or completed one of several bytes, is not a spelling of the text.
VisibleText::Spelling VisibleText::spelling_of(std::u16string_view token,
                                               std::u16string_view text) {
  RtfScanner<char16_t> scanner(token);
  if (text.size() != 1 || scanner.at_end() || scanner.next() != u'\\' || scanner.at_end()) {
    return Spelling::fixed;
  }
  if (scanner.peek() == u'\'') {
    scanner.skip(1);
    const int byte = scanner.hex_byte();
    const bool is_western =
        byte >= 0 && decode_western(static_cast<std::uint8_t>(byte)) == text.front();
    return is_western ? Spelling::byte : Spelling::fixed;
  }
  const ControlWord word = scanner.control_word();
  const bool is_unicode = word.key == word_key("u") && word.parameter.given &&
                          static_cast<char16_t>(word.parameter.value) == text.front();
  return is_unicode ? Spelling::unicode : Spelling::fixed;
}

/// Appends the piece with the characters of `text` to `out`, and returns the position in the RTF
/// from which copying goes on: that of the piece itself if it stays.
std::size_t VisibleText::write(std::u16string& out, const Piece& piece,
                               std::u16string_view text) const {
  constexpr std::size_t prefix = 2;  // "\'" or "\u"
  if (piece.spelling == Spelling::plain) {
    out.append(text);
    return piece.position + text.size();
  }
  if (piece.spelling == Spelling::byte) {
    const auto byte = encode_western(text.front());
    if (!byte) return piece.position;
    append_hex_escape(out, *byte);
    return piece.position + prefix + 2;
  }
  out.append(u"\\u").append(records::from_integer(static_cast<std::int16_t>(text.front())));
  const std::size_t number = piece.position + prefix;
  const std::size_t digits = rtf_[number] == u'-' ? number + 1 : number;
  return std::min(rtf_.find_first_not_of(u"0123456789", digits), rtf_.size());
}

std::u16string VisibleText::with(std::u16string_view text) const {
  std::u16string out;
  out.reserve(rtf_.size());
  std::size_t kept = 0;
  std::size_t at = 0;
  for (const Piece& piece : pieces_) {
    const std::u16string_view wanted = text.substr(at, piece.length);
    const bool stays =
        piece.spelling == Spelling::fixed || text_.compare(at, piece.length, wanted) == 0;
    at += piece.length;
    if (stays) continue;
    out.append(rtf_, kept, piece.position - kept);
    kept = write(out, piece, wanted);
  }
  out.append(rtf_, kept);
  return out;
}

}  // namespace qel::richtext
