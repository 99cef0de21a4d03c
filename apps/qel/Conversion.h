#pragma once

#include <functional>
#include <optional>
#include <string>
#include <string_view>

#include "Formats.h"
#include "Tables.h"

namespace qel::command {

/// What reading makes of breaks and tabs, as the parser's switches of these names.
struct Switches {
  bool convert_nl_to_space = false;
  bool convert_tabs_to_space = false;
  bool recognize_crlf = true;
  bool recognize_tabs = true;

  /// The switches that a control begins with.
  static constexpr Switches of_a_field() { return {true, true, false, false}; }
};

struct ConversionOptions {
  /// Empty: RTF where the input begins like it, else markup.
  std::optional<InputFormat> from;
  OutputFormat to = OutputFormat::qel;
  Switches switches;
  Tables tables;
};

/// Takes the next piece of the output.
using Sink = std::function<void(std::string_view bytes)>;

/// Converts the bytes of a file to those of another. Broken RTF and broken markup are text, not
/// errors. Nothing is written before the conversion is done; the input is freed as soon as it is
/// read, so hand it over with `std::move`. Any thread may convert with the same options.
void convert(std::string input, const ConversionOptions& options, const Sink& sink);
/// The same with the output as one string.
std::string convert(std::string input, const ConversionOptions& options);

}  // namespace qel::command
