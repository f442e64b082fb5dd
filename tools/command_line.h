#pragma once

#include <CLI/CLI.hpp>
#include <string>
#include <vector>

namespace LmTool {

/// An option or a positional argument, as help, completion and manual show it.
struct ArgumentText {
  std::vector<std::string> names;  ///< "--from"; of a positional argument "FILES"
  bool positional;
  bool required;
  std::string value;  ///< "TYPE", "png|bmp|raw"; empty for a flag
  std::string description;

  /// The words that the value may be, if these are all; otherwise empty.
  std::vector<std::string> Words() const;
};

/// What the arguments of a command, or of the tool itself, are.
std::vector<ArgumentText> ArgumentsOf(const CLI::App& command);

/// The commands in the order of the help.
std::vector<const CLI::App*> CommandsOf(const CLI::App& app);

}  // namespace LmTool
