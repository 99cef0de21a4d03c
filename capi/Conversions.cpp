#include "Conversions.h"

#include <memory>
#include <optional>

#include "Guard.h"
#include "Options.h"
#include "qel/convert/Convert.h"

namespace qel::capi {
namespace {

convert::Report finished(convert::Converter& converter) {
  const convert::Report report = converter.finish();
  if (report.is_stopped) throw Failure(QEL_STOPPED, "stopped");
  return report;
}

}  // namespace

convert::Report convert_into(Buffer& output, std::string_view input,
                             const convert::Options& options) {
  convert::Converter converter(convert::BorrowedOptions(options),
                               [&](std::string_view piece) { output.append(piece); });
  converter.push(input);
  return finished(converter);
}

qel_report to_c(const convert::Report& report) {
  const convert::Dropped& dropped = report.dropped;
  return {report.bytes_in,
          report.bytes_out,
          dropped.pictures,
          dropped.objects,
          dropped.cells,
          dropped.rows,
          dropped.notes,
          dropped.headers,
          dropped.links,
          dropped.hidden,
          dropped.deleted,
          dropped.unknown,
          dropped.fonts,
          dropped.colors,
          dropped.sizes,
          dropped.formats,
          report.is_broken_off ? 1 : 0};
}

}  // namespace qel::capi

using qel::capi::existing;
using qel::capi::guarded;
using qel::capi::or_defaults;
using qel::capi::require;
using qel::capi::view;

qel_status qel_convert(qel_text input, const qel_options* options, qel_string* output,
                       qel_report* report, qel_error* error) {
  if (output != nullptr) *output = {};
  if (report != nullptr) *report = {};
  return guarded(error, [&] {
    qel_string& written = existing(output);
    qel::capi::Buffer bytes;
    const auto done = qel::capi::convert_into(bytes, view(input), or_defaults(options).conversion);
    written = bytes.release();
    if (report != nullptr) *report = qel::capi::to_c(done);
  });
}

struct qel_converter {
  explicit qel_converter(const qel::convert::Options& options)
      : converter(options, [this](std::string_view piece) { output.append(piece); }) {}

  qel::capi::Buffer output;
  qel::convert::Converter converter;
  bool is_over = false;  // ended or failed
};

qel_status qel_converter_new(const qel_options* options, qel_converter** converter,
                             qel_error* error) {
  if (converter != nullptr) *converter = nullptr;
  return guarded(error, [&] {
    qel_converter*& made = existing(converter);
    made = new qel_converter(or_defaults(options).conversion);
  });
}

namespace {

/// Does one step of a conversion, after which it is over unless the step went well.
template <class Step>
qel_status go_on(qel_converter* converter, qel_error* error, Step step) noexcept {
  return guarded(error, [&] {
    bool& is_over = existing(converter).is_over;
    require(!is_over, "the conversion has ended");
    is_over = true;
    is_over = step();
  });
}

}  // namespace

qel_status qel_converter_push(qel_converter* converter, qel_text piece, qel_error* error) {
  return go_on(converter, error, [&] {
    // What follows the end of a document does not count; a stop shows at the end.
    converter->converter.push(view(piece));
    return false;
  });
}

qel_status qel_converter_finish(qel_converter* converter, qel_report* report, qel_error* error) {
  if (report != nullptr) *report = {};
  return go_on(converter, error, [&] {
    const auto done = qel::capi::finished(converter->converter);
    if (report != nullptr) *report = qel::capi::to_c(done);
    return true;
  });
}

qel_status qel_converter_take(qel_converter* converter, qel_string* piece, qel_error* error) {
  if (piece != nullptr) *piece = {};
  return guarded(error, [&] {
    qel_string& taken = existing(piece);
    taken = existing(converter).output.release();
  });
}

void qel_converter_free(qel_converter* converter) { delete converter; }
