#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>

#include "Span.h"
#include "qel/text/TextCase.h"

/// The same functions in the stated way, whose rules are those of `qel::markup`: for whole texts,
/// without line codes.
namespace qel::capi::stated {

std::string plain(std::string_view markup);
std::size_t length(std::string_view markup);
std::size_t find(std::string_view markup, std::string_view search, std::size_t start,
                 bool ignores_case);
std::string mid(std::string_view markup, Span span);
std::string stuff(std::string_view markup, Span span, std::string_view replacement);
std::string toggle(std::string_view markup, std::int32_t attribute, Span span);
std::string change_case(std::string_view markup, CaseChange change, Span span);

}  // namespace qel::capi::stated
