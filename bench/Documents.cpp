#include "Documents.h"

#include <array>
#include <cstdint>
#include <map>
#include <random>
#include <string_view>
#include <utility>

#include "qel/platform/Common.h"
#include "qel/richtext/RtfBytes.h"
#include "qel/rtf/RTFParser.h"

namespace qel::bench {
namespace {

constexpr std::size_t characters_between_changes = 40;
constexpr std::size_t characters_in_paragraph = 320;

struct Emphasis {
  std::u16string_view on;
  std::u16string_view off;
  std::u16string_view markdown;
};

// Markdown knows two kinds of emphasis; they take turns.
constexpr std::array<Emphasis, 12> emphases = {{
    {u"/b1", u"/b0", u"**"},
    {u"/i1", u"/i0", u"*"},
    {u"/u1", u"/u0", u"**"},
    {u"/k1", u"/k0", u"*"},
    {u"/p1", u"/p0", u"*"},
    {u"/s1", u"/s0", u"**"},
    {u"/f1", u"/f0", u"*"},
    {u"/f2", u"/f0", u"*"},
    {u"/f3", u"/f0", u"**"},
    {u"/y1", u"/y0", u"**"},
    {u"/y2", u"/y0", u"*"},
    {u"/y3", u"/y0", u"**"},
}};

constexpr std::array<std::u16string_view, 48> words = {
    u"a",         u"the",      u"of",         u"and",      u"to",        u"in",      u"that",
    u"it",        u"with",     u"for",        u"as",       u"was",       u"on",      u"are",
    u"by",        u"this",     u"from",       u"which",    u"time",      u"people",  u"water",
    u"light",     u"house",    u"river,",     u"mountain", u"under",     u"between", u"always",
    u"garden",    u"morning,", u"letter",     u"another",  u"question;", u"without", u"evening",
    u"simple",    u"against",  u"children",   u"remember", u"weather.",  u"nothing", u"language",
    u"caf\u00E9", u"window",   u"na\u00EFve", u"yellow",   u"\u00FCber", u"thousand"};

/// The numbers of the engine are the same everywhere; those of the standard distributions are not.
class Prose {
 public:
  std::size_t below(std::size_t limit) { return engine_() % limit; }

  /// Words that take about `length` characters, with a blank between but not around them.
  std::u16string span(std::size_t length) {
    std::u16string text(words[below(words.size())]);
    while (text.size() < length) text.append(u" ").append(words[below(words.size())]);
    return text;
  }

 private:
  std::mt19937 engine_{20'240'229};
};

struct Text {
  std::u16string markup;
  std::u16string markdown;
};

void append_paragraph(Text& text, Prose& prose) {
  for (std::size_t length = 0; length < characters_in_paragraph;) {
    const std::u16string plain = prose.span(characters_between_changes);
    const std::u16string marked = prose.span(characters_between_changes);
    const Emphasis& emphasis = emphases[prose.below(emphases.size())];
    text.markup.append(plain).append(u" ").append(emphasis.on).append(marked);
    text.markup.append(emphasis.off).append(u" ");
    text.markdown.append(plain).append(u" ").append(emphasis.markdown).append(marked);
    text.markdown.append(emphasis.markdown).append(u" ");
    length += plain.size() + marked.size() + 2;
  }
  text.markup.append(u"end./nl");
  text.markdown.append(u"end.\n\n");
}

Text generate(std::size_t bytes) {
  Text text;
  Prose prose;
  while (text.markup.size() < bytes) append_paragraph(text, prose);
  return text;
}

/// The words above have no character that takes more than two bytes.
std::string to_utf8(std::u16string_view text) {
  std::string bytes;
  bytes.reserve(text.size() + text.size() / 16);
  for (const char16_t c : text) {
    if (c >= 0x80) bytes.push_back(static_cast<char>(0xC0U | (c >> 6U)));
    bytes.push_back(static_cast<char>(c < 0x80 ? c : (0x80U | (c & 0x3FU))));
  }
  return bytes;
}

Documents make(std::size_t bytes) {
  const Common::ConversionSlots slots;
  QELIndexFonts fonts;
  const QELIndexColors colors;
  Text text = generate(bytes);
  Documents result;
  result.markup_file = to_utf8(text.markup);
  result.markup_bytes = result.markup_file.size();
  result.markdown = to_utf8(text.markdown);
  result.rtf = RTFParser().QELToRTF(text.markup, fonts, colors);
  result.rtf_bytes = richtext::rtf_to_bytes(result.rtf);
  result.markup = std::move(text.markup);
  return result;
}

}  // namespace

const Documents& documents(std::size_t bytes) {
  static std::map<std::size_t, Documents> kept;
  const auto [entry, is_new] = kept.try_emplace(bytes);
  if (is_new) entry->second = make(bytes);
  return entry->second;
}

std::string markup_file(std::size_t bytes) { return to_utf8(generate(bytes).markup); }

}  // namespace qel::bench
