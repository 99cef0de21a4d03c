#include "qel/rtf/RTFParser.h"

#include <cmath>
#include <cstddef>
#include <cstdint>
#include <exception>
#include <limits>
#include <memory>

#include "qel/base/Error.h"
#include "qel/base/Records.h"
#include "qel/platform/Common.h"
#include "qel/rtf/Characters.h"
#include "qel/rtf/CodeTable.h"
#include "qel/rtf/MarkupWriter.h"
#include "qel/rtf/Preprocessing.h"
#include "qel/rtf/SimpleRtfWriter.h"

namespace qel {
namespace {

std::shared_ptr<platform::MeasuringSurface> required_surface(const std::string& member) {
  if (auto surface = Common::measuring_surface()) return surface;
  throw Error(Error::object_not_set, "RTFParser",
              member + ": no measuring surface is published on this thread");
}

std::int64_t half_points(float points) {
  const double size = std::nearbyint(static_cast<double>(points) * 2);
  // NaN fails this comparison too.
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
    plain.small_caps = false;
    plain.offset = std::int16_t{0};
    plain.font_name = fonts.get_Font(0);
    plain.color = colors.get_Color(0);
    box_->change_format(plain);
  }

  void load(std::u16string_view rtf) { box_->put_TextRTF(rtf); }
  /// Lossless, the box knows the words as they are.
  void load_prepared(std::u16string_view rtf, bool protect_codes, bool lossless) {
    std::u16string storage;
    load(lossless ? rtf : rtf::prepare(rtf, protect_codes, storage));
  }

  template <class Visit>
  void for_each_run(Visit visit) const {
    box_->visit_runs(0, [&](const platform::FormatRun& run) {
      visit(run);
      return true;
    });
  }

 private:
  std::shared_ptr<platform::RichEdit> box_;
};

}  // namespace

std::u16string RTFParser::QELToRTF(std::u16string_view Text, QELIndexFonts& Fonts,
                                   const QELIndexColors& Colors) const {
  const auto surface = required_surface("QELToRTF");
  std::u16string document = u"{\\rtf1\\ansi\\ansicpg1252\\deff0 ";
  document.append(Fonts.font_table(surface.get(), way_));
  document.append(Colors.get_ColorTable());
  document.append(u"{\\f0\\fs").append(records::from_integer(half_points(Fonts.get_FontSize())));
  document.append(u" ");
  const std::size_t body = document.size();
  if (get_Lossless()) {
    rtf::append_lossless_body(document, Text);
  } else if (rtf::append_body(document, Text)) {
    rtf::restore_literal_codes(document, body);
  }
  document.append(u"}}");
  return document;
}

std::u16string RTFParser::QELToRTFWithoutTables(std::u16string_view Text) const {
  std::u16string body;
  if (get_Lossless()) {
    rtf::append_lossless_body(body, Text);
  } else {
    rtf::append_body(body, Text);
  }
  return body;
}

bool RTFParser::IsQELCode(std::u16string_view Code) { return rtf::is_code(Code); }

Color RTFParser::ConvertSystemColor(Color Value) {
  return QELIndexColors::ConvertSystemColor(Value);
}

namespace {

std::u16string markup_in(const LoadedBox& box, std::size_t expected_size, const RTFParser& parser,
                         const QELIndexFonts& fonts, const QELIndexColors& colors) {
  rtf::MarkupWriter writer(parser, fonts, colors, rtf::Origin::rtf);
  writer.reserve(expected_size);
  box.for_each_run([&](const platform::FormatRun& run) { writer.add(run.format, run.text); });
  return writer.finish();
}

std::u16string text_in(const LoadedBox& box, const RTFParser& parser) {
  std::u16string text;
  box.for_each_run([&](const platform::FormatRun& run) {
    rtf::append_characters(text, run.text, parser, u"\r\n");
  });
  const bool drops_blank = parser.get_ConvertNLToSpace() && !parser.get_Lossless();
  if (drops_blank && text.ends_with(u' ')) text.pop_back();
  return text;
}

}  // namespace

std::u16string RTFParser::RTFToQEL(std::u16string_view RTF, const QELIndexFonts& Fonts,
                                   const QELIndexColors& Colors) const {
  LoadedBox box("RTFToQEL");
  if (RTF.empty()) return {};
  box.use_tables(Fonts, Colors);
  box.load_prepared(RTF, true, get_Lossless());
  return markup_in(box, RTF.size(), *this, Fonts, Colors);
}

std::u16string RTFParser::RTFToQEL(std::unique_ptr<const std::u16string> RTF,
                                   const QELIndexFonts& Fonts, const QELIndexColors& Colors) const {
  LoadedBox box("RTFToQEL");
  if (!RTF || RTF->empty()) return {};
  const std::size_t expected_size = RTF->size();
  box.use_tables(Fonts, Colors);
  box.load_prepared(*RTF, true, get_Lossless());
  RTF.reset();
  return markup_in(box, expected_size, *this, Fonts, Colors);
}

std::u16string RTFParser::SimpleRTF(std::u16string_view RTF, QELIndexFonts& Fonts,
                                    const QELIndexColors& Colors) const {
  LoadedBox box("SimpleRTF");
  rtf::SimpleRtfWriter writer(*this, Fonts, Colors, rtf::Origin::rtf);
  writer.reserve(RTF.size());
  if (!RTF.empty()) {
    box.use_tables(Fonts, Colors);
    box.load_prepared(RTF, false, get_Lossless());
    box.for_each_run([&](const platform::FormatRun& run) { writer.add(run.format, run.text); });
  }
  return writer.finish(*required_surface("SimpleRTF"));
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
