#include "qel/convert/Convert.h"

#include <algorithm>
#include <array>
#include <cstdint>
#include <utility>

#include "qel/base/Error.h"
#include "qel/base/Utf16.h"
#include "qel/base/Utf8.h"
#include "qel/convert/ByteInput.h"
#include "qel/convert/Flow.h"
#include "qel/convert/Pipe.h"
#include "qel/convert/PreparedTables.h"
#include "qel/convert/RtfOutput.h"
#include "qel/richtext/CompressedRtf.h"
#include "qel/richtext/DocumentReader.h"
#include "qel/richtext/RtfBytes.h"

namespace qel::convert {
namespace {

using richtext::RtfReader;

/// How much of the beginning of an input tells its format.
constexpr std::size_t enough_to_tell = 4096;
/// How much is read at once. Small enough for what becomes of it to stay in the processor's cache.
constexpr std::size_t part_size = std::size_t{1} << 14U;

/// The format of an input that is or is not RTF.
InputFormat format_of(std::optional<InputFormat> named, bool is_rtf) {
  if (named && *named != InputFormat::rtf) return *named;
  if (is_rtf) return InputFormat::rtf;
  // Input that should be RTF and is not is text, as in a box.
  return named ? InputFormat::text : InputFormat::qel;
}

}  // namespace

bool is_rtf(std::string_view bytes) {
  // Nearly always, the first byte tells.
  if (bytes.starts_with('{')) return bytes.starts_with("{\\rtf");
  if (!bytes.empty() && bytes.front() > ' ' && bytes.front() < '\x7F') return false;
  const Mark mark = mark_of(bytes);
  std::u16string beginning;
  append_decoded(beginning, bytes.substr(mark.length, enough_to_tell), mark.encoding, false);
  return richtext::is_rtf(beginning);
}

bool is_binary(std::string_view bytes) {
  constexpr std::size_t text_characters_for_a_control = 10;
  constexpr std::string_view harmless = "\t\n\r\f\x1B";
  if (mark_of(bytes).length > 0) return false;
  bytes = bytes.substr(0, enough_to_tell);
  if (bytes.starts_with("%PDF-") || bytes.find('\0') != std::string_view::npos) return true;
  const auto is_control = [=](char c) {
    return static_cast<std::uint8_t>(c) < ' ' && harmless.find(c) == std::string_view::npos;
  };
  const auto controls =
      static_cast<std::size_t>(std::count_if(bytes.begin(), bytes.end(), is_control));
  return controls * text_characters_for_a_control > bytes.size();
}

std::u16string decode_text(std::string_view bytes) {
  const Mark mark = mark_of(bytes);
  std::u16string text;
  append_decoded(text, bytes.substr(mark.length), mark.encoding, true);
  return text;
}

class Converter::Stages {
 public:
  Stages(std::shared_ptr<const Options> options, Sink sink)
      : shared_options_(std::move(options)),
        options_(*shared_options_),
        sink_([this, to = std::move(sink)](std::string_view bytes) {
          if (is_all_read_) ask_to_stop(options_);
          report_.bytes_out += bytes.size();
          to(bytes);
        }) {}
  Stages(const Stages&) = delete;
  Stages& operator=(const Stages&) = delete;
  ~Stages() = default;

  bool push(std::string_view bytes) {
    if (has_ended()) return false;
    report_.bytes_in += bytes.size();
    if (!pipe_) {
      if (is_packed_) return keep_packed(bytes);
      // What comes in one piece is not copied.
      const bool tells = beginning_.size() + bytes.size() >= enough_to_tell;
      if (!tells || !beginning_.empty()) beginning_.append(bytes);
      if (!tells) return true;
      const std::string beginning = std::exchange(beginning_, {});
      const std::string_view all = beginning.empty() ? bytes : beginning;
      is_packed_ = is_packed(all);
      return is_packed_ ? keep_packed(all) : begin_and_feed(all, false);
    }
    return feed(bytes, false);
  }

  Report finish() {
    if (pipe_) {
      feed({}, true);
    } else if (!report_.is_stopped) {
      const std::string beginning = std::exchange(beginning_, {});
      is_packed_ = is_packed(beginning);
      begin_and_feed(is_packed_ ? richtext::unpack_rtf(beginning) : beginning, true);
    }
    if (!report_.is_stopped) write_rest();
    return report_;
  }

