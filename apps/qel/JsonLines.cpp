#include "JsonLines.h"

#include <simdjson.h>

#include <algorithm>
#include <array>
#include <charconv>
#include <optional>
#include <system_error>
#include <utility>

namespace qel::command {
namespace {

constexpr std::string_view blanks = " \t\r\n";

/// A part of a record.
struct Span {
  std::size_t begin = 0;
  std::size_t end = 0;
};

std::string_view without_blanks(std::string_view text) {
  const std::size_t begin = std::min(text.find_first_not_of(blanks), text.size());
  return text.substr(begin, text.find_last_not_of(blanks) + 1 - begin);
}

/// What JSON has for a character that cannot stand in a string; empty for all others.
std::string_view escape_of(char character) {
  switch (character) {
    case '"':
      return "\\\"";
    case '\\':
      return "\\\\";
    case '\n':
      return "\\n";
    case '\r':
      return "\\r";
    case '\t':
      return "\\t";
    default:
      return {};
  }
}

void append_escaped(char character, std::string& output) {
  constexpr std::string_view digits = "0123456789abcdef";
  const std::string_view escape = escape_of(character);
  const auto code = static_cast<unsigned char>(character);
  if (escape.empty()) {
    output.append("\\u00").append({digits[code >> 4U], digits[code & 15U]});
  } else {
    output.append(escape);
  }
}

std::string json_string(std::string_view text) {
  const auto is_escaped = [](char character) {
    return static_cast<unsigned char>(character) < ' ' || character == '"' || character == '\\';
  };
  std::string result;
  result.reserve(text.size() + text.size() / 16 + 2);
  result.push_back('"');
  for (auto rest = text.begin(); rest != text.end();) {
    const auto plain_end = std::find_if(rest, text.end(), is_escaped);
    result.append(rest, plain_end);
    rest = plain_end;
    if (rest != text.end()) append_escaped(*rest++, result);
  }
  result.push_back('"');
  return result;
}

/// Where the values of a JSON object stand, one after another. Must be valid JSON.
class ValueFinder {
 public:
  explicit ValueFinder(std::string_view object) : json_(object) {}

  Span next() {
    const std::size_t name_end = end_of_string(json_.find('"', at_));
    const std::size_t begin = json_.find_first_not_of(blanks, json_.find(':', name_end) + 1);
    at_ = end_of_value(begin);
    return {begin, at_};
  }

 private:
  std::size_t end_of_string(std::size_t begin) const {
    std::size_t quote = begin;
    std::size_t backslashes = 0;
    do {
      quote = json_.find('"', quote + 1);
      backslashes = quote - 1 - json_.find_last_not_of('\\', quote - 1);
    } while (backslashes % 2 != 0);
    return quote + 1;
  }

  std::size_t end_of_value(std::size_t begin) const {
    const char first = json_[begin];
    if (first == '"') return end_of_string(begin);
    if (first != '{' && first != '[') return json_.find_first_of(",} \t\r\n", begin);
    std::size_t at = begin;
    std::size_t depth = 0;
    do {
      const char byte = json_[at];
      if (byte == '{' || byte == '[') ++depth;
      if (byte == '}' || byte == ']') --depth;
      at = byte == '"' ? end_of_string(at) : at + 1;
    } while (depth > 0);
    return at;
  }

  std::string_view json_;
  std::size_t at_ = 0;
};

/// Makes small numbers of the numbers in JSON, without moving anything: none is too large to parse.
void blank_numbers(std::string& json) {
  constexpr std::string_view digits = "0123456789";
  constexpr std::string_view others = ".eE+-";
  bool is_string = false;
  bool is_number = false;
  for (std::size_t at = 0; at < json.size(); ++at) {
    const char byte = json[at];
    if (is_string && byte == '\\') ++at;
    if (byte == '"') is_string = !is_string;
    const bool is_digit = !is_string && digits.find(byte) != digits.npos;
    if (is_number && (is_digit || others.find(byte) != others.npos)) {
      json[at] = ' ';
    } else {
      is_number = is_digit;
      if (is_digit) json[at] = '0';
    }
  }
}

/// The number of the escape "\uhhhh" that `text` begins with; nothing for any other text.
std::optional<unsigned> unit_of(std::string_view text) {
  constexpr std::size_t length = 6;
  constexpr int base = 16;
  if (text.size() < length || !text.starts_with("\\u")) return std::nullopt;
  const char* const end = text.data() + length;
  unsigned unit = 0;
  const auto [at, error] = std::from_chars(text.data() + 2, end, unit, base);
  return error == std::errc() && at == end ? std::optional(unit) : std::nullopt;
}

/// Writes U+FFFD for halves of surrogate pairs, as other formats do, without moving anything.
void replace_lone_surrogates(std::string& json) {
  constexpr std::size_t length = 6;
  const auto begins = [](std::optional<unsigned> unit, unsigned half) {
    return unit && (*unit & 0xFC00U) == half;
  };
  for (std::size_t at = json.find('\\'); at != json.npos; at = json.find('\\', at)) {
    const std::string_view rest = std::string_view(json).substr(at);
    const auto unit = unit_of(rest);
    const bool is_high = begins(unit, 0xD800U);
    const bool is_pair = is_high && begins(unit_of(rest.substr(length)), 0xDC00U);
    if (!is_pair && (is_high || begins(unit, 0xDC00U))) json.replace(at, length, "\\ufffd");
    at += is_pair ? 2 * length : unit ? length : 2;
  }
}

class JsonConverter : public RecordConverter {
 public:
  JsonConverter(const std::vector<FieldMapping>& mappings, ConvertText convert)
      : mappings_(mappings), convert_(std::move(convert)), fields_(mappings.size()) {}

