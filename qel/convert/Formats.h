#pragma once

#include <optional>
#include <string>
#include <string_view>

namespace qel::convert {

/// The formats of files that are read.
enum class InputFormat { qel, rtf, text, html };

/// The formats of files that are written.
enum class OutputFormat { qel, qelv6, rtf, rtf_body, simple_rtf, text, segments, html };

/// The format of this name, as "--from" and "--to" take it.
std::optional<InputFormat> input_format_named(std::string_view name);
std::optional<OutputFormat> output_format_named(std::string_view name);

/// The names joined by commas, for messages.
std::string input_format_names();
std::string output_format_names();

/// The format that a file's extension stands for: ".qel", ".rtf", ".txt", ".html"
/// or ".htm" in any case.
std::optional<InputFormat> input_format_of_file(std::string_view path);
/// Whether what is written can be read as what it was made from.
bool is_same_format(InputFormat from, OutputFormat to);
/// Whether it is RTF of some kind.
bool is_rtf_of_some_kind(OutputFormat format);
/// The extension that a file in this format gets, such as ".rtf".
std::string_view extension_of(OutputFormat format);

}  // namespace qel::convert
