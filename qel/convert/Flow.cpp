#include "qel/convert/Flow.h"

#include <optional>
#include <type_traits>
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

/// Formats of which whole texts are in memory, or which nobody writes by the gigabyte.
bool has_writer_of_bytes(OutputFormat format) {
  return format != OutputFormat::simple_rtf && format != OutputFormat::segments;
}

template <class Char>
std::unique_ptr<BasicWriter<Char>> make_writer(const Options& options, bool from_markup,
                                               std::basic_string_view<Char> line_break) {
  if constexpr (std::is_same_v<Char, char16_t>) {
    if (options.to == OutputFormat::simple_rtf) return std::make_unique<SimpleRtfOutput>(options);
    if (options.to == OutputFormat::segments) return std::make_unique<RunsJson>();
  }
  switch (options.to) {
    case OutputFormat::rtf:
      return std::make_unique<RtfOutput<Char>>(options);
    case OutputFormat::rtf_body:
      return std::make_unique<RtfOutput<Char>>(typename RtfOutput<Char>::Body());
    case OutputFormat::text:
      return std::make_unique<TextOutput<Char>>(line_break);
    case OutputFormat::html:
      return std::make_unique<HtmlOutput<Char>>(options);
    case OutputFormat::qelv6:
      return std::make_unique<OlderMarkupOutput<Char>>(from_markup);
    default:
      return std::make_unique<MarkupOutput<Char>>(CodeSet::lossless, from_markup);
  }
}

bool drops_last_break(const Options& options) {
  return options.is_file && !options.keeps_last_break;
}

template <class Char>
std::unique_ptr<BasicReader<Char>> make_reader(const Options& options, InputFormat from,
                                               BasicRunSink<Char>& sink) {
  if (from == InputFormat::text) return std::make_unique<TextInput<Char>>(sink);
  auto reader = std::make_unique<MarkupInput<Char>>(sink, drops_last_break(options));
  if (is_rtf_of_some_kind(options.to)) reader->read_codes_of_rtf();
  return reader;
}

/// In the lossless way nothing has to be remembered between a reader and a writer.
template <class Char>
class StreamFlow : public BasicFlow<Char> {
 public:
  using typename BasicFlow<Char>::Take;
  using typename BasicFlow<Char>::View;

  StreamFlow(const Options& options, InputFormat from, View line_break)
      : writer_(make_writer<Char>(options, from == InputFormat::qel, line_break)) {
    const bool keeps_all = options.to == OutputFormat::rtf ||
                           (options.to == OutputFormat::rtf_body && from == InputFormat::qel);
    if (!keeps_all && options.switches != Switches()) {
      switched_.emplace(options.switches, *writer_);
    }
  }

  BasicRunSink<Char>& sink() {
    if (switched_) return *switched_;
    return *writer_;
  }
  void put_reader(std::unique_ptr<BasicReader<Char>> reader) { reader_ = std::move(reader); }

  std::size_t read(View part, bool is_last) override { return reader_->read(part, is_last); }
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
    writer_->count_lacking(report.dropped);
  }

 private:
  static constexpr std::size_t enough = std::size_t{1} << 14U;

  std::unique_ptr<BasicWriter<Char>> writer_;
  std::optional<SwitchedRuns<Char>> switched_;
  std::unique_ptr<BasicReader<Char>> reader_;
};

template <class Char>
std::unique_ptr<BasicFlow<Char>> make_stream_of_text(const Options& options, InputFormat from,
                                                     std::basic_string_view<Char> line_break) {
  auto flow = std::make_unique<StreamFlow<Char>>(options, from, line_break);
  flow->put_reader(make_reader<Char>(options, from, flow->sink()));
  return flow;
}

/// The stream of a document, whose formats are looked up in the tables.
template <class Char>
class DocumentFlow : public StreamFlow<Char> {
 public:
  DocumentFlow(const Options& options, InputFormat from, std::basic_string_view<Char> line_break)
      : StreamFlow<Char>(options, from, line_break),
        to_(options.to),
        runs_(indexes_in_rtf(options), this->sink()) {}