  void convert(std::string_view record, std::string& output) override {
    const std::string_view body = without_blanks(record);
    if (!body.empty()) {
      read(body);
      write_edits();
    }
    std::size_t copied = 0;
    const auto offset = static_cast<std::size_t>(body.data() - record.data());
    for (const Edit& edit : edits_) {
      output.append(record.substr(copied, offset + edit.span.begin - copied)).append(edit.text);
      copied = offset + edit.span.end;
    }
    output.append(record.substr(copied));
    edits_.clear();
  }

 private:
  /// What a record has for a mapping.
  struct Fields {
    std::optional<std::string_view> text;  ///< of the field to convert; none for null
    std::optional<Span> source;            ///< the value of the field to convert
    std::optional<Span> target;            ///< the value that is replaced
  };
  struct Edit {
    Span span;
    std::string text;
  };

  void read(std::string_view body) {
    fields_.assign(mappings_.size(), {});
    buffer_.assign(body).append(simdjson::SIMDJSON_PADDING, ' ');
    simdjson::dom::element json;
    const auto parse = [&] { return parser_.parse(buffer_.data(), body.size(), false).get(json); };
    auto error = parse();
    // What is changed for the parser does not matter: all but the fields is written as it was.
    for (int retries = 3; retries > 0 && mend(error, body.size()); --retries) error = parse();
    if (error) throw RecordError(std::string("not JSON: ") + simdjson::error_message(error));
    if (!json.is_object()) throw RecordError("not a JSON object");
    ValueFinder values(body);
    for (const auto& [name, value] : simdjson::dom::object(json)) {
      read_field(name, value, values.next());
    }
  }

  /// Makes what the parser refuses readable where it can be.
  bool mend(simdjson::error_code error, std::size_t size) {
    switch (error) {
      case simdjson::NUMBER_ERROR:
        blank_numbers(buffer_);
        return true;
      case simdjson::STRING_ERROR:
        replace_lone_surrogates(buffer_);
        return true;
      case simdjson::DEPTH_ERROR:
        return parser_.allocate(size, size) == simdjson::SUCCESS;
      default:
        return false;
    }
  }

  void read_field(std::string_view name, simdjson::dom::element value, Span span) {
    for (std::size_t i = 0; i < mappings_.size(); ++i) {
      if (mappings_[i].to == name) fields_[i].target = span;
      if (mappings_[i].from != name) continue;
      if (!value.is_string() && !value.is_null()) {
        throw RecordError("field '" + std::string(name) + "' is not a string");
      }
      fields_[i].source = span;
      fields_[i].text = value.is_string() ? std::optional(std::string_view(value)) : std::nullopt;
    }
  }

  void write_edits() {
    for (std::size_t i = 0; i < mappings_.size(); ++i) {
      const Fields& field = fields_[i];
      if (!field.source) continue;
      std::string value = field.text ? json_string(convert_(std::string(*field.text))) : "null";
      if (field.target) {
        edits_.push_back({*field.target, std::move(value)});
      } else {
        const std::size_t behind = field.source->end;
        edits_.push_back({{behind, behind}, "," + json_string(mappings_[i].to) + ":" + value});
      }
    }
    std::stable_sort(edits_.begin(), edits_.end(), [](const Edit& one, const Edit& other) {
      return one.span.begin < other.span.begin;
    });
  }

  const std::vector<FieldMapping>& mappings_;
  ConvertText convert_;
  simdjson::dom::parser parser_;
  std::string buffer_;
  std::vector<Fields> fields_;
  std::vector<Edit> edits_;
};

}  // namespace

std::size_t JsonLines::find_end(std::string_view bytes, std::size_t from) {
  const std::size_t end = bytes.find('\n', from);
  return end == none ? none : end + 1;
}

std::unique_ptr<RecordConverter> JsonLines::create_converter(ConvertText convert) const {
  return std::make_unique<JsonConverter>(mappings_, std::move(convert));
}

}  // namespace qel::command
