#include "com/objects/Conversions.h"

#include <algorithm>
#include <array>
#include <limits>
#include <memory>
#include <optional>
#include <utility>

#include "com/automation/Arguments.h"
#include "com/automation/Errors.h"
#include "com/automation/Values.h"
#include "com/objects/FileAccess.h"
#include "qel/base/Error.h"
#include "qel/base/Utf8.h"
#include "qel/convert/Convert.h"
#ifdef QEL_HAS_HTML
#include "qel/html/HtmlReader.h"
#endif

namespace qel::com {
namespace {

using convert::InputFormat;
using convert::Options;
using convert::OutputFormat;

struct Format {
  ConversionFormat number = cfFromName;
  std::optional<InputFormat> from;  // none: it is only written
  OutputFormat to = OutputFormat::qel;
  bool is_whole_page = false;
};

constexpr std::array formats = {
    Format{cfMarkup, InputFormat::qel, OutputFormat::qel},
    Format{cfRTF, InputFormat::rtf, OutputFormat::rtf},
    Format{cfText, InputFormat::text, OutputFormat::text},
    Format{cfHTMLPage, InputFormat::html, OutputFormat::html, true},
    Format{cfHTML, InputFormat::html, OutputFormat::html},
    Format{cfMarkupV6, std::nullopt, OutputFormat::qelv6},
    Format{cfSimpleRTF, std::nullopt, OutputFormat::simple_rtf},
};

[[noreturn]] void raise_bad(const char* what) { throw Error(errors::bad_argument, "QEL", what); }

void put_to(Options& options, ConversionFormat to) {
  const auto* const format = std::find_if(formats.begin(), formats.end(),
                                          [&](const Format& each) { return each.number == to; });
  if (format == formats.end()) raise_bad("there is no such format to write");
  options.to = format->to;
  options.html.whole_document = format->is_whole_page;
}

void put_from(Options& options, ConversionFormat from) {
  if (from == cfFromName) return;
  const auto* const format = std::find_if(formats.begin(), formats.end(),
                                          [&](const Format& each) { return each.number == from; });
  if (format == formats.end() || !format->from) raise_bad("there is no such format to read");
  options.from = format->from;
}

bool is_left_out(const Value& value) {
  return is_missing(value.get()) || value.type() == VT_EMPTY || value.type() == VT_NULL;
}

template <class Class>
std::shared_ptr<Class> object_in(const Value& value) {
  if (value.type() != VT_DISPATCH && value.type() != VT_UNKNOWN) {
    throw Error(errors::type_mismatch, "QEL", "the tables are no objects");
  }
  const Given<Class> given(value.object().get());
  [[maybe_unused]] const Class& needed = given;
  return given;
}

Options options_for(const RTFParser& parser, const Wanted& wanted) {
  Options options;
  options.way = parser.way();
  if (options.way == Way::stated) {
    options.switches = {parser.get_ConvertNLToSpace(), parser.get_ConvertTabsToSpace(),
                        parser.get_RecognizeCRLF(), parser.get_RecognizeTabs()};
  }
  const Value fonts(wanted.fonts);
  const Value colors(wanted.colors);
  if (!is_left_out(fonts)) options.fonts = *object_in<QELIndexFonts>(fonts);
  if (!is_left_out(colors)) options.colors = object_in<QELIndexColors>(colors);
  put_from(options, wanted.from);
#ifdef QEL_HAS_HTML
  options.html_reader = html::reader();
#endif
  return options;
}

/// Raises where the format that is named or guessed cannot be read.
void check(const Options& options) {
  if (options.from == InputFormat::html && !options.html_reader.read) {
    throw Error(errors::not_supported, "QEL", "HTML cannot be read: it was built without that");
  }
}

/// The bytes of a one-dimensional array.
std::string bytes_of_array(const Value& array) {
  SAFEARRAY* const source = array.get().parray;
  if (source == nullptr || SafeArrayGetDim(source) != 1) raise_bad("the array is not one of bytes");
  void* data = nullptr;
  if (FAILED(SafeArrayAccessData(source, &data))) raise_bad("the array is locked");
  std::string bytes(static_cast<const char*>(data), source->rgsabound[0].cElements);
  SafeArrayUnaccessData(source);
  return bytes;
}

/// Those of an array of numbers, as scripts make them.
std::string bytes_of_numbers(const Value& array) {
  SAFEARRAY* const source = array.get().parray;
  if (SafeArrayGetDim(source) != 1) raise_bad("the array is not one of bytes");
  LONG at = 0;
  LONG last = 0;
  SafeArrayGetLBound(source, 1, &at);
  SafeArrayGetUBound(source, 1, &last);
  std::string bytes;
  for (; at <= last; ++at) {
    Value number;
    SafeArrayGetElement(source, &at, number.put());
    bytes.push_back(static_cast<char>(number.as(VT_UI1).get().bVal));
  }
  return bytes;
}

/// A text becomes a file in UTF-16, in which every character can be read.
std::string file_of_text(std::u16string_view text) {
  std::string bytes = "\xFF\xFE";
  bytes.append(reinterpret_cast<const char*>(text.data()), text.size() * sizeof(char16_t));
  return bytes;
}

std::string bytes_of(const Value& value) {
  if (value.type() == VT_BSTR) return file_of_text(text_of(value.get().bstrVal));
  if (value.type() == (VT_ARRAY | VT_UI1)) return bytes_of_array(value);
  if (value.type() == (VT_ARRAY | VT_VARIANT)) return bytes_of_numbers(value);
  throw Error(errors::type_mismatch, "QEL", "the source is neither a text nor an array of bytes");
}

/// Passes plain text on with CR before each LF that has none.
class Lines {
 public:
  Lines(convert::Sink sink, bool is_plain) : sink_(std::move(sink)), is_plain_(is_plain) {}

