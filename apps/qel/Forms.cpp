#include "Forms.h"

#include <algorithm>
#include <array>
#include <cctype>
#include <filesystem>

namespace qel::command {
namespace {

template <class Form>
struct Row {
  Form form;
  std::string_view name;
  std::string_view ending;
};

constexpr std::array<Row<InputForm>, 3> input_forms = {{{InputForm::qel, "qel", ".qel"},
                                                        {InputForm::rtf, "rtf", ".rtf"},
                                                        {InputForm::text, "text", ".txt"}}};

constexpr std::array<Row<ResultForm>, 7> result_forms = {
    {{ResultForm::qel, "qel", ".qel"},
     {ResultForm::qelv6, "qelv6", ".v6.qel"},
     {ResultForm::rtf, "rtf", ".rtf"},
     {ResultForm::rtf_body, "rtf-body", ".body.rtf"},
     {ResultForm::simple_rtf, "simple-rtf", ".simple.rtf"},
     {ResultForm::text, "text", ".txt"},
     {ResultForm::segments, "segments", ".json"}}};

template <class Rows, class Value, class Field>
auto form_with(const Rows& rows, Field field, const Value& value) {
  const auto row = std::find_if(rows.begin(), rows.end(),
                                [&](const auto& candidate) { return candidate.*field == value; });
  return row == rows.end() ? std::nullopt : std::optional(row->form);
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

std::optional<InputForm> input_form_named(std::string_view name) {
  return form_with(input_forms, &Row<InputForm>::name, name);
}

std::optional<ResultForm> result_form_named(std::string_view name) {
  return form_with(result_forms, &Row<ResultForm>::name, name);
}

std::string input_form_names() { return names_of(input_forms); }

std::string result_form_names() { return names_of(result_forms); }

std::optional<InputForm> input_form_of_file(std::string_view path) {
  std::string ending = std::filesystem::path(path).extension().string();
  std::transform(ending.begin(), ending.end(), ending.begin(),
                 [](unsigned char letter) { return static_cast<char>(std::tolower(letter)); });
  return form_with(input_forms, &Row<InputForm>::ending, ending);
}

std::string_view ending_of(ResultForm form) {
  const auto* const row =
      std::find_if(result_forms.begin(), result_forms.end(),
                   [form](const auto& candidate) { return candidate.form == form; });
  return row->ending;
}

}  // namespace qel::command
