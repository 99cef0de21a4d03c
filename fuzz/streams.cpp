// Bytes in any pieces through a pair of formats, which the bytes name: the same as in one piece.

#include <algorithm>
#include <array>
#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>

#include "Input.h"
#include "qel/convert/Convert.h"

namespace {

using qel::fuzz::Input;
using qel::fuzz::require;
namespace convert = qel::convert;
using convert::InputFormat;
using convert::OutputFormat;

/// In front of what is cut, more than tells the format of an input.
std::string beginning(InputFormat from) {
  constexpr std::size_t enough = 4096;
  if (from == InputFormat::rtf) return "{\\rtf1" + std::string(enough, '\n');
  return std::string(enough, 'x');
}

std::string in_pieces(std::string_view bytes, std::size_t first, const convert::Options& options,
                      const Input& input) {
  std::string output;
  convert::Converter converter(options, [&](std::string_view piece) { output.append(piece); });
  converter.push(bytes.substr(0, first));
  bytes.remove_prefix(first);
  for (std::size_t index = 0; !bytes.empty(); ++index) {
    constexpr std::size_t numbers = 16;
    const auto size = static_cast<std::size_t>(input.number(index % numbers, 1, 9));
    const std::string_view piece = bytes.substr(0, size);
    bytes.remove_prefix(piece.size());
    converter.push(piece);
  }
  const convert::Report report = converter.finish();
  require(report.bytes_out == output.size(), "what is written is counted");
  return output;
}

convert::Options options_of(const Input& input) {
  const auto says = [&](std::size_t index) { return input.number(index, 0, 1) != 0; };
  constexpr std::array inputs = {InputFormat::qel, InputFormat::rtf, InputFormat::text};
  constexpr std::array outputs = {
      OutputFormat::qel,        OutputFormat::qelv6, OutputFormat::rtf,     OutputFormat::rtf_body,
      OutputFormat::simple_rtf, OutputFormat::text,  OutputFormat::segments};
  convert::Options options;
  options.from = inputs[static_cast<std::size_t>(input.number(6, 0, inputs.size() - 1))];
  options.to = outputs[static_cast<std::size_t>(input.number(7, 0, outputs.size() - 1))];
  options.switches = {says(0), says(1), says(2), says(3)};
  options.way = input.number(4, 0, 3) == 0 ? qel::Way::stated : qel::Way::lossless;
  options.is_file = says(5);
  return options;
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  if (size > 0x4000) return 0;
  const Input input(data, size);
  convert::Options options = options_of(input);
  const std::string begun = beginning(*options.from);
  const std::string bytes = begun + std::string(input.bytes());
  require(in_pieces(bytes, begun.size(), options, input) == convert::convert(bytes, options),
          "pieces convert as all at once");
  // Without a beginning, for marks of an encoding.
  options.is_file = true;
  convert::convert(input.bytes(), options);
  options.from.reset();
  options.is_file = false;  // files of binary data are refused
  convert::convert(input.bytes(), options);
  return 0;
}
