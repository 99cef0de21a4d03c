#include "pathological/Shapes.h"

#include <string>

#include "support/Text.h"

namespace qel::hostile {
namespace {

using test::repeated;

/// The pieces, with a number that counts up between them.
std::u16string numbered(std::u16string_view before, std::u16string_view after, std::size_t size,
                        std::size_t first = 1) {
  std::u16string text;
  for (std::size_t i = first; i < first + size; ++i) {
    text.append(before);
    for (const char digit : std::to_string(i)) text.push_back(static_cast<char16_t>(digit));
    text.append(after);
  }
  return text;
}

}  // namespace

const std::vector<Shape>& markup_shapes() {
  static const std::vector<Shape> shapes = {
      {"a long word", [](std::size_t size) { return repeated(u"aaaaaaaa", size); }},
      {"words", [](std::size_t size) { return repeated(u"word ", size); }},
      {"a long line with blanks only",
       [](std::size_t size) { return repeated(u"        ", size); }},
      {"tabs", [](std::size_t size) { return repeated(u"a\t", size); }},
      {"line codes", [](std::size_t size) { return repeated(u"a/nl", size); }},
      {"breaks", [](std::size_t size) { return repeated(u"\r\n", size); }},
      {"a code at every other character",
       [](std::size_t size) { return repeated(u"/b1a/b0b", size); }},
      {"an attribute that is never ended",
       [](std::size_t size) { return repeated(u"/b1a", size); }},
      {"fonts and colours", [](std::size_t size) { return repeated(u"/f1/y2a/f0/y0b", size); }},
      {"fonts that add up", [](std::size_t size) { return repeated(u"/f1a/f9/y3b", size); }},
      {"codes of every kind",
       [](std::size_t size) {
         return repeated(u"/b1/i1/u1/c1/k1/p1/s1a/b0/i0/u0/c0/k0/p0/s0b", size);
       }},
      {"codes without text", [](std::size_t size) { return repeated(u"/b1/i1/b0/i0", size); }},
      {"tildes", [](std::size_t size) { return repeated(u"~", size); }},
      {"slashes", [](std::size_t size) { return repeated(u"/", size); }},
      {"slashes and tildes", [](std::size_t size) { return repeated(u"~/", size); }},
      {"escaped codes", [](std::size_t size) { return repeated(u"~/b1", size); }},
      {"tildes before escaped codes", [](std::size_t size) { return repeated(u"~~/b1", size); }},
      {"codes kept apart", [](std::size_t size) { return repeated(u"//b0c1", size); }},
      {"the beginning of a line code", [](std::size_t size) { return repeated(u"/n", size); }},
      {"beginnings of codes in other formats",
       [](std::size_t size) { return repeated(u"/n/b1l/b0", size); }},
      {"placeholders", [](std::size_t size) { return repeated(u"<b1]<", size); }},
      {"backslashes", [](std::size_t size) { return repeated(u"\\\\b1", size); }},
      {"codes of RTF", [](std::size_t size) { return repeated(u"/r1a/l1b", size); }},
      {"brackets and quotes", [](std::size_t size) { return repeated(u"\"(a\" ", size); }},
      {"letters with accents", [](std::size_t size) { return repeated(u"e\u0301\u0302", size); }},
      {"characters of several",
       [](std::size_t size) { return repeated(u"\U0001F469\u200D", size); }},
      {"from the right", [](std::size_t size) { return repeated(u"\u05D0(1 a", size); }},
      {"numbers and points", [](std::size_t size) { return repeated(u"1.a,-", size); }},
  };
  return shapes;
}

namespace {

std::vector<Shape> group_shapes() {
  return {
      {"groups",
       [](std::size_t size) { return repeated(u"{", size) + u"a" + repeated(u"}", size); }},
      {"groups that stay open", [](std::size_t size) { return repeated(u"{\\b a", size); }},
      {"formats in groups",
       [](std::size_t size) { return numbered(u"{\\i\\fs", u" a", size) + repeated(u"b}", size); }},
      {"destinations in destinations",
       [](std::size_t size) { return repeated(u"{\\*\\x a", size); }},
      {"as many fonts as text",
       [](std::size_t size) {
         return u"{\\fonttbl" + numbered(u"{\\f", u" Font;}", size) + u"}" +
                numbered(u"\\f", u" a", size);
       }},
      {"fonts with names of their own",
       [](std::size_t size) {
         return u"{\\fonttbl" + numbered(u"{\\f1 Font", u";}", size) + u"}" +
                numbered(u"\\f", u" a", size);
       }},
      {"one font, named again",
       [](std::size_t size) {
         return repeated(u"{\\fonttbl{\\f1 A;}{\\f2 B;}}\\f1 a\\f2 b", size);
       }},
  };
}

std::vector<Shape> table_shapes() {
  return {
      {"as many colours as text",
       [](std::size_t size) {
         return u"{\\colortbl" + numbered(u"\\red1\\green", u"\\blue3;", size) + u"}" +
                numbered(u"\\cf", u" a", size);
       }},
      {"colours, one after the other",
       [](std::size_t size) { return numbered(u"{\\colortbl;\\red", u";}\\cf1 a", size); }},
      {"a long font name",
       [](std::size_t size) {
         return u"{\\fonttbl{\\f1 " + repeated(u"long ", size) + u";}}\\f1 a";
       }},
      {"a font name with destinations",
       [](std::size_t size) {
         return u"{\\fonttbl{\\f1 " + repeated(u"a{\\*\\falt b}", size) + u";}}\\f1 a";
       }},
      {"long font names",
       [](std::size_t size) {
         return u"{\\fonttbl" +
                numbered(u"{\\f", u" " + std::u16string(200, u'x') + u";}", size / 10) + u"}" +
                repeated(u"\\f1 a\\f2 b", size);
       }},
      {"as many sizes as text", [](std::size_t size) { return numbered(u"\\fs", u" a", size); }},
  };
}

std::vector<Shape> word_shapes() {
  return {
      {"words", [](std::size_t size) { return repeated(u"\\b a\\b0 b", size); }},
      {"a word that goes on",
       [](std::size_t size) { return u"\\" + repeated(u"zabcdefghi", size); }},
      {"a number that goes on",
       [](std::size_t size) { return u"\\b" + repeated(u"0123456789", size); }},
      {"signs", [](std::size_t size) { return repeated(u"\\b-", size); }},
      {"binary data", [](std::size_t size) { return repeated(u"\\bin1 xa", size); }},
      {"binary data without end",
       [](std::size_t size) { return u"\\bin999999999 " + repeated(u"x\\bin9 ", size); }},
      {"no binary data", [](std::size_t size) { return repeated(u"\\bin0 \\bin", size); }},
      {"backslashes before binary data",
       [](std::size_t size) { return repeated(u"\\\\\\\\", size) + u"\\bin1 x"; }},
      {"characters by number",
       [](std::size_t size) { return repeated(u"\\uc3\\u8364 ???\\uc0\\u233", size); }},
      {"replacements that stay away",
       [](std::size_t size) { return u"\\uc2147483647" + repeated(u"\\u8364 a", size); }},
      {"replacements in groups",
       [](std::size_t size) { return repeated(u"{\\uc2\\u8364 ", size); }},
      {"halves of pairs",
       [](std::size_t size) { return repeated(u"\\u-10179?\\u-10179?\\u-8704?", size); }},
      {"characters of two bytes",
       [](std::size_t size) { return u"\\ansicpg932 " + repeated(u"\\'82\\'a0", size); }},
      {"first bytes alone",
       [](std::size_t size) { return u"\\ansicpg932 " + repeated(u"\\'82", size); }},
      {"code pages",
       [](std::size_t size) {
         return repeated(u"\\ansicpg932 \\'82\\'a0\\ansicpg1251 \\'e9", size / 4);
       }},
      {"hexadecimal without digits", [](std::size_t size) { return repeated(u"\\'", size); }},
  };
}

std::vector<Shape> part_shapes() {
  return {
      {"one long line", [](std::size_t size) { return repeated(u"abcdefgh ", size); }},
      {"paragraphs", [](std::size_t size) { return repeated(u"\\pard\\qc a\\par ", size); }},
      {"breaks that count nothing", [](std::size_t size) { return repeated(u"\r\n", size); }},
      {"fields",
       [](std::size_t size) {
         return repeated(u"{\\field{\\*\\fldinst SYMBOL 183 \\\\f Symbol}{\\fldrslt b}}", size);
       }},
      {"fields in fields",
       [](std::size_t size) {
         return repeated(u"{\\field{\\*\\fldinst SYMBOL 183}{\\fldrslt a", size);
       }},
      {"a long instruction",
       [](std::size_t size) {
         return u"{\\field{\\*\\fldinst " + repeated(u"SYMBOL ", size) + u"}}";
       }},
      {"list marks",
       [](std::size_t size) { return repeated(u"{\\listtext 1.\\tab}a\\par ", size); }},
      {"a long list mark",
       [](std::size_t size) { return u"{\\listtext " + repeated(u"1.{a}", size) + u"\\tab}a"; }},
      {"notes", [](std::size_t size) { return repeated(u"a{\\footnote b{\\i c}}", size); }},
      {"text boxes in text boxes",
       [](std::size_t size) { return repeated(u"{\\shptxt a\\par ", size); }},
      {"characters twice", [](std::size_t size) { return repeated(u"{\\upr{a}{\\*\\ud b", size); }},
      {"slashes", [](std::size_t size) { return repeated(u"/", size); }},
      {"codes as text", [](std::size_t size) { return repeated(u"/b1~/c1/nl", size); }},
      {"tabs and cells",
       [](std::size_t size) { return repeated(u"\\trowd\\tab a\\cell\\row", size); }},
      {"named characters",
       [](std::size_t size) { return repeated(u"\\endash \\~\\lquote a", size); }},
  };
}

}  // namespace

const std::vector<Shape>& rtf_shapes() {
  static const std::vector<Shape> shapes = [] {
    std::vector<Shape> all;
    for (const auto& some : {group_shapes(), table_shapes(), word_shapes(), part_shapes()}) {
      all.insert(all.end(), some.begin(), some.end());
    }
    return all;
  }();
  return shapes;
}

}  // namespace qel::hostile
