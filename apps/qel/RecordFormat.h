#pragma once

#include <cstddef>
#include <functional>
#include <memory>
#include <stdexcept>
#include <string>
#include <string_view>
#include <vector>

namespace qel::command {

/// A field to convert, and the field that gets the result: the same one or another.
struct FieldMapping {
  std::string from;
  std::string to;
};

/// A record that cannot be converted; the message says why.
class RecordError : public std::runtime_error {
 public:
  using runtime_error::runtime_error;
};

using ConvertText = std::function<std::string(std::string_view text)>;

/// Converts one record after another. One object serves one thread.
class RecordConverter {
 public:
  RecordConverter() = default;
  RecordConverter(const RecordConverter&) = delete;
  RecordConverter& operator=(const RecordConverter&) = delete;
  virtual ~RecordConverter() = default;

  /// Appends `record`, what ends it included, with its fields converted; all else stays as it is,
  /// byte for byte. Any exception leaves `output` as it was; a `RecordError` says what is wrong
  /// with the record.
  virtual void convert(std::string_view record, std::string& output) = 0;
};

/// How records follow each other in a file, and how fields lie in a record.
class RecordFormat {
 public:
  static constexpr std::size_t none = std::string_view::npos;

  RecordFormat() = default;
  RecordFormat(const RecordFormat&) = delete;
  RecordFormat& operator=(const RecordFormat&) = delete;
  virtual ~RecordFormat() = default;

  /// The first end of a record in `bytes` from `from` on, behind what ends it; `none` where it is
  /// still to come. Goes on where it stopped: each byte is given once, in order.
  virtual std::size_t find_end(std::string_view bytes, std::size_t from) = 0;

  /// Whether the first record names the fields.
  virtual bool has_header() const = 0;
  /// Takes the record that names the fields, and returns what to write in its place. Raises a
  /// `RecordError` when a field to convert is not among them.
  virtual std::string take_header(std::string_view record) = 0;

  /// Must be called after the header is taken. The format must outlive what it returns.
  virtual std::unique_ptr<RecordConverter> create_converter(ConvertText convert) const = 0;
};

}  // namespace qel::command