  richtext::DocumentSink& runs() { return runs_; }
  void report(Report& report) const override {
    StreamFlow<Char>::report(report);
    if (has_formats(to_)) count_formats(report.dropped, runs_.lacking());
  }

 private:
  OutputFormat to_;
  rtf::BasicRunsOfDocument<Char> runs_;
};

template <class Char>
std::unique_ptr<BasicFlow<Char>> make_stream_of_rtf(const Options& options,
                                                    richtext::RtfUnits units,
                                                    std::basic_string_view<Char> line_break) {
  auto flow = std::make_unique<DocumentFlow<Char>>(options, InputFormat::rtf, line_break);
  flow->put_reader(
      std::make_unique<RtfInput<Char>>(base_format(options), flow->runs(), units, options.extras));
  return flow;
}

std::unique_ptr<Flow> make_stream_of_html(const Options& options, std::u16string_view line_break) {
  auto flow = std::make_unique<DocumentFlow<char16_t>>(options, InputFormat::html, line_break);
  flow->put_reader(std::make_unique<HtmlInput>(options, flow->runs()));
  return flow;
}

bool is_document(InputFormat format) {
  return format == InputFormat::rtf || format == InputFormat::html;
}

bool normalizes(const Options& options) {
  return options.normalizes && options.to == OutputFormat::qel && options.way == Way::lossless;
}

std::unique_ptr<Flow> make_plain_flow(const Options& options, InputFormat from,
                                      richtext::RtfReader::Units units,
                                      std::u16string_view line_break) {
  if (is_document(from) && options.to == OutputFormat::rtf) {
    return std::make_unique<RewritingFlow>(options, from, units);
  }
  if (options.way == Way::stated) {
    return std::make_unique<StatedFlow>(options, from, units, line_break);
  }
  if (!is_document(from)) return make_stream_of_text(options, from, line_break);
  return from == InputFormat::html ? make_stream_of_html(options, line_break)
                                   : make_stream_of_rtf(options, units, line_break);
}

}  // namespace

void ask_to_stop(const Options& options) {
  if (options.stop && options.stop()) throw Stopped();
}

bool has_formats(OutputFormat format) { return format != OutputFormat::text; }

void count_formats(Dropped& dropped, const rtf::LackingFormats& lacking) {
  dropped.fonts += lacking.fonts();
  dropped.colors += lacking.colors();
  dropped.sizes += lacking.sizes();
}

std::unique_ptr<Flow> make_flow(const Options& options, InputFormat from,
                                richtext::RtfReader::Units units, std::u16string_view line_break) {
  if (!normalizes(options)) return make_plain_flow(options, from, units, line_break);
  // Markup is taken as it is: what it says to conversions to RTF alone is not lost then.
  const bool is_source = from == InputFormat::qel && options.switches == Switches();
  if (is_source)
    return std::make_unique<NormalizingFlow>(nullptr, drops_last_break(options), options);
  auto flow = make_plain_flow(options, from, units, line_break);
  return std::make_unique<NormalizingFlow>(std::move(flow), false, options);
}

bool has_flow_of_bytes(const Options& options, InputFormat from, Encoding encoding) {
  if (options.way == Way::stated || normalizes(options)) return false;
  if (!has_writer_of_bytes(options.to)) return false;
  // RTF may hold halves of surrogate pairs, which remain where it becomes RTF.
  if (from == InputFormat::rtf) {
    return encoding == Encoding::bytes && !is_rtf_of_some_kind(options.to);
  }
  return from != InputFormat::html && encoding == Encoding::utf8;
}

std::unique_ptr<BasicFlow<char>> make_flow_of_bytes(const Options& options, InputFormat from) {
  constexpr std::string_view line_break = "\n";
  return from == InputFormat::rtf
             ? make_stream_of_rtf(options, richtext::RtfUnits::bytes, line_break)
             : make_stream_of_text(options, from, line_break);
}

richtext::CharFormat base_format(const Options& options) {
  richtext::CharFormat format;
  format.font_name = options.fonts.get_Font(0);
  format.size = options.fonts.get_FontSize();
  format.color = options.colors->get_Color(0);
  return format;
}

}  // namespace qel::convert
