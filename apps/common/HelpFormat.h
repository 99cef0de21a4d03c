#pragma once

#include <CLI/CLI.hpp>
#include <string>

namespace qel::command {

/// Help that fits a terminal of 80 columns and describes only what an option takes.
class HelpFormat : public CLI::Formatter {
 public:
  HelpFormat();
  std::string make_option_opts(const CLI::Option* option) const override;
  std::string make_option_desc(const CLI::Option* option) const override;
};

}  // namespace qel::command
