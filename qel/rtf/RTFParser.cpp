#include "qel/rtf/RTFParser.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <cstddef>
#include <cstdint>
#include <exception>
#include <limits>
#include <memory>

#include "qel/base/Error.h"
#include "qel/base/Records.h"
#include "qel/base/Scan.h"
#include "qel/platform/Common.h"
#include "qel/rtf/CodeTable.h"
#include "qel/rtf/Preprocessing.h"
#include "qel/rtf/Walk.h"

namespace qel {
namespace {

constexpr std::u16string_view line_break = u"\r\n";

std::shared_ptr<platform::MeasuringSurface> required_surface(const std::string& member) {
  if (auto surface = Common::measuring_surface()) return surface;
  throw Error(Error::object_not_set, "RTFParser",
              member + ": no measuring surface is published on this thread");
}

std::int64_t half_points(float points) {
  const double size = std::nearbyint(static_cast<double>(points) * 2);
  // Not a number fails this comparison too.
  if (!(size >= 0 && size <= std::numeric_limits<std::int16_t>::max())) {
    throw Error(Error::overflow, "RTFParser",
                "QELToRTF: FontSize " + std::to_string(points) + " is no size that RTF can hold");
  }
  return static_cast<std::int64_t>(size);
}

/// The thread's conversion box with a document in it, for as long as the conversion takes.
class LoadedBox {
 public:
  explicit LoadedBox(const std::string& member) : box_(Common::conversion_box()) {
    required_surface(member);
    if (box_) return;
    throw Error(Error::object_not_set, "RTFParser",
                member + ": no conversion box is published on this thread");
  }
  LoadedBox(const LoadedBox&) = delete;
  LoadedBox& operator=(const LoadedBox&) = delete;
  ~LoadedBox() {
    try {
      box_->put_Text({});
    } catch (const std::exception&) {
      return;  // the next conversion begins by emptying the box
    }
  }

  void use_tables(const QELIndexFonts& fonts, const QELIndexColors& colors) {
    box_->put_Text({});
    // All of the format, so that nothing of the last conversion is left.
    richtext::FormatChange plain;
    plain.bold = plain.italic = plain.underline = plain.strike_through = false;
    plain.offset = std::int16_t{0};
    plain.font_name = fonts.get_Font(0);
    plain.color = colors.get_Color(0);
    box_->change_format(plain);
  }

  void load(std::u16string_view rtf) { box_->put_TextRTF(rtf); }
  void load_prepared(std::u16string_view rtf, bool protect_codes) {
    std::u16string storage;
    load(rtf::prepare(rtf, protect_codes, storage));
  }

  /// Calls `visit` with each run and returns the number of characters.
  template <class Visit>
  std::size_t for_each_run(Visit visit) const {
    std::size_t length = 0;
    box_->visit_runs(0, [&](const platform::FormatRun& run) {
      length += run.text.size();
      visit(run);
      return true;
    });
    return length;
  }

  bool holds_only_a_break() const {
    std::u16string text;
    box_->visit_runs(0, [&](const platform::FormatRun& run) {
      text.append(run.text.substr(0, line_break.size() + 1));
      return text.size() <= line_break.size();
    });
    return text == line_break;
  }

