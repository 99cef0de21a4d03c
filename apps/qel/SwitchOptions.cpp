#include "SwitchOptions.h"

namespace qel::command {
namespace {

CLI::Option* add_switch(CLI::App& app, const std::string& name, const std::string& meaning) {
  return app.add_flag(name, meaning)->group("Breaks and tabs in what is read");
}

}  // namespace

Switch::Switch(CLI::App& app, const std::string& name, const std::string& meaning)
    : yes_(add_switch(app, "--" + name, meaning)),
      no_(add_switch(app, "--no-" + name, {})->excludes(yes_)) {}

SwitchOptions::SwitchOptions(CLI::App& app)
    : field_(add_switch(app, "--field",
                        "As a text box does: breaks and tabs become blanks, and one blank at the "
                        "end of the text goes")),
      nl_to_space_(app, "nl-to-space", "A line break becomes a blank"),
      tabs_to_space_(app, "tabs-to-space", "A tab becomes a blank"),
      recognize_crlf_(app, "recognize-crlf", "A line break is kept (the default)"),
      recognize_tabs_(app, "recognize-tabs", "A tab is kept (the default)") {}

convert::Switches SwitchOptions::values() const {
  auto values = field_->count() > 0 ? convert::Switches::of_a_field() : convert::Switches();
  // A tab that is kept cannot become a blank too.
  if (tabs_to_space_.is_on()) values.recognize_tabs = false;
  values.convert_nl_to_space = nl_to_space_.or_else(values.convert_nl_to_space);
  values.convert_tabs_to_space = tabs_to_space_.or_else(values.convert_tabs_to_space);
  values.recognize_crlf = recognize_crlf_.or_else(values.recognize_crlf);
  values.recognize_tabs = recognize_tabs_.or_else(values.recognize_tabs);
  return values;
}

}  // namespace qel::command
