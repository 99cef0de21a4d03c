#include "CsvRecords.h"

#include <algorithm>
#include <optional>
#include <utility>

namespace qel::command {
namespace {

constexpr auto none = std::string_view::npos;

/// What ends a record: a line break, or nothing at the end of a file.
std::string_view end_of(std::string_view record) {
  if (!record.ends_with('\n')) return {};
  return record.substr(record.size() - (record.ends_with("\r\n") ? 2 : 1));
}

/// The length of the field in quotes that `rest` begins with.
std::size_t quoted_length(std::string_view rest) {
  std::size_t quote = rest.find('"', 1);
  while (quote != none && rest.substr(quote + 1).starts_with('"')) {
    quote = rest.find('"', quote + 2);
  }
  if (quote == none) throw RecordError("a quote is not closed");
  const std::size_t length = quote + 1;
  if (length < rest.size() && rest[length] != ',') {
    throw RecordError("a field goes on behind its closing quote");
  }
  return length;
}

/// The fields as they are written. There is always one.
std::vector<std::string_view> fields_of(std::string_view record) {
  std::string_view rest = record;
  rest.remove_suffix(end_of(record).size());
  std::vector<std::string_view> fields;
  while (true) {
    const std::size_t length =
        rest.starts_with('"') ? quoted_length(rest) : std::min(rest.find(','), rest.size());
    fields.push_back(rest.substr(0, length));
    if (length == rest.size()) return fields;
    rest.remove_prefix(length + 1);
  }
}

std::string text_of(std::string_view field) {
  if (!field.starts_with('"')) return std::string(field);
  field = field.substr(1, field.size() - 2);
  std::string text;
  for (std::size_t quote = 0; (quote = field.find('"')) != none; field.remove_prefix(quote + 2)) {
    text.append(field.substr(0, quote + 1));
  }
  return text.append(field);
}

std::string field_of(std::string_view text, bool is_quoted) {
  if (!is_quoted && text.find_first_of(",\"\r\n") == none) return std::string(text);
  std::string field = "\"";
  for (std::size_t quote = 0; (quote = text.find('"')) != none; text.remove_prefix(quote + 1)) {
    field.append(text.substr(0, quote)).append("\"\"");
  }
  return field.append(text).append("\"");
}

class CsvConverter : public RecordConverter {
 public:
  CsvConverter(const std::vector<CsvRecords::Columns>& columns, std::size_t column_count,
               ConvertText convert)
      : columns_(columns), column_count_(column_count), convert_(std::move(convert)) {}

  void convert(std::string_view record, std::string& output) override {
    const std::string_view end = end_of(record);
    if (record.size() == end.size() && column_count_ > 1) {
      output.append(record);
      return;
    }
    std::vector<std::string_view> fields = fields_of(record);
    if (fields.size() != column_count_) {
      throw RecordError(std::to_string(fields.size()) + " fields instead of " +
                        std::to_string(column_count_));
    }
    const std::vector<std::string> results = converted(fields);
    for (std::size_t i = 0; i < columns_.size(); ++i) {
      fields.resize(std::max(fields.size(), columns_[i].to + 1));
      fields[columns_[i].to] = results[i];
    }
    for (std::size_t i = 0; i < fields.size(); ++i) {
      if (i > 0) output.push_back(',');
      output.append(fields[i]);
    }
    output.append(end);
  }

 private:
  std::vector<std::string> converted(const std::vector<std::string_view>& fields) const {
    std::vector<std::string> results;
    for (const auto& [from, to] : columns_) {
      const bool was_quoted = to < fields.size() && fields[to].starts_with('"');
      results.push_back(field_of(convert_(text_of(fields[from])), was_quoted));
    }
    return results;
  }

  const std::vector<CsvRecords::Columns>& columns_;
  std::size_t column_count_;
  ConvertText convert_;
};

}  // namespace

std::size_t CsvRecords::find_end(std::string_view bytes, std::size_t from) {
  for (std::size_t at = from; at < bytes.size(); ++at) {
    const char byte = bytes[at];
    if (state_ == State::quoted) {
      at = bytes.find('"', at);
      if (at == none) return none;
      state_ = State::behind_quote;
    } else if (byte == '\n') {
      state_ = State::field_start;
      return at + 1;
    } else if (byte == ',') {
      state_ = State::field_start;
    } else if (byte == '"' && state_ != State::plain) {
      state_ = State::quoted;
    } else {
      state_ = State::plain;
    }
  }
  return none;
}

std::string CsvRecords::take_header(std::string_view record) {
  const std::vector<std::string_view> fields = fields_of(record);
  std::vector<std::string> names;
  std::transform(fields.begin(), fields.end(), std::back_inserter(names), text_of);
  const std::string_view end = end_of(record);
  std::string header(record.substr(0, record.size() - end.size()));
  column_count_ = names.size();
  for (const FieldMapping& mapping : mappings_) {
    const auto column = [&names](const std::string& name) {
      return static_cast<std::size_t>(std::find(names.begin(), names.end(), name) - names.begin());
    };
    const std::size_t from = column(mapping.from);
    if (from >= column_count_) throw RecordError("no field is named '" + mapping.from + "'");
    const std::size_t to = column(mapping.to);
    if (to == names.size()) {
      names.push_back(mapping.to);
      header.append(",").append(field_of(mapping.to, false));
    }
    columns_.push_back({from, to});
  }
  return header.append(end);
}

std::unique_ptr<RecordConverter> CsvRecords::create_converter(ConvertText convert) const {
  return std::make_unique<CsvConverter>(columns_, column_count_, std::move(convert));
}

}  // namespace qel::command
