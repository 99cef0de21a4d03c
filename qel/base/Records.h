#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <tuple>
#include <vector>

/// Values as text in serialised records. Reading takes the whole text, apart from blanks around it.
/// It never raises; text that is not such a value gives nothing.
namespace qel::records {

/// The pieces of `text` between the separators. An empty text has no pieces.
std::vector<std::u16string_view> split(std::u16string_view text, std::u16string_view separator);
/// The same, padded with empty pieces or cut to exactly `count`.
std::vector<std::u16string_view> split(std::u16string_view text, std::u16string_view separator,
                                       std::size_t count);

/// A decimal number, with an optional fraction or exponent, that fits a double.
std::optional<double> to_number(std::u16string_view text);
/// A decimal number that fits a single.
std::optional<float> to_single(std::u16string_view text);
/// A decimal number, rounded half to even, within -32768 to 32767.
std::optional<std::int16_t> to_integer16(std::u16string_view text);
/// The same within 32 bits.
std::optional<std::int32_t> to_integer32(std::u16string_view text);
/// "True" or "False" in any case, or a number (0 is false).
std::optional<bool> to_boolean(std::u16string_view text);

/// Decimal, with a minus sign where negative.
std::u16string from_integer(std::int64_t value);

/// Reads `text` into the field. A text that is not such a value leaves the field as it was.
void read(std::u16string& field, std::u16string_view text);
void read(float& field, std::u16string_view text);
void read(std::int16_t& field, std::u16string_view text);
void read(bool& field, std::u16string_view text);

/// The field as text: "True" or "False", a decimal integer, or for a single the shortest decimal
/// number that reads back as the same value, with a point where it has a fraction (8, 10.5).
std::u16string_view write(const std::u16string& field);
std::u16string write(float field);
std::u16string write(std::int16_t field);
std::u16string_view write(bool field);

/// A whole record: the fields (references in a tuple) in order, joined by the separator.
template <class Fields>
std::u16string write_fields(const Fields& fields, std::u16string_view separator) {
  std::u16string record;
  std::apply(
      [&](const auto& first, const auto&... rest) {
        record.append(write(first));
        (record.append(separator).append(write(rest)), ...);
      },
      fields);
  return record;
}

/// Reads a record into the fields. Missing pieces count as empty, extra ones are dropped, and a
/// piece that does not convert leaves its field alone.
template <class Fields>
void read_fields(const Fields& fields, std::u16string_view record, std::u16string_view separator) {
  const auto pieces = split(record, separator, std::tuple_size_v<Fields>);
  std::size_t next = 0;
  std::apply([&](auto&... field) { (read(field, pieces[next++]), ...); }, fields);
}

}  // namespace qel::records
