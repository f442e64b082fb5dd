#pragma once

#include <CLI/CLI.hpp>
#include <string>

namespace LmTool {

/// Prints help in lines of a terminal's width: names of options on the left, descriptions on the right, both wrapped.
class HelpFormat : public CLI::Formatter {
 public:
  std::string make_option(const CLI::Option* option, bool positional) const override;
  std::string make_subcommand(const CLI::App* command) const override;
  std::string make_footer(const CLI::App* app) const override;
};

/// A footer in lines of a terminal's width. Lines that begin with a space, such as examples, stay as they are.
std::string WrappedFooter(const CLI::App& app);

}  // namespace LmTool
