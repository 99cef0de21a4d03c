#pragma once

#include <functional>
#include <optional>
#include <string>
#include <string_view>

#include "Formats.h"
#include "Tables.h"
#include "qel/model/QELCode.h"

namespace qel::command {

/// What reading does with breaks and tabs: the parser's switches of these names.
struct Switches {
  bool convert_nl_to_space = false;
  bool convert_tabs_to_space = false;
  bool recognize_crlf = true;
  bool recognize_tabs = true;

  /// The initial switches of a control.
  static constexpr Switches of_a_field() { return {true, true, false, false}; }

  friend bool operator==(const Switches&, const Switches&) = default;
};

struct ConversionOptions {
  /// Empty: RTF if the input begins like RTF, else markup.
  std::optional<InputFormat> from;
  OutputFormat to = OutputFormat::qel;
  Switches switches;
  Tables tables;
  Way way = Way::lossless;
};

/// Receives the next piece of the output.
using Sink = std::function<void(std::string_view bytes)>;

/// Converts the content of a file to that of another. Broken RTF and broken markup are text, not
/// errors. Nothing is written before the conversion is done. The input is freed as soon as it has
/// been read, so pass it with `std::move`. Any thread may convert with the same options.
void convert(std::string input, const ConversionOptions& options, const Sink& sink);
/// The same with the output as one string.
std::string convert(std::string input, const ConversionOptions& options);

}  // namespace qel::command