 private:
  /// What is left to do when all is read may be most of the work.
  void write_rest() {
    try {
      is_all_read_ = true;
      pipe_->finish();
      pipe_->report(report_);
    } catch (const Stopped&) {
      report_.is_stopped = true;
    }
  }

  bool is_packed(std::string_view bytes) const {
    const bool may_be = options_.from ? *options_.from == InputFormat::rtf : options_.is_file;
    return may_be && richtext::is_compressed_rtf(bytes);
  }

  bool keep_packed(std::string_view bytes) {
    beginning_.append(bytes);
    return !is_stopped();
  }

  bool is_stopped() {
    if (options_.stop && options_.stop()) report_.is_stopped = true;
    return report_.is_stopped;
  }

  bool begin_and_feed(std::string_view bytes, bool is_last) {
    const Mark mark = options_.is_file ? mark_of(bytes) : Mark{};
    const bool begins_rtf = is_rtf(bytes);
    const bool begins_html = options_.is_file && !options_.from && !begins_rtf &&
                             options_.html_reader.is_html &&
                             options_.html_reader.is_html(bytes.substr(0, enough_to_tell));
    const bool is_named = options_.from && !options_.is_from_guessed;
    if (options_.is_file && !is_named && !begins_rtf && is_binary(bytes)) {
      throw Error(Error::type_mismatch, "convert",
                  "the input is neither text nor RTF nor HTML, but binary data");
    }
    const InputFormat from = begins_html ? InputFormat::html : format_of(options_.from, begins_rtf);
    report_.from = from;
    mark_length_ = mark.length;
    // HTML may name its encoding itself.
    const bool is_html = from == InputFormat::html;
    const bool is_in_bytes =
        is_html || (from == InputFormat::rtf && mark.encoding == Encoding::utf8);
    begin(from, is_in_bytes ? Encoding::bytes : mark.encoding);
    return feed(bytes.substr(is_html ? 0 : mark.length), is_last);
  }

  void begin(InputFormat from, Encoding encoding) {
    if (has_flow_of_bytes(options_, from, encoding)) {
      pipe_ = std::make_unique<BytePipe>(make_flow_of_bytes(options_, from), encoding, sink_);
      return;
    }
    const auto units =
        encoding == Encoding::bytes ? RtfReader::Units::bytes : RtfReader::Units::characters;
    pipe_ = std::make_unique<Utf16Pipe>(make_flow(options_, from, units, u"\n"), encoding,
                                        options_.to, sink_);
  }

  bool feed(std::string_view bytes, bool is_last) {
    while (!has_ended()) {
      const std::string_view part = bytes.substr(0, part_size);
      bytes.remove_prefix(part.size());
      pipe_->read(part, is_last && bytes.empty());
      // What follows the end of a document is not a part of the input, wherever it was cut.
      if (pipe_->is_closed() && !is_packed_) report_.bytes_in = mark_length_ + pipe_->bytes_read();
      if (is_stopped() || bytes.empty()) break;
    }
    return !has_ended();
  }

  bool has_ended() const { return report_.is_stopped || (pipe_ && pipe_->is_closed()); }

