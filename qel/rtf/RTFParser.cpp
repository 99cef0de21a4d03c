#include "qel/rtf/RTFParser.h"

#include <cstddef>
#include <exception>
#include <memory>

#include "qel/base/Error.h"
#include "qel/model/Parser.h"
#include "qel/platform/Common.h"
#include "qel/richtext/DocumentReader.h"
#include "qel/rtf/Characters.h"
#include "qel/rtf/CodeTable.h"
#include "qel/rtf/MarkupWriter.h"
#include "qel/rtf/Preprocessing.h"
#include "qel/rtf/RtfBodyWriter.h"
#include "qel/rtf/RunsOfDocument.h"
#include "qel/rtf/SimpleRtfWriter.h"

namespace qel {
namespace {

std::shared_ptr<platform::MeasuringSurface> required_surface(const std::string& member) {
  if (auto surface = Common::measuring_surface()) return surface;
  throw Error(Error::object_not_set, "RTFParser",
              member + ": no measuring surface is published on this thread");
}

/// Empties a box at the end.
class EmptyAtEnd {
 public:
  explicit EmptyAtEnd(platform::RichEdit& box) : box_(box) {}
  EmptyAtEnd(const EmptyAtEnd&) = delete;
  EmptyAtEnd& operator=(const EmptyAtEnd&) = delete;
  ~EmptyAtEnd() {
    try {
      box_.put_Text({});
    } catch (const std::exception&) {
      return;  // the next conversion begins by emptying the box
    }
  }

 private:
  platform::RichEdit& box_;
};

/// The runs of documents, read as the thread's conversion box reads them.
class Loader {
 public:
  explicit Loader(const std::string& member) : box_(Common::conversion_box()) {
    required_surface(member);
    if (box_) return;
    throw Error(Error::object_not_set, "RTFParser",
                member + ": no conversion box is published on this thread");
  }

  /// The format of text for which a document names none.
  void use_tables(const QELIndexFonts& fonts, const QELIndexColors& colors) {
    base_.font_name = fonts.get_Font(0);
    base_.color = colors.get_Color(0);
  }

  /// A box of the library's own would only hold what is read: it goes straight to the sink.
  void load(std::u16string_view rtf, richtext::DocumentSink& sink) const {
    if (box_->holds_documents()) {
      richtext::read_into(rtf, base_, sink);
    } else {
      read_box(rtf, sink);
    }
  }

 private:
  void read_box(std::u16string_view rtf, richtext::DocumentSink& sink) const;

  std::shared_ptr<platform::RichEdit> box_;
  richtext::CharFormat base_;
};

/// Loads a box of the host's own and asks it for its runs.
void Loader::read_box(std::u16string_view rtf, richtext::DocumentSink& sink) const {
  const EmptyAtEnd empty_at_end(*box_);
  box_->put_Text({});
  // All of the format, so that nothing of the last conversion is left.
  richtext::FormatChange plain;
  plain.bold = plain.italic = plain.underline = plain.strike_through = false;
  plain.small_caps = false;
  plain.offset = std::int16_t{0};
  plain.font_name = base_.font_name;
  plain.color = base_.color;
  box_->change_format(plain);
  box_->put_TextRTF(rtf);
  box_->visit_runs(0, [&](const platform::FormatRun& run) {
    sink.text(run.text, sink.intern(run.format));
    return true;
  });
  sink.finish(richtext::Alignment::left);
}

/// The RTF as it is loaded. Lossless, the reader knows the words as they are.
std::u16string_view prepared(std::u16string_view rtf, bool protect_codes, const RTFParser& parser,
                             std::u16string& storage) {
  return parser.get_Lossless() ? rtf : rtf::prepare(rtf, protect_codes, storage);
}

void append_lossless_body(std::u16string& out, std::u16string_view markup) {
  out.reserve(out.size() + markup.size() + markup.size() / 8);
  MarkupScanner scanner(markup, Way::lossless);
  scanner.read_codes_of_rtf();
  rtf::RtfBodyWriter writer(out);
  read_runs(scanner, writer);
  writer.finish();
}

}  // namespace

std::u16string RTFParser::QELToRTF(std::u16string_view Text, QELIndexFonts& Fonts,
                                   const QELIndexColors& Colors) const {
  const auto surface = required_surface("QELToRTF");
  std::u16string document = rtf::document_head(Fonts, Colors, *surface, way_);
  const std::size_t body = document.size();
  if (get_Lossless()) {
    append_lossless_body(document, Text);
  } else if (rtf::append_body(document, Text)) {
    rtf::restore_literal_codes(document, body);
  }
  document.append(ascii<char16_t, rtf::document_end>);
  return document;
}

std::u16string RTFParser::QELToRTFWithoutTables(std::u16string_view Text) const {
  std::u16string body;
  if (get_Lossless()) {
    append_lossless_body(body, Text);
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

/// Collects the characters of a document, with breaks and tabs as a parser's switches say.
class TextCollector : public richtext::DocumentSink {
 public:
  explicit TextCollector(const RTFParser& parser) : parser_(parser) {}

  FormatId intern(const richtext::CharFormat& /*format*/) override { return 0; }
  void text(std::u16string_view text, FormatId /*format*/) override {
    rtf::append_characters(text_, text, parser_, u"\r\n");
  }
  void paragraph_break(FormatId format, richtext::Alignment /*alignment*/) override {
    text(u"\r\n", format);
  }
  void finish(richtext::Alignment /*alignment*/) override {
    const bool drops_blank = parser_.get_ConvertNLToSpace() && !parser_.get_Lossless();
    if (drops_blank && text_.ends_with(u' ')) text_.pop_back();
  }

  std::u16string take() { return std::move(text_); }

 private:
  const RTFParser& parser_;
  std::u16string text_;
};

}  // namespace

std::u16string RTFParser::RTFToQEL(std::u16string_view RTF, const QELIndexFonts& Fonts,
                                   const QELIndexColors& Colors) const {
  Loader loader("RTFToQEL");
  if (RTF.empty()) return {};
  loader.use_tables(Fonts, Colors);
  rtf::MarkupWriter writer(*this);
  writer.reserve(RTF.size());
  rtf::RunsOfDocument runs(
      std::make_shared<const rtf::TableIndexes>(Fonts, Colors, rtf::Origin::rtf, way_), writer);
  std::u16string storage;
  loader.load(prepared(RTF, true, *this, storage), runs);
  return writer.take();
}

std::u16string RTFParser::SimpleRTF(std::u16string_view RTF, QELIndexFonts& Fonts,
                                    const QELIndexColors& Colors) const {
  Loader loader("SimpleRTF");
  rtf::SimpleRtfWriter writer(*this);
  if (!RTF.empty()) {
    writer.reserve(RTF.size());
    loader.use_tables(Fonts, Colors);
    rtf::RunsOfDocument runs(
        std::make_shared<const rtf::TableIndexes>(Fonts, Colors, rtf::Origin::rtf, way_), writer);
    std::u16string storage;
    loader.load(prepared(RTF, false, *this, storage), runs);
  }
  return writer.document(Fonts, Colors, *required_surface("SimpleRTF"));
}

std::u16string RTFParser::RTFToText(std::u16string_view RTF) const {
  const Loader loader("RTFToText");
  if (RTF.empty()) return {};
  TextCollector text(*this);
  loader.load(RTF, text);
  return text.take();
}

std::u16string RTFParser::PreprocessRTF(std::u16string_view RTF) { return rtf::preprocess(RTF); }

}  // namespace qel
