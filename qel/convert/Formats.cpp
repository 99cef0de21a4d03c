#include "qel/convert/Formats.h"

#include <algorithm>
#include <array>
#include <cctype>
#include <filesystem>

namespace qel::convert {
namespace {

template <class Format>
struct Row {
  Format format;
  std::string_view name;
  std::string_view extension;
};

constexpr std::array<Row<InputFormat>, 4> input_formats = {{{InputFormat::qel, "qel", ".qel"},
                                                            {InputFormat::rtf, "rtf", ".rtf"},
                                                            {InputFormat::text, "text", ".txt"},
                                                            {InputFormat::html, "html", ".html"}}};

constexpr std::array<Row<OutputFormat>, 8> output_formats = {
    {{OutputFormat::qel, "qel", ".qel"},
     {OutputFormat::qelv6, "qelv6", ".v6.qel"},
     {OutputFormat::rtf, "rtf", ".rtf"},
     {OutputFormat::rtf_body, "rtf-body", ".body.rtf"},
     {OutputFormat::simple_rtf, "simple-rtf", ".simple.rtf"},
     {OutputFormat::text, "text", ".txt"},
     {OutputFormat::segments, "segments", ".json"},
     {OutputFormat::html, "html", ".html"}}};

template <class Rows, class Value, class Field>
auto format_with(const Rows& rows, Field field, const Value& value) {
  const auto row = std::find_if(rows.begin(), rows.end(),
                                [&](const auto& candidate) { return candidate.*field == value; });
  return row == rows.end() ? std::nullopt : std::optional(row->format);
}

template <class Rows>
std::string names_of(const Rows& rows) {
  std::string names;
  for (const auto& row : rows) {
    if (!names.empty()) names.append(", ");
    names.append(row.name);
  }
  return names;
}

}  // namespace

std::optional<InputFormat> input_format_named(std::string_view name) {
  return format_with(input_formats, &Row<InputFormat>::name, name);
}

std::optional<OutputFormat> output_format_named(std::string_view name) {
  return format_with(output_formats, &Row<OutputFormat>::name, name);
}

std::string input_format_names() { return names_of(input_formats); }

std::string output_format_names() { return names_of(output_formats); }

std::optional<InputFormat> input_format_of_file(std::string_view path) {
  std::string extension = std::filesystem::path(path).extension().string();
  std::transform(extension.begin(), extension.end(), extension.begin(),
                 [](unsigned char letter) { return static_cast<char>(std::tolower(letter)); });
  if (extension == ".htm") return InputFormat::html;
  return format_with(input_formats, &Row<InputFormat>::extension, extension);
}

bool is_same_format(InputFormat from, OutputFormat to) {
  switch (from) {
    case InputFormat::qel:
      return to == OutputFormat::qel;
    case InputFormat::rtf:
      return to == OutputFormat::rtf || to == OutputFormat::simple_rtf;
    case InputFormat::text:
      return to == OutputFormat::text;
    case InputFormat::html:
      return to == OutputFormat::html;
  }
  return false;
}

bool is_rtf_of_some_kind(OutputFormat format) {
  return format == OutputFormat::rtf || format == OutputFormat::rtf_body ||
         format == OutputFormat::simple_rtf;
}

std::string_view extension_of(OutputFormat format) {
  const auto* const row =
      std::find_if(output_formats.begin(), output_formats.end(),
                   [format](const auto& candidate) { return candidate.format == format; });
  return row->extension;
}

}  // namespace qel::convert
