#pragma once

#include <string_view>

#include "Buffer.h"
#include "qel/capi.h"
#include "qel/convert/Options.h"
#include "qel/convert/Report.h"

namespace qel::capi {

/// Appends the conversion of the text. Raises a `Failure` where it was stopped.
convert::Report convert_into(Buffer& output, std::string_view input,
                             const convert::Options& options);

qel_report to_c(const convert::Report& report);

}  // namespace qel::capi