 private:
  std::shared_ptr<platform::RichEdit> box_;
};

void append_break(std::u16string& out, const RTFParser& parser, std::u16string_view recognized) {
  if (parser.get_ConvertNLToSpace()) {
    out.push_back(u' ');
  } else if (parser.get_RecognizeCRLF()) {
    out.append(recognized);
  }
}

void append_tab(std::u16string& out, const RTFParser& parser, std::u16string_view recognized) {
  if (parser.get_RecognizeTabs()) {
    out.append(recognized);
  } else if (parser.get_ConvertTabsToSpace()) {
    out.push_back(u' ');
  }
}

/// The characters of markup, or of plain text: all but breaks and tabs stand for themselves.
void append_characters(std::u16string& out, std::u16string_view text, const RTFParser& parser,
                       std::u16string_view line_code) {
  const auto is_control = [](auto c) { return c < std::uint16_t{u' '}; };
  for (std::size_t at = 0; at < text.size(); ++at) {
    const std::size_t end = find_first(text, at, is_control);
    out.append(text, at, end - at);
    if (end == text.size()) return;
    if (text[end] == u'\t') {
      append_tab(out, parser, u"\t");
    } else if (text[end] == u'\n') {
      append_break(out, parser, line_code);
    } else if (text[end] != u'\r') {
      out.push_back(text[end]);
    }
    at = end;
  }
}

void drop_last_blank(std::u16string& out, const RTFParser& parser) {
  if (parser.get_ConvertNLToSpace() && !out.empty() && out.back() == u' ') out.pop_back();
}

struct RtfSpelling {
  char16_t character;
  std::u16string_view rtf;
};

/// The characters that RTF has a spelling of its own for, but for breaks and tabs.
constexpr std::array<RtfSpelling, 11> rtf_spellings = {{{u'\\', u"\\\\"},
                                                        {u'{', u"\\{"},
                                                        {u'}', u"\\}"},
                                                        {u'\u00A0', u"\\~"},
                                                        {u'\u2013', u"\\endash "},
                                                        {u'\u2014', u"\\emdash "},
                                                        {u'\u2018', u"\\lquote "},
                                                        {u'\u2019', u"\\rquote "},
                                                        {u'\u201C', u"\\ldblquote "},
                                                        {u'\u201D', u"\\rdblquote "},
                                                        {u'\u2022', u"\\bullet "}}};

void append_rtf_character(std::u16string& out, char16_t character, const RTFParser& parser) {
  if (character == u'\t') return append_tab(out, parser, u"\\tab ");
  if (character == u'\n') return append_break(out, parser, u"\\par ");
  if (character == u'\r') return;
  const auto* const spelling =
      std::find_if(rtf_spellings.begin(), rtf_spellings.end(),
                   [&](const RtfSpelling& row) { return row.character == character; });
  if (spelling == rtf_spellings.end()) {
    out.push_back(character);
  } else {
    out.append(spelling->rtf);
  }
}

void append_rtf_characters(std::u16string& out, std::u16string_view text, const RTFParser& parser) {
  const auto may_be_special = [](auto c) {
    return (c < std::uint16_t{u' '}) | (c == std::uint16_t{u'\\'}) | (c == std::uint16_t{u'{'}) |
           (c >= std::uint16_t{u'}'});
  };
  for (std::size_t at = 0; at < text.size(); ++at) {
    const std::size_t end = find_first(text, at, may_be_special);
    out.append(text, at, end - at);
    if (end < text.size()) append_rtf_character(out, text[end], parser);
    at = end;
  }
}

}  // namespace

std::u16string RTFParser::QELToRTF(std::u16string_view Text, QELIndexFonts& Fonts,
                                   const QELIndexColors& Colors) const {
  const auto surface = required_surface("QELToRTF");
  std::u16string document = u"{\\rtf1\\ansi\\ansicpg1252\\deff0 ";
  document.append(Fonts.FontTable(surface.get())).append(Colors.get_ColorTable());
  document.append(u"{\\f0\\fs").append(records::from_integer(half_points(Fonts.get_FontSize())));
  document.append(u" ");
  const std::size_t body = document.size();
  if (rtf::append_body(document, Text)) rtf::restore_literal_codes(document, body);
  document.append(u"}}");
  return document;
}

std::u16string RTFParser::QELToRTFWithoutTables(std::u16string_view Text) const {
  std::u16string body;
  rtf::append_body(body, Text);
  return body;
}

bool RTFParser::IsQELCode(std::u16string_view Code) { return rtf::is_code(Code); }

Color RTFParser::ConvertSystemColor(Color Value) {
  return QELIndexColors::ConvertSystemColor(Value);
}

namespace {

std::u16string markup_in(const LoadedBox& box, std::size_t expected_size, const RTFParser& parser,
                         const QELIndexFonts& fonts, const QELIndexColors& colors) {
  if (!parser.get_RecognizeCRLF() && box.holds_only_a_break()) return {};
  std::u16string markup;
  markup.reserve(expected_size);
  rtf::FormatWalk walk(rtf::markup_spelling, fonts, colors, markup);
  box.for_each_run([&](const platform::FormatRun& run) {
    walk.enter(run.format);
    append_characters(markup, run.text, parser, u"/nl");
  });
  drop_last_blank(markup, parser);
  walk.close();
  return markup;
}

std::u16string text_in(const LoadedBox& box, const RTFParser& parser) {
  std::u16string text;
  box.for_each_run([&](const platform::FormatRun& run) {
    append_characters(text, run.text, parser, line_break);
  });
  drop_last_blank(text, parser);
  return text;
}

}  // namespace

std::u16string RTFParser::RTFToQEL(std::u16string_view RTF, const QELIndexFonts& Fonts,
                                   const QELIndexColors& Colors) const {
  LoadedBox box("RTFToQEL");
  if (RTF.empty()) return {};
  box.use_tables(Fonts, Colors);
  box.load_prepared(RTF, true);
  return markup_in(box, RTF.size(), *this, Fonts, Colors);
}

std::u16string RTFParser::RTFToQEL(std::unique_ptr<const std::u16string> RTF,
                                   const QELIndexFonts& Fonts, const QELIndexColors& Colors) const {
  LoadedBox box("RTFToQEL");
  if (!RTF || RTF->empty()) return {};
  const std::size_t expected_size = RTF->size();
  box.use_tables(Fonts, Colors);
  box.load_prepared(*RTF, true);
  RTF.reset();
  return markup_in(box, expected_size, *this, Fonts, Colors);
}

std::u16string RTFParser::SimpleRTF(std::u16string_view RTF, QELIndexFonts& Fonts,
                                    const QELIndexColors& Colors) const {
  LoadedBox box("SimpleRTF");
  std::u16string body = u"\\f0 ";
  body.reserve(RTF.size());
  rtf::FormatWalk walk(rtf::rtf_spelling, Fonts, Colors, body);
  if (!RTF.empty()) {
    box.use_tables(Fonts, Colors);
    box.load_prepared(RTF, false);
    box.for_each_run([&](const platform::FormatRun& run) {
      walk.enter(run.format);
      append_rtf_characters(body, run.text, *this);
    });
    walk.close();
  }
  std::u16string head = u"{\\rtf1 ";
  if (walk.wrote_font()) head.append(Fonts.FontTable(required_surface("SimpleRTF").get()));
  if (walk.wrote_color()) head.append(Colors.get_ColorTable());
  std::u16string document = std::move(body);
  document.insert(0, head).push_back(u'}');
  // The last of the three finds nothing, as underline is switched off with another word. It belongs
  // to the form all the same.
  document = replace_all(std::move(document), u"\\par \\b0 ", u"\\b0 \\par ");
  document = replace_all(std::move(document), u"\\par \\i0 ", u"\\i0 \\par ");
  return replace_all(std::move(document), u"\\par \\u0 ", u"\\u0 \\par ");
}

std::u16string RTFParser::RTFToText(std::u16string_view RTF) const {
  LoadedBox box("RTFToText");
  if (RTF.empty()) return {};
  box.load(RTF);
  return text_in(box, *this);
}

std::u16string RTFParser::RTFToText(std::unique_ptr<const std::u16string> RTF) const {
  LoadedBox box("RTFToText");
  if (!RTF || RTF->empty()) return {};
  box.load(*RTF);
  RTF.reset();
  return text_in(box, *this);
}

std::u16string RTFParser::PreprocessRTF(std::u16string_view RTF) { return rtf::preprocess(RTF); }

}  // namespace qel
