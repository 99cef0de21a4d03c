#pragma once

#include <CLI/CLI.hpp>
#include <string>

#include "qel/convert/Options.h"

namespace qel::command {

/// A switch that may be given by its name, by its name with "no-", or not at all.
class Switch {
 public:
  Switch(CLI::App& app, const std::string& name, const std::string& meaning);

  bool is_on() const { return yes_->count() > 0; }
  bool is_given() const { return is_on() || no_->count() > 0; }
  bool or_else(bool preset) const { return is_given() ? is_on() : preset; }

 private:
  CLI::Option* yes_;
  CLI::Option* no_;
};

/// The options that say what reading does with breaks and tabs.
class SwitchOptions {
 public:
  explicit SwitchOptions(CLI::App& app);

  convert::Switches values() const;

 private:
  CLI::Option* field_;
  Switch nl_to_space_;
  Switch tabs_to_space_;
  Switch recognize_crlf_;
  Switch recognize_tabs_;
};

}  // namespace qel::command
