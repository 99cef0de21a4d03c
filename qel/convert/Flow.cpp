#include "qel/convert/Flow.h"

#include <optional>
#include <utility>

#include "qel/convert/HtmlInput.h"
#include "qel/convert/HtmlOutput.h"
#include "qel/convert/MarkupInput.h"
#include "qel/convert/MarkupOutput.h"
#include "qel/convert/PreparedTables.h"
#include "qel/convert/RtfInput.h"
#include "qel/convert/RtfOutput.h"
#include "qel/convert/RunsJson.h"
#include "qel/convert/SwitchedRuns.h"
#include "qel/convert/TextInput.h"
#include "qel/convert/TextOutput.h"
#include "qel/convert/WholeFlow.h"
#include "qel/rtf/RunsOfDocument.h"

namespace qel::convert {
namespace {

using style_codes::CodeSet;

std::unique_ptr<Writer> make_writer(const Options& options, bool from_markup,
                                    std::u16string_view line_break) {
  switch (options.to) {
    case OutputFormat::rtf:
      return std::make_unique<RtfOutput>(options);
    case OutputFormat::rtf_body:
      return std::make_unique<RtfOutput>(RtfOutput::Body());
    case OutputFormat::simple_rtf:
      return std::make_unique<SimpleRtfOutput>(options);
    case OutputFormat::text:
      return std::make_unique<TextOutput>(line_break);
    case OutputFormat::segments:
      return std::make_unique<RunsJson>();
    case OutputFormat::html:
      return std::make_unique<HtmlOutput>(options);
    case OutputFormat::qelv6:
      return std::make_unique<MarkupOutput>(CodeSet::v6, from_markup);
    case OutputFormat::qel:
      break;
  }
  return std::make_unique<MarkupOutput>(CodeSet::lossless, from_markup);
}

bool is_rtf_document(OutputFormat format) {
  return format == OutputFormat::rtf || format == OutputFormat::rtf_body;
}

bool drops_last_break(const Options& options) {
  return options.is_file && !options.keeps_last_break;
}

/// In the lossless way nothing has to be remembered between a reader and a writer.
class StreamFlow : public Flow {
 public:
  StreamFlow(const Options& options, InputFormat from, richtext::RtfReader::Units units,
             std::u16string_view line_break)
      : to_(options.to), writer_(make_writer(options, from == InputFormat::qel, line_break)) {
    RunSink* sink = writer_.get();
    const bool keeps_all = options.to == OutputFormat::rtf ||
                           (options.to == OutputFormat::rtf_body && from == InputFormat::qel);
    if (!keeps_all && options.switches != Switches())
      sink = &switched_.emplace(options.switches, *writer_);
    switch (from) {
      case InputFormat::qel:
        read_markup(options, *sink);
        break;
      case InputFormat::rtf:
        reader_ = std::make_unique<RtfInput>(base_format(options), runs_of(options, *sink), units,
                                             options.extras);
        break;
      case InputFormat::html:
        reader_ = std::make_unique<HtmlInput>(options, runs_of(options, *sink));
        break;
      case InputFormat::text:
        reader_ = std::make_unique<TextInput>(*sink);
        break;
    }
  }

  std::size_t read(std::u16string_view part, bool is_last) override {
    return reader_->read(part, is_last);
  }
  void finish() override { reader_->finish(); }
  bool is_closed() const override { return reader_->is_closed(); }
  void drain(const Take& take, bool all) override {
    if (all) {
      writer_->drain_all(take);
    } else if (writer_->size() >= enough) {
      writer_->drain(take);
    }
  }
  void report(Report& report) const override {
    reader_->report(report);
    if (runs_ && has_formats(to_)) count_formats(report.dropped, runs_->lacking());
    report.dropped.fonts += writer_->fonts_lacking();
  }

 private:
  static constexpr std::size_t enough = std::size_t{1} << 14U;

  void read_markup(const Options& options, RunSink& sink) {
    auto reader = std::make_unique<MarkupInput>(sink, drops_last_break(options));
    if (is_rtf_document(options.to) || options.to == OutputFormat::simple_rtf) {
      reader->read_codes_of_rtf();
    }
    reader_ = std::move(reader);
  }

  richtext::DocumentSink& runs_of(const Options& options, RunSink& sink) {
    if (options.prepared) return runs_.emplace(options.prepared->indexes_in_rtf, sink);
    rtf::TableIndexes indexes(options.fonts, *options.colors, rtf::Origin::rtf, Way::lossless);
    return runs_.emplace(std::move(indexes), sink);
  }

  OutputFormat to_;
  std::unique_ptr<Writer> writer_;
  std::optional<SwitchedRuns> switched_;
  std::optional<rtf::RunsOfDocument> runs_;
  std::unique_ptr<Reader> reader_;
};

std::unique_ptr<Flow> make_plain_flow(const Options& options, InputFormat from,
                                      richtext::RtfReader::Units units,
                                      std::u16string_view line_break) {
  const bool has_all_formats = from == InputFormat::rtf || from == InputFormat::html;
  if (has_all_formats && options.to == OutputFormat::rtf) {
    return std::make_unique<RewritingFlow>(options, from, units);
  }
  if (options.way == Way::stated) {
    return std::make_unique<StatedFlow>(options, from, units, line_break);
  }
  return std::make_unique<StreamFlow>(options, from, units, line_break);
}

}  // namespace

bool has_formats(OutputFormat format) { return format != OutputFormat::text; }

void count_formats(Dropped& dropped, const rtf::LackingFormats& lacking) {
  dropped.fonts = lacking.fonts();
  dropped.colors = lacking.colors();
  dropped.sizes = lacking.sizes();
}

std::unique_ptr<Flow> make_flow(const Options& options, InputFormat from,
                                richtext::RtfReader::Units units, std::u16string_view line_break) {
  const bool normalizes =
      options.normalizes && options.to == OutputFormat::qel && options.way == Way::lossless;
  // Markup is taken as it is: what it says to conversions to RTF alone is not lost then.
  const bool is_source = normalizes && from == InputFormat::qel && options.switches == Switches();
  if (is_source)
    return std::make_unique<NormalizingFlow>(nullptr, drops_last_break(options), options.stop);
  auto flow = make_plain_flow(options, from, units, line_break);
  if (!normalizes) return flow;
  return std::make_unique<NormalizingFlow>(std::move(flow), false, options.stop);
}

richtext::CharFormat base_format(const Options& options) {
  richtext::CharFormat format;
  format.font_name = options.fonts.get_Font(0);
  format.size = options.fonts.get_FontSize();
  format.color = options.colors->get_Color(0);
  return format;
}

}  // namespace qel::convert
