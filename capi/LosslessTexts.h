#pragma once

#include <cstddef>
#include <cstdint>
#include <string_view>

#include "Buffer.h"
#include "Span.h"
#include "qel/convert/Options.h"
#include "qel/text/TextCase.h"

/// Functions on markup in the lossless way, for texts of any size: they pass from the reader to the
/// writer. All ask the question to stop.
namespace qel::capi::lossless {

void plain(Buffer& output, std::string_view markup, const convert::Options& options);
/// `SIZE_MAX` where there is none from `start` on.
std::size_t find(std::string_view markup, std::string_view search, std::size_t start,
                 bool ignores_case, const convert::Options& options);
void mid(Buffer& output, std::string_view markup, Span span, const convert::Options& options);
void stuff(Buffer& output, std::string_view markup, Span span, std::string_view replacement,
           const convert::Options& options);
/// `attribute` is a `TextAttribute` of a style.
void toggle(Buffer& output, std::string_view markup, std::int32_t attribute, Span span,
            const convert::Options& options);
/// In LosslessCase.cpp.
void change_case(Buffer& output, std::string_view markup, CaseChange change, Span span,
                 const convert::Options& options);

}  // namespace qel::capi::lossless
