#include <algorithm>
#include <array>
#include <cstddef>
#include <cstdint>
#include <nlohmann/json.hpp>
#include <optional>
#include <string>
#include <string_view>

#include "Options.h"

namespace qel::capi {
namespace {

using Json = nlohmann::json;

[[noreturn]] void refuse(std::string_view name, std::string_view why) {
  throw Failure(QEL_BAD_ARGUMENT, name, why);
}

/// "#rrggbb".
std::optional<std::uint32_t> color_of(std::string_view text) {
  constexpr std::size_t length = 7;
  if (text.size() != length || text.front() != '#') return {};
  std::uint32_t color = 0;
  for (const char digit : text.substr(1)) {
    const bool is_number = digit >= '0' && digit <= '9';
    const int letter = (digit | 0x20) - 'a';
    if (!is_number && (letter < 0 || letter > 5)) return {};
    color = color * 16 + static_cast<std::uint32_t>(is_number ? digit - '0' : letter + 10);
  }
  return color;
}

/// Takes the values while they are parsed: a tree of them could not be released without memory.
class OptionsReader : public nlohmann::json_sax<Json> {
 public:
  /// `options` have to outlive this object.
  explicit OptionsReader(convert::Options& options) : options_(options) {}

  /// Sets what else was read, the tables first, whatever the order.
  void set_tables_and_items() {
    if (tables_) set_tables(options_, *tables_);
    for (int i = 0; i < table_size; ++i) {
      const auto at = static_cast<std::size_t>(i);
      if (fonts_[at]) set_font(options_, i, *fonts_[at]);
      if (colors_[at]) set_color(options_, i, *colors_[at]);
    }
    if (font_size_) set_font_size(options_, *font_size_);
  }

  bool null() override {
    require_member();
    if (list_ == List::none) refuse_member("cannot be null");
    take_index();
    return true;
  }

  bool boolean(bool value) override {
    require_member();
    if (list_ != List::none || !set_switch(options_, name_, value)) {
      refuse_member("cannot be true or false");
    }
    return true;
  }

  bool number_integer(std::int64_t value) override {
    return number_float(static_cast<double>(value), {});
  }

  bool number_unsigned(std::uint64_t value) override {
    constexpr std::uint64_t largest_color = 0xFFFFFF;
    if (list_ == List::colors && value <= largest_color) {
      colors_[take_index()] = static_cast<std::uint32_t>(value);
      return true;
    }
    return number_float(static_cast<double>(value), {});
  }

  bool number_float(double value, const std::string& /*text*/) override {
    require_member();
    if (list_ != List::none || name_ != "fontSize") refuse_member("cannot be this number");
    font_size_ = value;
    return true;
  }

  bool string(std::string& value) override {
    require_member();
    if (list_ == List::fonts) {
      fonts_[take_index()] = value;
    } else if (list_ == List::colors) {
      const auto color = color_of(value);
      if (!color) refuse(value, "is no colour like #rrggbb");
      colors_[take_index()] = *color;
    } else if (name_ == "from") {
      set_from(options_, value);
    } else if (name_ == "to") {
      set_to(options_, value);
    } else if (name_ == "tables") {
      tables_ = value;
    } else {
      refuse_member("cannot be a string");
    }
    return true;
  }

  bool binary(Json::binary_t& /*value*/) override { return false; }

  bool start_object(std::size_t /*size*/) override {
    if (!is_open_) {
      is_open_ = true;
    } else {
      begin_list(false);
    }
    return true;
  }

  bool start_array(std::size_t /*size*/) override {
    require_member();
    begin_list(true);
    return true;
  }

  bool key(std::string& name) override {
    if (list_ == List::none) {
      name_ = name;
    } else {
      const bool is_index = name.size() == 1 && name[0] >= '0' && name[0] <= '9';
      if (!is_index) refuse(name, "is no index from 0 to 9");
      index_ = name[0] - '0';
    }
    return true;
  }

  bool end_object() override { return end_list(); }
  bool end_array() override { return end_list(); }

  bool parse_error(std::size_t /*position*/, const std::string& token,
                   const nlohmann::detail::exception& /*error*/) override {
    refuse(token, "is not JSON there");
  }

 private:
  enum class List : std::uint8_t { none, fonts, colors };
  static constexpr int table_size = 10;

  void require_member() const { require(is_open_, "the options are no JSON object"); }

  [[noreturn]] void refuse_member(std::string_view why) const {
    constexpr std::array<std::string_view, 6> names = {"from",   "to",       "fonts",
                                                       "colors", "fontSize", "tables"};
    convert::Options scratch = options_;
    const bool is_known = std::find(names.begin(), names.end(), name_) != names.end() ||
                          set_switch(scratch, name_, true);
    refuse(name_, is_known ? why : "is no option");
  }

  void begin_list(bool is_array) {
    if (list_ != List::none) refuse(name_, "has lists within a list");
    if (name_ == "fonts") {
      list_ = List::fonts;
    } else if (name_ == "colors") {
      list_ = List::colors;
    } else {
      refuse_member("cannot be a list");
    }
    is_array_ = is_array;
    index_ = 0;
  }

  bool end_list() {
    list_ = List::none;
    return true;
  }

  std::size_t take_index() {
    if (index_ >= table_size) refuse(name_, "has more than 10 items");
    return static_cast<std::size_t>(is_array_ ? index_++ : index_);
  }

  convert::Options& options_;
  bool is_open_ = false;
  std::string name_;  // of the member
  List list_ = List::none;
  bool is_array_ = false;
  int index_ = 0;
  std::optional<std::string> tables_;
  std::array<std::optional<std::string>, table_size> fonts_;
  std::array<std::optional<std::uint32_t>, table_size> colors_;
  std::optional<double> font_size_;
};

}  // namespace

void set_json(convert::Options& options, std::string_view json) {
  OptionsReader reader(options);
  if (!Json::sax_parse(json.begin(), json.end(), &reader)) refuse("binary", "is not JSON");
  reader.set_tables_and_items();
}

}  // namespace qel::capi