  void put(std::string_view bytes) {
    if (!is_plain_) return sink_(bytes);
    std::string lines;
    for (const char c : bytes) {
      if (c == '\n' && last_ != '\r') lines.push_back('\r');
      lines.push_back(last_ = c);
    }
    sink_(lines);
  }

 private:
  convert::Sink sink_;
  bool is_plain_;
  char last_ = '\0';
};

convert::Report run(const convert::Source& source, convert::Sink sink, const Options& options) {
  check(options);
  Lines lines(std::move(sink), options.to == OutputFormat::text);
  return convert::convert(
      source, [&](std::string_view piece) { lines.put(piece); }, options);
}

std::optional<InputFormat> format_in_name(std::u16string_view path) {
  return convert::input_format_of_file(to_utf8(path));
}

ConversionFormat format_of_target(std::u16string_view path) {
  const std::optional<InputFormat> named = format_in_name(path);
  if (!named) raise_bad("the name of the target suggests no format");
  return std::find_if(formats.begin(), formats.end(),
                      [&](const Format& each) { return each.from == named; })
      ->number;
}

}  // namespace

std::string Conversions::bytes(const RTFParser& parser, const VARIANT& source,
                               const Wanted& wanted) {
  Options options = options_for(parser, wanted);
  put_to(options, wanted.to);
  const Value given(source);
  options.keeps_last_break = given.type() == VT_BSTR;
  const std::string input = bytes_of(given);
  std::string output;
  std::string_view left = input;
  report_ = {};
  report_ = run(
      [&](char* buffer, std::size_t size) {
        const std::size_t count = left.copy(buffer, size);
        left.remove_prefix(count);
        return count;
      },
      [&](std::string_view piece) { output.append(piece); }, options);
  return output;
}

std::u16string Conversions::text(const RTFParser& parser, const VARIANT& source,
                                 const Wanted& wanted) {
  return from_message(bytes(parser, source, wanted));
}

void Conversions::file(const RTFParser& parser, std::u16string_view source,
                       std::u16string_view target, const Wanted& wanted) {
  Options options = options_for(parser, wanted);
  put_to(options, wanted.to == cfFromName ? format_of_target(target) : wanted.to);
  if (wanted.from == cfFromName) {
    options.from = format_in_name(source);
    options.is_from_guessed = true;
  }
  report_ = {};
  TargetFile output{std::wstring(wide(target))};
  {
    SourceFile input{std::wstring(wide(source))};
    report_ = run([&](char* buffer, std::size_t size) { return input.read(buffer, size); },
                  [&](std::string_view piece) { output.write(piece); }, options);
  }
  output.replace();
}

std::int32_t Conversions::dropped(std::u16string_view kind) const {
  const std::string name = to_utf8(kind);
  bool is_known = name.empty();
  std::uint64_t count = 0;
  for (const convert::DroppedKind& each : convert::dropped_kinds) {
    if (!name.empty() && name != each.name) continue;
    is_known = true;
    count += report_.dropped.*each.count;
  }
  if (!is_known) raise_bad("nothing of such a kind is dropped");
  constexpr std::uint64_t most = std::numeric_limits<std::int32_t>::max();
  return static_cast<std::int32_t>(std::min(count, most));
}

}  // namespace qel::com
