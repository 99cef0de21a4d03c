#pragma once

#include <optional>
#include <string>
#include <string_view>

namespace qel::command {

/// What a file that is read holds.
enum class InputForm { qel, rtf, text };

/// What is written.
enum class ResultForm { qel, qelv6, rtf, rtf_body, simple_rtf, text, segments };

/// The form of this name, as "--from" and "--to" take it.
std::optional<InputForm> input_form_named(std::string_view name);
std::optional<ResultForm> result_form_named(std::string_view name);

/// The names joined by commas, for messages.
std::string input_form_names();
std::string result_form_names();

/// What the ending of a file's name says of its form: ".qel", ".rtf" or ".txt" in any case.
std::optional<InputForm> input_form_of_file(std::string_view path);
/// The ending that a file in this form gets, such as ".rtf".
std::string_view ending_of(ResultForm form);

}  // namespace qel::command
