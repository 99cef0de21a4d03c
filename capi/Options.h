#pragma once

#include <mutex>
#include <string_view>

#include "Guard.h"
#include "qel/capi.h"
#include "qel/convert/Options.h"

struct qel_options {
  qel_options();

  qel::convert::Options conversion;
};

namespace qel::capi {

/// The defaults where a caller gives none.
const qel_options& or_defaults(const qel_options* options);

/// Ends what is being done where the caller's question is answered with yes.
inline void ask(const convert::Options& options) {
  if (options.stop && options.stop()) throw Failure(QEL_STOPPED, "stopped");
}

// The setters, which raise a `Failure` for what does not fit, and may have changed some of it then.

void set_from(convert::Options& options, std::string_view format);
void set_to(convert::Options& options, std::string_view format);
void set_font(convert::Options& options, int index, std::string_view name);
void set_font_size(convert::Options& options, double points);
void set_color(convert::Options& options, int index, std::uint32_t rgb);
void set_tables(convert::Options& options, std::string_view records);
/// Returns whether there is a switch of this name.
bool set_switch(convert::Options& options, std::string_view name, bool is_on);
/// In OptionsJson.cpp.
void set_json(convert::Options& options, std::string_view json);

}  // namespace qel::capi