  std::shared_ptr<const Options> shared_options_;
  const Options& options_;
  Sink sink_;
  std::string beginning_;  // until the format is known, or all of what is packed
  bool is_packed_ = false;
  std::size_t mark_length_ = 0;
  std::unique_ptr<Pipe> pipe_;  // once the format is known
  bool is_all_read_ = false;
  Report report_;
};

Converter::Converter(const Options& options, Sink sink)
    : stages_(std::make_unique<Stages>(std::make_shared<const Options>(options), std::move(sink))) {
}

Converter::Converter(BorrowedOptions options, Sink sink)
    : stages_(std::make_unique<Stages>(
          std::shared_ptr<const Options>(std::shared_ptr<const Options>(), &options.get()),
          std::move(sink))) {}

Converter::~Converter() = default;

template <class Work>
auto Converter::unless_failed(Work work) {
  if (error_) std::rethrow_exception(error_);
  try {
    return work();
  } catch (...) {
    error_ = std::current_exception();
    throw;
  }
}

bool Converter::push(std::string_view bytes) {
  return unless_failed([&] { return stages_->push(bytes); });
}

Report Converter::finish() {
  return unless_failed([&] { return stages_->finish(); });
}

void prepare(Options& options) {
  options.prepared = std::make_shared<const PreparedTables>(options);
}

Report convert(const Source& source, const Sink& sink, const Options& options) {
  Converter converter(BorrowedOptions(options), sink);
  std::array<char, part_size> buffer = {};
  bool goes_on = true;
  while (goes_on) {
    const std::size_t count = source(buffer.data(), buffer.size());
    goes_on = count > 0 && converter.push({buffer.data(), count});
  }
  return converter.finish();
}

std::string convert(std::string_view bytes, const Options& options) {
  std::string output;
  Converter converter(BorrowedOptions(options),
                      [&](std::string_view piece) { output.append(piece); });
  converter.push(bytes);
  converter.finish();
  return output;
}

namespace {

Options with_formats(Options options, InputFormat from, OutputFormat to) {
  options.from = from;
  options.to = to;
  options.is_file = false;
  return options;
}

std::string converted(std::string_view text, const Options& options, InputFormat from,
                      OutputFormat to) {
  return convert(text, with_formats(options, from, to));
}

void read_in_parts(Flow& flow, std::u16string_view text, const Flow::Take& take,
                   const Options& options) {
  bool is_last = false;
  for (std::size_t length = part_size; !is_last && !flow.is_closed();) {
    if (length < text.size() && is_high_surrogate(text[length - 1])) ++length;
    is_last = length >= text.size();
    const std::size_t read = flow.read(text.substr(0, length), is_last);
    text.remove_prefix(read);
    // A word that goes on and on is looked at again only when there is twice as much of it.
    length = std::max(part_size, 2 * (length - read));
    flow.drain(take, false);
    ask_to_stop(options);
  }
}

std::u16string converted(std::u16string_view text, const Options& options, InputFormat from,
                         OutputFormat to) {
  const Options all = with_formats(options, from, to);
  const auto flow = make_flow(all, format_of(from, richtext::is_rtf(text)),
                              RtfReader::Units::characters, u"\r\n");
  std::u16string output;
  const auto take = [&](std::u16string_view piece) {
    ask_to_stop(all);
    output.append(piece);
  };
  try {
    read_in_parts(*flow, text, take, all);
    flow->finish();
    flow->drain(take, true);
  } catch (const Stopped&) {
    // What there is of the output is the answer.
  }
  return output;
}

}  // namespace

std::string rtf_from_markup(std::string_view markup, const Options& options) {
  return converted(markup, options, InputFormat::qel, OutputFormat::rtf);
}
std::string markup_from_rtf(std::string_view rtf, const Options& options) {
  return converted(rtf, options, InputFormat::rtf, OutputFormat::qel);
}
std::string text_from_markup(std::string_view markup, const Options& options) {
  return converted(markup, options, InputFormat::qel, OutputFormat::text);
}
std::string text_from_rtf(std::string_view rtf, const Options& options) {
  return converted(rtf, options, InputFormat::rtf, OutputFormat::text);
}
std::string html_from_markup(std::string_view markup, const Options& options) {
  return converted(markup, options, InputFormat::qel, OutputFormat::html);
}
std::string html_from_rtf(std::string_view rtf, const Options& options) {
  return converted(rtf, options, InputFormat::rtf, OutputFormat::html);
}
std::string markup_from_html(std::string_view html, const Options& options) {
  return converted(html, options, InputFormat::html, OutputFormat::qel);
}
std::string markup_from_text(std::string_view text, const Options& options) {
  return converted(text, options, InputFormat::text, OutputFormat::qel);
}
std::u16string rtf_from_markup(std::u16string_view markup, const Options& options) {
  return converted(markup, options, InputFormat::qel, OutputFormat::rtf);
}
std::u16string markup_from_rtf(std::u16string_view rtf, const Options& options) {
  return converted(rtf, options, InputFormat::rtf, OutputFormat::qel);
}
std::u16string text_from_markup(std::u16string_view markup, const Options& options) {
  return converted(markup, options, InputFormat::qel, OutputFormat::text);
}
std::u16string text_from_rtf(std::u16string_view rtf, const Options& options) {
  return converted(rtf, options, InputFormat::rtf, OutputFormat::text);
}
std::u16string html_from_markup(std::u16string_view markup, const Options& options) {
  return converted(markup, options, InputFormat::qel, OutputFormat::html);
}
std::u16string html_from_rtf(std::u16string_view rtf, const Options& options) {
  return converted(rtf, options, InputFormat::rtf, OutputFormat::html);
}
std::u16string markup_from_text(std::u16string_view text, const Options& options) {
  return converted(text, options, InputFormat::text, OutputFormat::qel);
}

}  // namespace qel::convert
